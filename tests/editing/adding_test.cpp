// Files, overlays and effects on the timeline, with the history of each; and what is refused.

#include "support/logic_harness.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "editing/moduleEdit.h"
#include "hand/row_pointer.h"
#include "history/ModuleHistory.h"
#include "media/moduleTarnwick.h"
#include "shell/frmTools_events.h"

namespace logic_test {
namespace {

using namespace moduleTimeline;

// Rows of the media list, all of five seconds.
enum Row { kMovie = 1, kSound, kStill };

class AddingTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        frmTools::Form_Load();
        open({"mpeg4.avi", "stereo-48k.wav", "still.bmp"});
        laid.streams = {{'m', state::StreamCollection.Item(1)}, // the film's picture and sound
                        {'n', state::StreamCollection.Item(2)},
                        {'s', state::StreamCollection.Item(3)},
                        {'a', state::StreamCollection.Item(4)}};
        selectRows({});
        state::ProjectModified = false;
    }
    static void selectRows(std::set<int> rows)
    {
        for (int place = 1; place <= 3; ++place) {
            forms::frmMediaList.lvwMediaList.Change(place).Selected = rows.contains(place);
        }
    }
    void add(std::set<int> rows)
    {
        selectRows(std::move(rows));
        OnEditAddToTimelineClick();
    }
    void addOverlay(std::set<int> rows)
    {
        selectRows(std::move(rows));
        OnEditAddToOverlayClick();
    }

    std::string items(const char* trackText) const
    {
        std::string all;
        for (const TreeNode& track : form.tvwTimeline.Root().Children) {
            for (const TreeNode& item : track.Children) {
                all += track.Text == trackText ? item.Text + " " : "";
            }
        }
        return all;
    }
    std::string takeMessage()
    {
        std::string all;
        for (const auto& message : std::exchange(platform.messages, {})) {
            EXPECT_EQ(message.title, "Quillmont");
            EXPECT_EQ(message.icon, MessageIcon::kInformation);
            all += message.text;
        }
        return all;
    }
    /// All steps back give the empty timeline, all steps forward the present one.
    void expectUndoAndRedo()
    {
        const std::string newest = text();
        const int steps = ModuleHistory::HistoryIndex;
        for (int i = 0; i < steps; ++i) {
            ModuleHistory::Undo();
        }
        EXPECT_EQ(text(), "");
        for (int i = 0; i < steps; ++i) {
            ModuleHistory::Redo();
        }
        EXPECT_EQ(text(), newest);
    }
};

TEST_F(AddingTest, FilesGoBehindTheLongestTrackAndStayLevel)
{
    add({kSound});
    EXPECT_EQ(text(), "A 0-5000");
    add({kMovie, kStill});
    EXPECT_EQ(text(), "V m5000-10000 10040-15040 A 0-5000 n5000-10040");
    EXPECT_EQ(history(), "Add to Timeline Add to Timeline Add to Timeline | 3/3");
    EXPECT_EQ(items("Video"), "mpeg4.avi still.bmp ");
    EXPECT_EQ(items("Audio 1"), "stereo-48k.wav mpeg4.avi ");
    EXPECT_EQ(forms::frmPreview.sldSeekBar.Max(), GetTimelineDuration());
    EXPECT_TRUE(state::ProjectModified);
    expectUndoAndRedo();
}

TEST_F(AddingTest, NothingSelected)
{
    add({});
    EXPECT_EQ(takeMessage(), "Unable to add to the timeline because no file is selected. Please select a file from the "
                             "media list.");
    EXPECT_EQ(forms::frmPreview.sldSeekBar.Max(), 10);
    add({kMovie});
    ModuleHistory::OnEditUndoClick();
    state::ProjectModified = false;
    add({}); // what was undone can still be redone
    addOverlay({});
    EXPECT_EQ(history(), " | 0/1");
    EXPECT_FALSE(state::ProjectModified);
    ModuleHistory::OnEditRedoClick();
    EXPECT_EQ(text(), "V m0-5000 A n0-5040");
}

TEST_F(AddingTest, OverlaysFollowEachOtherWithTheirKeys)
{
    addOverlay({kStill});
    EXPECT_EQ(takeMessage(), "Unable to add to overlay as the video track is empty.");
    EXPECT_EQ(history(), " | 0/0");
    add({kMovie});
    SetSliderPosition(2000, false);
    addOverlay({kMovie, kSound});
    addOverlay({kStill});
    EXPECT_EQ(text(), "V m0-5000 O m0-5000#0,0,0 5000-10000#0,0,0 A n0-5040");
    EXPECT_EQ(history(), "Add to Timeline Add to Overlay Add to Overlay | 3/3");
    EXPECT_EQ(items("Overlays"), "mpeg4.avi still.bmp ");
    std::string name(10, ' ');
    check(timelineCalls->GetTransitionName(state::OverlayTrack, 1, name));
    EXPECT_EQ(name, "DxtKey    ");
    EXPECT_EQ(engineCalls.counts["SetKeyParameter"], 2);
    EXPECT_EQ(engineCalls.counts["SetKeyColor"], 2);
    expectUndoAndRedo();
}

