// Pack, restore, repeat, split and the clear commands, as their menu entries run them.

#include "timeline/edit_harness.h"

#include "editing/track_commands.h"
#include "engine/ITWPreview.h"
#include "hand/bookmark_events.h"
#include "preview/moduleTWPreview.h"
#include "shell/edit_commands.h"
#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"

namespace timeline_test {
namespace {

using namespace mdiTarnwick;

class TrackCommandsTest : public EditTest {
protected:
    static std::function<void()> splitAt(Milliseconds pos)
    {
        return [pos] {
            moduleTimeline::SetSliderPosition(pos, false);
            mnuToolsSplitTimeline_Click();
        };
    }
};

TEST_F(TrackCommandsTest, Pack)
{
    run({"every row", "V 500-1000* 1200-2000 5000-5100 E 300-400 900-1000 O 100-900#30 1000-1400#31 A B 10-20",
         mnuToolsPackTimelineBars_Click,
         "V 0-500* 500-1300 1300-1400 E 0-100 100-200 O 0-800#30 800-1200#31 A B 0-10"});
    lock(form.chkLockVideo[0]);
    run({"but not a locked one", "V 500-1000 E 300-400 O A 300-500 B", mnuToolsPackTimelineBars_Click,
         "V 500-1000 E 0-100 O A 0-200 B"});
    lock(form.chkLockVideo[0], false);
    lock(form.chkLockEffect[0]);
    lock(form.chkLockOverlay[0]);
    run({"nor a locked lane", "V 500-1000 E 300-400 O 100-900#30 A B", mnuToolsPackTimelineBars_Click,
         "V 0-500 E 300-400 O 100-900#30 A B"});
    lay("V 0-500 500-900 E O A B");
    mnuToolsPackTimelineBars_Click();
    EXPECT_EQ(text(), "V 0-500 500-900 E O A B");
    EXPECT_EQ(history(), "Pack Timeline Tracks | 1/1") << "an entry all the same";
}

TEST_F(TrackCommandsTest, RestoreSize)
{
    lock(form.chkLockAudio[0]); // is not asked
    const Case cases[] = {
        {"longer: what follows gives way", "V 0-5000=0-8000* 5000-10000 E O A 0-500=0-600* 700-900 B",
         mnuEditRestoreSize_Click, "V 0-8000* 8000-13000 E O A 0-600* 700-900 B"},
        {"shorter: what follows stays", "V 0-5000=1000-2000* 5000-6000=0-500 E O A B", mnuEditRestoreSize_Click,
         "V 0-1000=1000-2000* 5000-6000=0-500 E O A B"},
        {"two in a row", "V 0-100=0-300* 100-200=0-400* E O A B", mnuEditRestoreSize_Click,
         "V 0-300* 300-700* E O A B"},
        {"an overlay with its key", "V E O 0-1000=0-400#30* 1000-1500=0-700#31* A B", mnuEditRestoreSize_Click,
         "V E O 0-400#30* 1000-1700#31* A B"},
        {"media without length", "V 0-1000=300-300* E O A B", mnuEditRestoreSize_Click, "V 0-1000=300-300* E O A B"},
    };
    for (const Case& c : cases) {
        run(c);
    }
}

TEST_F(TrackCommandsTest, RepeatAudio)
{
    const Case cases[] = {
        {"whole repeats", "V 0-3000 E O A 0-1000=100-1100* B", mnuToolsRepeatAudio_Click,
         "V 0-3000 E O A 0-1000=100-1100* 1000-2000=100-1100 2000-3000=100-1100 B"},
        {"the last is cut short", "V 0-2500 E O A 0-1000=100-1100* B", mnuToolsRepeatAudio_Click,
         "V 0-2500 E O A 0-1000=100-1100* 1000-2000=100-1100 2000-2500=100-500 B"},
        {"the last source of the first track with a selected one", "V 0-2000 E O A 0-500 B 0-100* 400-1400",
         mnuToolsRepeatAudio_Click, "V 0-2000 E O A 0-500 B 0-100* 400-1400 1400-2000"},
        {"at its own speed again", "V 0-3000 E O A 0-2000=0-500* B", mnuToolsRepeatAudio_Click,
         "V 0-3000 E O A 0-2000=0-500* 2000-2500 2500-3000 B"},
    };
    for (const Case& c : cases) {
        run(c);
    }
    for (const char* const layout :
         {"V 0-3000 E O A 0-3000* B", "V E O A 0-500* B", "V 0-3000 E O A 0-500 B", "V 0-3000 E O A B",
          "V 0-3000 E O A 0-500=700-700* B", "V 0-3000 E O A 0-500=700-100* B"}) {
        lay(layout);
        mnuToolsRepeatAudio_Click();
        EXPECT_EQ(text(), layout);
        EXPECT_EQ(ModuleHistory::HistoryIndex, 0);
        EXPECT_FALSE(state::ProjectModified);
    }
    command("Pack", [] {});
    EXPECT_EQ(history(), "Pack Timeline Tracks | 1/1") << "the next step drops the entry that stayed behind";
}

TEST_F(TrackCommandsTest, RepeatAudioStopsWhenTheHistoryTakesNoMore)
{
    lay("V 0-90000 E O A 0-1* B");
    moduleTimeline::RepeateAudio();
    std::int16_t count = 0;
    check(timelineCalls->GetSourceCount(audio(1), count));
    EXPECT_EQ(count, 32766) << "and one of the video track";
    ModuleHistory::StoreCurrentTLImage();
    EXPECT_TRUE(ModuleHistory::LastImage.IsWhole);
    ModuleHistory::EmptyTimeline();
}

TEST_F(TrackCommandsTest, Split)
{
    const Case cases[] = {
        {"all that lies there", "V 0-1000m3 1000-2000* E 200-700* O 100-1500#30 A 300-500 B", splitAt(400),
         "V 0-400m3 400-1000=400-1000m3 1000-2000* E 200-400 400-700 O 100-400#30 400-1500=300-1400#30 "
         "A 300-400 400-500=100-200 B"},
        {"in slow motion", "V 0-2000=100-1100 E O A B", splitAt(1000), "V 0-1000=100-550 1000-2000=50-1100 E O A B"},
        {"10 ms from an end, 10 from the other", "V 0-410 E 400-410 O A 390-500 B", splitAt(400),
         "V 0-410 E 400-410 O A 390-500 B"},
        {"20 ms from both", "V 380-420 E O A B", splitAt(400), "V 380-400 400-420=20-40 E O A B"},
    };
    for (const Case& c : cases) {
        run(c);
    }
    lock(form.chkLockVideo[0]);
    lock(form.chkLockOverlay[0]);
    run({"not on locked rows", "V 0-1000 E 200-700 O 100-1500#30 A B", splitAt(400),
         "V 0-1000 E 200-400 400-700 O 100-1500#30 A B"});
}

TEST_F(TrackCommandsTest, SliderAndPictureGoToTheCut)
{
    const auto player = engine::EngineAs<engine::ITWPreview>();
    engineCalls.answer = testsupport::HeldPlayer{"PreviewInterface"};
    frmTools::Form_Load();
    moduleScaleRenderer::SetZoomFactor(40);
    const struct {
        const char* what;
        void (*command)();
        bool isOverRange = false; // while one is shown
    } cases[] = {{"split", mnuToolsSplitTimeline_Click},
                 {"paste", mnuEditPaste_Click, true},
                 {"effect", mnuAddEffectBlur_Click, true},
                 {"marker", frmTimeline::cmdAddBookmark_Click}};
    enum Preview : std::int16_t { kStopped, kPlaying, kPaused };
    for (const auto& [what, command, isOverRange] : cases) {
        for (const Preview doing : {kStopped, kPlaying, kPaused}) {
            for (const bool hasRange : {false, true}) {
                SCOPED_TRACE(what + std::to_string(doing) + std::to_string(hasRange));
                lay("V 0-4000* E O A B");
                mnuEditCopy_Click();
                showSelection(20, 50);
                moduleTimeline::ShowSelSliders(hasRange);
                moduleTimeline::SetSliderPosition(1013, false); // it is drawn at 1000
                forms::frmPreview.sldSeekBar.SetValue(1013);
                moduleTWPreview::PreviewState = doing;
                engine::Bool16 ok = engine::kFalse;
                check(player->Seek(1013, ok));
                command();
                const bool goes = !hasRange || !isOverRange;
                EXPECT_EQ(state::SliderPosition, goes ? 1000 : 1013);
                EXPECT_EQ(forms::frmPreview.lblCurrentTime.Caption.get(), goes ? "0:00:01.000" : "0:00:01.013");
                Milliseconds picture = 0;
                check(player->GetPosition(picture));
                EXPECT_EQ(picture == 1000, goes && doing != kPlaying);
                if (goes && doing != kPlaying) {
                    EXPECT_EQ(forms::frmPreview.sldSeekBar.Value(), 1000);
                }
                EXPECT_EQ(moduleTWPreview::PreviewState, doing);
                if (command == mnuToolsSplitTimeline_Click) {
                    EXPECT_EQ(text(), "V 0-1000 1000-4000=1000-4000 E O A B");
                }
            }
        }
    }
}

TEST_F(TrackCommandsTest, Clear)
{
    const char* const full = "V 0-1000* E 200-700 O 100-900#30 1000-1100#31 A 300-500 B 0-100";
    run({"effects", full, mnuEditClearEffect_Click, "V 0-1000* E O 100-900#30 1000-1100#31 A 300-500 B 0-100"});
    run({"overlays", full, mnuEditClearOverlay_Click, "V 0-1000* E 200-700 O A 300-500 B 0-100"});
    platform.answers = {MessageAnswer::kNo, MessageAnswer::kYes};
    run({"all: no", full, mnuEditClearTimeline_Click, full});
    run({"all: yes", full, mnuEditClearTimeline_Click, "V E O A B"});
    ASSERT_EQ(platform.messages.size(), 2U);
    EXPECT_EQ(platform.messages[1].text, "Are you sure you want to clear the timeline?");
    EXPECT_EQ(platform.messages[1].icon, MessageIcon::kQuestion);

    const struct {
        CheckBox& box;
        void (*command)();
        const char* message;
    } refusals[] = {
        {form.chkLockEffect[0], mnuEditClearEffect_Click,
         "Please unlock the Effect Track before attempting to clear it."},
        {form.chkLockOverlay[0], mnuEditClearOverlay_Click,
         "Please unlock the Overlays Track before attempting to clear it."},
        {form.chkLockAudio[1], mnuEditClearTimeline_Click,
         "One or more tracks in the timeline are locked. Please unlock these tracks before attempting to clear the "
         "timeline."},
    };
    for (const auto& [box, run, message] : refusals) {
        lay(full);
        lock(box);
        run();
        lock(box, false);
        EXPECT_EQ(platform.messages.back().text, message);
        EXPECT_EQ(platform.messages.back().icon, MessageIcon::kInformation);
        EXPECT_EQ(text(), full);
        EXPECT_EQ(history(), " | 0/0");
    }
}

TEST_F(TrackCommandsTest, AFailureHalfWayLeavesEverythingAsItWas)
{
    expectsErrors = true;
    const char* const full = "V 500-1000 1200-2000 E 200-900 O 100-900#30 A 300-500 600-900=0-500 B";
    const struct {
        std::function<void()> command;
        const char* call;
        int nth;
    } failures[] = {
        {mnuToolsPackTimelineBars_Click, "ShiftSources", 2},
        {mnuToolsPackTimelineBars_Click, "ShiftTransitions", 1},
        {mnuEditRestoreSize_Click, "SetTransitionTimes", 1},
        {mnuToolsRepeatAudio_Click, "SetSourceMediaTimes", 2},
        {splitAt(800), "InsertEffect", 1},
        {splitAt(800), "InsertTransition", 2},
        {mnuEditClearOverlay_Click, "RemoveSource", 1},
    };
    for (const auto& [command, call, nth] : failures) {
        SCOPED_TRACE(call);
        lay(full);
        select(audio(1), 1);
        select(state::OverlayTrack, 0);
        engineCalls.failCall({call}, nth);
        command();
        EXPECT_FALSE(engineCalls.failsLater());
        EXPECT_EQ(unselected(text()), full);
        EXPECT_TRUE(history().ends_with(" | 0/1")) << "out of force: " << history();
        EXPECT_FALSE(state::ProjectModified);
    }
}

} // namespace
} // namespace timeline_test
