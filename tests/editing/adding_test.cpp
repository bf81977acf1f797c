// Files, overlays and effects on the timeline, with the history of each; and what is refused.

#include "timeline/timeline_harness.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTools.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "hand/row_pointer.h"
#include "history/ModuleHistory.h"
#include "media/moduleTarnwick.h"
#include "shell/frmTools_events.h"
#include "timeline/item_names.h"

namespace timeline_test {
namespace {

using namespace moduleTimeline;

// Rows of the media list, all of five seconds.
enum Row { kMovie = 1, kSound, kStill };

class AddingTest : public TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        ModuleHistory::EmptyHistory();
        frmTools::Form_Load();
        std::vector<std::string> paths;
        for (const char* const name : {"mpeg4.avi", "stereo-48k.wav", "still.bmp"}) {
            paths.push_back((testmedia::mediaFolder() / name).string());
        }
        moduleTarnwick::OpenDroppedFiles(paths);
        selectRows({});
        state::ProjectModified = false;
    }
    void TearDown() override
    {
        ModuleHistory::EmptyHistory();
        TimelineTest::TearDown();
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

    /// Everything on the tracks in tenths of a second: "V mpeg4.avi 0-50|E |O |A mpeg4.avi 0-50|B ". An overlay has its
    /// key behind it.
    std::string layout() const
    {
        timeline::ItemNames names;
        const auto span = [](Milliseconds start, Milliseconds stop) {
            return " " + std::to_string(start / 100) + "-" + std::to_string(stop / 100);
        };
        const auto sources = [&](Handle track) {
            std::string all;
            Milliseconds start = 0;
            Milliseconds stop = 0;
            engine::Bool16 ok = engine::kFalse;
            for (std::int16_t seq = 0; check(timelineCalls->GetSourceTimes(track, seq, start, stop, ok)), ok != 0;
                 ++seq) {
                all += " " + std::string(names.ofSource(track, seq)) + span(start, stop);
                if (check(timelineCalls->GetTransitionTimes(track, seq, start, stop, ok)), ok != 0) {
                    all += " key" + span(start, stop);
                }
            }
            return all;
        };
        std::string effects;
        Milliseconds start = 0;
        Milliseconds stop = 0;
        engine::Bool16 ok = engine::kFalse;
        for (std::int16_t seq = 0; check(timelineCalls->GetEffectTimes(video(), seq, start, stop, ok)), ok != 0;
             ++seq) {
            effects += " " + std::string(names.ofEffect(video(), seq)) + span(start, stop);
        }
        return "V" + sources(video()) + "|E" + effects + "|O" + sources(state::OverlayTrack) + "|A" + sources(audio(1))
               + "|B" + sources(audio(2));
    }
    /// "2 of 3: Cut, Overlay*", undone rows with a star.
    static std::string history()
    {
        std::string all = std::to_string(ModuleHistory::HistoryIndex) + " of "
                          + std::to_string(ModuleHistory::HistoryCollection.Count()) + ":";
        for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
            all += " " + row.Text + (row.ForeColor == static_cast<std::int32_t>(0x8000000F) ? "*" : "") + ",";
        }
        return all;
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
        const std::string newest = layout();
        const int steps = ModuleHistory::HistoryIndex;
        for (int i = 0; i < steps; ++i) {
            ModuleHistory::Undo();
        }
        EXPECT_EQ(layout(), "V|E|O|A|B");
        for (int i = 0; i < steps; ++i) {
            ModuleHistory::Redo();
        }
        EXPECT_EQ(layout(), newest);
    }
};

TEST_F(AddingTest, FilesGoBehindTheLongestTrackAndStayLevel)
{
    add({kSound});
    EXPECT_EQ(layout(), "V|E|O|A stereo-48k.wav 0-50|B");
    add({kMovie, kStill});
    EXPECT_EQ(layout(), "V mpeg4.avi 50-100 still.bmp 100-150|E|O|A stereo-48k.wav 0-50 mpeg4.avi 50-100|B");
    EXPECT_EQ(history(), "3 of 3: Add to Timeline, Add to Timeline, Add to Timeline,");
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
    EXPECT_EQ(history(), "0 of 1:");
    EXPECT_FALSE(state::ProjectModified);
    ModuleHistory::OnEditRedoClick();
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O|A mpeg4.avi 0-50|B");
}