TEST_F(AddingTest, KeysFollowTheirOverlaysWhenBothEndsMoved)
{
    put("V 0-5000 O 0-1000#0");
    const struct {
        Milliseconds start, stop;
        const char* after;
    } cases[] = {{0, 2000, "#0!0-1000"}, {500, 1000, "#0!0-1000"}, {600, 1700, "600-1700=0-1000#0"}};
    for (const auto& [start, stop, after] : cases) {
        engine::Bool16 ok = engine::kFalse;
        check(timelineCalls->SetTransitionTimes(state::OverlayTrack, 0, 0, 1000, ok));
        check(timelineCalls->SetSourceTimes(state::OverlayTrack, 0, start, stop, ok));
        SyncOverlayTransitions();
        EXPECT_TRUE(text().ends_with(after)) << start << " " << text();
    }
}

TEST_F(AddingTest, Effects)
{
    const char* const kFull =
        "Unable to add effect.\r\n\r\nThe duration of the effect track cannot be more than the duration of the video "
        "track. You may have to shift one or more effects or clear the effect track to make room for a new effect.";
    frmTools::OnAddClick();
    EXPECT_EQ(takeMessage(), "Unable to add effect to the timeline as the video track is empty.");
    add({kMovie});
    SetSliderPosition(2500, false);
    frmTools::SelectEffect("Wave");
    frmTools::OnAddClick();
    showSelection(200, 1000); // 200 to 1000 ms
    frmTools::SelectEffect("Blur");
    frmTimeline::picEffect_OLEDragDrop(0);
    ShowSelSliders(false);
    EXPECT_EQ(text(), "V m0-5000 E 200-1000 Wave2500-4500 A n0-5040");
    EXPECT_EQ(items("Effects"), "Blur Wave "); // in the order of the lane
    EXPECT_EQ(history(), "Add to Timeline Add Effect to Timeline Add Effect to Timeline | 3/3");
    frmTools::OnAddClick(); // the engine has no room under the slider
    EXPECT_EQ(takeMessage(), "Unable to add effect to timeline. The timeline may be empty.");
    form.chkLockEffect[0].Value = std::int16_t{1};
    frmTools::OnAddClick();
    EXPECT_EQ(takeMessage(), "Please unlock the Effect Track before adding an effect to it.");
    form.chkLockEffect[0].Value = std::int16_t{0};
    put("E 4600-5000");
    SetSliderPosition(1500, false);
    frmTools::OnAddClick(); // there is room here, but the last effect ends with the video
    EXPECT_EQ(takeMessage(), kFull);
    engine::Bool16 ok = engine::kFalse;
    check(timelineCalls->RemoveEffect(video(), 2, ok));
    forms::frmTools.lvwEffects.SelectedItem = 0;
    frmTools::OnAddClick();
    EXPECT_EQ(takeMessage(), "Unable to add effect to timeline. The timeline may be empty.");
    EXPECT_EQ(history(), "Add to Timeline Add Effect to Timeline Add Effect to Timeline | 3/3");
    expectUndoAndRedo();
}

TEST_F(AddingTest, AnEffectGoesIntoALaneThatIsLongerThanTheVideo)
{
    lay("V m0-5000 E 4600-5200");
    SetSliderPosition(1500, false);
    frmTools::SelectEffect("Wave");
    frmTools::OnAddClick();
    expectStep("V m0-5000 E 4600-5200", "V m0-5000 E Wave1500-3500 4600-5200");
}

TEST_F(AddingTest, OneHandleOfTheSelectionAddsNoEffect)
{
    add({kMovie});
    ShowStartSelSlider(true);
    EXPECT_TRUE(OnEditAddEffectToTimelineClick());
    EXPECT_EQ(text(), "V m0-5000 A n0-5040");
}

TEST_F(AddingTest, FailuresLeaveHistoryAndTimelineAsTheyWere)
{
    expectsErrors = true;
    add({kMovie});
    addOverlay({kStill});
    ModuleHistory::Undo(); // an entry is undone, which a new operation would drop
    const std::string layoutBefore = text();
    const std::string historyBefore = history();
    const struct {
        const char* operation;
        int nth;
        std::function<void()> command;
    } cases[] = {
        {"AppendSource", 1, [&] { add({kMovie}); }},           {"AppendSource", 1, [&] { addOverlay({kStill}); }},
        {"AddTransitionAt", 1, [&] { addOverlay({kStill}); }}, {"SetKeyColor", 1, [&] { addOverlay({kStill}); }},
        {"AddEffectAt", 1, [] { AddSelectedEffect(); }},
    };
    for (const auto& [operation, nth, add] : cases) {
        engineCalls.failCall({operation}, nth);
        add();
        EXPECT_FALSE(engineCalls.failsLater()) << operation;
        EXPECT_EQ(text(), layoutBefore) << operation;
        EXPECT_EQ(history(), historyBefore) << operation;
    }
    ModuleHistory::Redo();
    EXPECT_EQ(text(), "V m0-5000 O 0-5000#0,0,0 A n0-5040");
}

TEST_F(AddingTest, FailureInTheMiddleOfAFileLeavesItsFirstStream)
{
    expectsErrors = true;
    engineCalls.failCall({"AppendSource"}, 2);
    add({kMovie, kStill});
    EXPECT_EQ(text(), "V m0-5000");
    EXPECT_EQ(history(), "Add to Timeline | 1/1");
    EXPECT_EQ(takeMessage(), "");
    expectUndoAndRedo();
    const std::pair<std::int32_t, const char*> known[] = {{91, "Unable to add to timeline. The media list is empty."},
                                                          {6, "Unable to add to timeline. Unexpected error."}};
    for (const auto& [number, text] : known) {
        engineCalls.failCall({"AppendSource"}, 1, engine::Status(0x800A0000u + static_cast<std::uint32_t>(number)));
        add({kStill});
        EXPECT_EQ(takeMessage(), text);
    }
}

TEST_F(AddingTest, DropsFromTheMediaList)
{
    using namespace frmTimeline;
    const char* const kBoth =
        "Please unlock the audio and / or video track(s) before attempting to add this file to the "
        "timeline.";
    const char* const movie = "V m0-5000 A n0-5040";
    const struct {
        void (*drop)(std::int16_t);
        std::int16_t index;
        CheckBox* locked;
        const char* after;
        const char* message;
    } cases[] = {
        {picVideo_OLEDragDrop, 0, &form.chkLockAudio[1], "", kBoth},
        {picAudio_OLEDragDrop, 1, &form.chkLockVideo[0], "", "Track is locked"},
        {picAudio_OLEDragDrop, 1, nullptr, "", ""},
        {picOverlay_OLEDragDrop, 0, &form.chkLockOverlay[0], "", "Track is locked"},
        {picOverlay_OLEDragDrop, 0, &form.chkLockVideo[0], "", ""},
        {picVideo_OLEDragDrop, 0, &form.chkLockOverlay[0], movie, ""},
        {picAudio_OLEDragDrop, 0, nullptr, movie, ""},
        {picOverlay_OLEDragDrop, 0, nullptr, "", ""},
    };
    selectRows({kMovie});
    for (const auto& [drop, index, locked, after, message] : cases) {
        if (locked != nullptr) {
            locked->Value = std::int16_t{1};
        }
        drop(index);
        EXPECT_EQ(text(), after);
        EXPECT_EQ(takeMessage(), message);
        if (locked != nullptr) {
            locked->Value = std::int16_t{0};
        }
        ModuleHistory::EmptyTimeline();
        ModuleHistory::EmptyHistory();
    }
    picVideo_OLEDragDrop(0);
    picOverlay_OLEDragDrop(0);
    EXPECT_EQ(text(), "V m0-5000 O m0-5000#0,0,0 A n0-5040");
    expectUndoAndRedo();
}

TEST_F(AddingTest, TheViewFollowsWhatComesWhenItIsAskedTo)
{
    frmTools::SelectEffect("Blur");
    const struct {
        const char* what;
        std::function<void()> operation;
        std::int32_t left; // ticks of 100 ms
    } cases[] = {{"files behind the film",
                  [&] {
                      add({kMovie, kStill});
                  },
                  596},
                 {"overlays behind the last one", [&] { addOverlay({kStill}); }, 196},
                 {"an effect at the slider", [] { AddSelectedEffect(); }, 396},
                 {"a paste at the slider", [] { moduleEdit::EditPaste(); }, 396},
                 {"a paste over a range",
                  [] {
                      showSelection(30000, 31000);
                      moduleEdit::EditPaste();
                  },
                  296},
                 {"what is in view already",
                  [] {
                      showSelection(1000, 2000);
                      moduleEdit::EditPaste();
                  },
                  0}};
    for (const auto& [what, operation, left] : cases) {
        for (const bool isFollowed : {false, true}) {
            SCOPED_TRACE(what);
            lay("V 0-60000 O 0-20000#30");
            fill("V 1500 E 700");
            moduleTimeline::ShowSelSliders(false);
            moduleScaleRenderer::AdjustScroll();
            form.hsb.SetValue(0);
            SetSliderPosition(40000, false);
            forms::mdiTarnwick.mnuViewFollowEdits.Checked = isFollowed;
            operation();
            EXPECT_EQ(form.hsb.Value(), isFollowed ? left : 0);
        }
    }
    forms::mdiTarnwick.mnuViewFollowEdits.Checked = false;
}

} // namespace
} // namespace logic_test