TEST_F(AddingTest, OverlaysFollowEachOtherWithTheirKeys)
{
    addOverlay({kStill});
    EXPECT_EQ(takeMessage(), "Unable to add to overlay as the video track is empty.");
    EXPECT_EQ(history(), "0 of 0:");
    add({kMovie});
    SetSliderPosition(2000, false);
    addOverlay({kMovie, kSound});
    addOverlay({kStill});
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O mpeg4.avi 0-50 key 0-50 still.bmp 50-100 key 50-100|A mpeg4.avi 0-50|B");
    EXPECT_EQ(history(), "3 of 3: Add to Timeline, Add to Overlay, Add to Overlay,");
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
    put(video(), 0, 5000);
    put(state::OverlayTrack, 0, 1000);
    const struct {
        Milliseconds start, stop;
        const char* key;
    } cases[] = {{0, 2000, " key 0-10"}, {500, 1000, " key 0-10"}, {600, 1700, " key 6-17"}};
    for (const auto& [start, stop, key] : cases) {
        engine::Bool16 ok = engine::kFalse;
        check(timelineCalls->SetTransitionTimes(state::OverlayTrack, 0, 0, 1000, ok));
        check(timelineCalls->SetSourceTimes(state::OverlayTrack, 0, start, stop, ok));
        SyncOverlayTransitions();
        EXPECT_NE(layout().find(key), std::string::npos) << start << " " << layout();
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
    showSelection(15, 95); // 200 to 1000 ms
    frmTools::SelectEffect("Blur");
    frmTimeline::picEffect_OLEDragDrop(0);
    ShowSelSliders(false);
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E Blur 2-10 Wave 25-45|O|A mpeg4.avi 0-50|B");
    EXPECT_EQ(items("Effects"), "Blur Wave "); // in the order of the lane
    EXPECT_EQ(history(), "3 of 3: Add to Timeline, Add Effect to Timeline, Add Effect to Timeline,");
    frmTools::OnAddClick(); // the engine has no room under the slider
    EXPECT_EQ(takeMessage(), "Unable to add effect to timeline. The timeline may be empty.");
    form.chkLockEffect[0].Value = std::int16_t{1};
    frmTools::OnAddClick();
    EXPECT_EQ(takeMessage(), "Please unlock the Effect Track before adding an effect to it.");
    form.chkLockEffect[0].Value = std::int16_t{0};
    putEffect(4600, 5000);
    SetSliderPosition(1500, false);
    frmTools::OnAddClick(); // there is room here, but the last effect ends with the video
    EXPECT_EQ(takeMessage(), kFull);
    engine::Bool16 ok = engine::kFalse;
    check(timelineCalls->RemoveEffect(video(), 2, ok));
    forms::frmTools.lvwEffects.SelectedItem = 0;
    frmTools::OnAddClick();
    EXPECT_EQ(takeMessage(), "Unable to add effect to timeline. The timeline may be empty.");
    EXPECT_EQ(history(), "3 of 3: Add to Timeline, Add Effect to Timeline, Add Effect to Timeline,");
    expectUndoAndRedo();
}

TEST_F(AddingTest, OneHandleOfTheSelectionAddsNoEffect)
{
    add({kMovie});
    ShowStartSelSlider(true);
    EXPECT_TRUE(OnEditAddEffectToTimelineClick());
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O|A mpeg4.avi 0-50|B");
}

TEST_F(AddingTest, FailuresLeaveHistoryAndTimelineAsTheyWere)
{
    expectsErrors = true;
    add({kMovie});
    addOverlay({kStill});
    ModuleHistory::Undo(); // an entry is undone, which a new operation would drop
    const std::string layoutBefore = layout();
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
    for (const auto& [operation, nth, command] : cases) {
        engineCalls.failCall({operation}, nth);
        command();
        EXPECT_FALSE(engineCalls.failsLater()) << operation;
        EXPECT_EQ(layout(), layoutBefore) << operation;
        EXPECT_EQ(history(), historyBefore) << operation;
    }
    ModuleHistory::Redo();
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O still.bmp 0-50 key 0-50|A mpeg4.avi 0-50|B");
}

TEST_F(AddingTest, FailureInTheMiddleOfAFileLeavesItsFirstStream)
{
    expectsErrors = true;
    engineCalls.failCall({"AppendSource"}, 2);
    add({kMovie, kStill});
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O|A|B");
    EXPECT_EQ(history(), "1 of 1: Add to Timeline,");
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
    const std::string movie = "V mpeg4.avi 0-50|E|O|A mpeg4.avi 0-50|B";
    const std::string empty = "V|E|O|A|B";
    const struct {
        void (*drop)(std::int16_t);
        std::int16_t index;
        CheckBox* locked;
        std::string layout;
        const char* message;
    } cases[] = {
        {picVideo_OLEDragDrop, 0, &form.chkLockAudio[1], empty, kBoth},
        {picAudio_OLEDragDrop, 1, &form.chkLockVideo[0], empty, "Track is locked"},
        {picAudio_OLEDragDrop, 1, nullptr, empty, ""},
        {picOverlay_OLEDragDrop, 0, &form.chkLockOverlay[0], empty, "Track is locked"},
        {picOverlay_OLEDragDrop, 0, &form.chkLockVideo[0], empty, ""},
        {picVideo_OLEDragDrop, 0, &form.chkLockOverlay[0], movie, ""},
        {picAudio_OLEDragDrop, 0, nullptr, movie, ""},
        {picOverlay_OLEDragDrop, 0, nullptr, "V|E|O|A|B", ""},
    };
    selectRows({kMovie});
    for (const auto& [drop, index, locked, after, message] : cases) {
        if (locked != nullptr) {
            locked->Value = std::int16_t{1};
        }
        drop(index);
        EXPECT_EQ(layout(), after);
        EXPECT_EQ(takeMessage(), message);
        if (locked != nullptr) {
            locked->Value = std::int16_t{0};
        }
        ModuleHistory::EmptyTimeline();
        ModuleHistory::EmptyHistory();
    }
    picVideo_OLEDragDrop(0);
    picOverlay_OLEDragDrop(0);
    EXPECT_EQ(layout(), "V mpeg4.avi 0-50|E|O mpeg4.avi 0-50 key 0-50|A mpeg4.avi 0-50|B");
    expectUndoAndRedo();
}

} // namespace
} // namespace timeline_test
