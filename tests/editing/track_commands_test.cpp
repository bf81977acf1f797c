// Pack, restore, repeat, split and the clear commands, as their menu entries run them.

#include "support/logic_harness.h"

#include "editing/track_commands.h"
#include "engine/ITWPreview.h"
#include "hand/bookmark_events.h"
#include "preview/moduleTWPreview.h"
#include "shell/edit_commands.h"
#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/track_menu.h"

namespace logic_test {
namespace {

using namespace mdiTarnwick;

class TrackCommandsTest : public LogicTest {
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
    run({"every row", "V 500-1000* 1200-2000 5000-5100 E 300-400 900-1000 O 100-900#30 1000-1400#31 B 10-20",
         mnuToolsPackTimelineBars_Click, "V 0-500* 500-1300 1300-1400 E 0-100 100-200 O 0-800#30 800-1200#31 B 0-10"});
    setRows("Lv");
    run({"but not a locked one", "V 500-1000 E 300-400 A 300-500", mnuToolsPackTimelineBars_Click,
         "V 500-1000 E 0-100 A 0-200"});
    setRows("Le Lo");
    run({"nor a locked lane", "V 500-1000 E 300-400 O 100-900#30", mnuToolsPackTimelineBars_Click,
         "V 0-500 E 300-400 O 100-900#30"});
    lay("V 0-500 500-900");
    mnuToolsPackTimelineBars_Click();
    EXPECT_EQ(text(), "V 0-500 500-900");
    EXPECT_EQ(history(), "Pack Timeline Tracks | 1/1") << "an entry all the same";
}

TEST_F(TrackCommandsTest, RestoreSize)
{
    setRows("La"); // is not asked
    const Edit cases[] = {
        {"longer: what follows gives way", "V 0-5000=0-8000* 5000-10000 A 0-500=0-600* 700-900",
         mnuEditRestoreSize_Click, "V 0-8000* 8000-13000 A 0-600* 700-900"},
        {"shorter: what follows stays", "V 0-5000=1000-2000* 5000-6000=0-500", mnuEditRestoreSize_Click,
         "V 0-1000=1000-2000* 5000-6000=0-500"},
        {"two in a row", "V 0-100=0-300* 100-200=0-400*", mnuEditRestoreSize_Click, "V 0-300* 300-700*"},
        {"an overlay with its key", "O 0-1000=0-400#30* 1000-1500=0-700#31*", mnuEditRestoreSize_Click,
         "O 0-400#30* 1000-1700#31*"},
        {"media without length", "V 0-1000=300-300*", mnuEditRestoreSize_Click, "V 0-1000=300-300*"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
}

TEST_F(TrackCommandsTest, RepeatAudio)
{
    const Edit cases[] = {
        {"whole repeats", "V 0-3000 A 0-1000=100-1100*", mnuToolsRepeatAudio_Click,
         "V 0-3000 A 0-1000=100-1100* 1000-2000=100-1100 2000-3000=100-1100"},
        {"the last is cut short", "V 0-2500 A 0-1000=100-1100*", mnuToolsRepeatAudio_Click,
         "V 0-2500 A 0-1000=100-1100* 1000-2000=100-1100 2000-2500=100-500"},
        {"the last source of the first track with a selected one", "V 0-2000 A 0-500 B 0-100* 400-1400",
         mnuToolsRepeatAudio_Click, "V 0-2000 A 0-500 B 0-100* 400-1400 1400-2000"},
        {"at its own speed again", "V 0-3000 A 0-2000=0-500*", mnuToolsRepeatAudio_Click,
         "V 0-3000 A 0-2000=0-500* 2000-2500 2500-3000"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    for (const char* const layout : {"V 0-3000 A 0-3000*", "A 0-500*", "V 0-3000 A 0-500", "V 0-3000",
                                     "V 0-3000 A 0-500=700-700*", "V 0-3000 A 0-500=700-100*"}) {
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
    lay("V 0-90000 A 0-1*");
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
    const Edit cases[] = {
        {"all that lies there", "V 0-1000m3 1000-2000* E 200-700* O 100-1500#30 A 300-500", splitAt(400),
         "V 0-400m3 400-1000=400-1000m3 1000-2000* E 200-400 400-700 O 100-400#30 400-1500=300-1400#30 "
         "A 300-400 400-500=100-200"},
        {"in slow motion", "V 0-2000=100-1100", splitAt(1000), "V 0-1000=100-550 1000-2000=50-1100"},
        {"10 ms from an end, 10 from the other", "V 0-410 E 400-410 A 390-500", splitAt(400),
         "V 0-410 E 400-410 A 390-500"},
        {"11 ms from both", "V 389-411", splitAt(400), "V 389-400 400-411=11-22"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
    setRows("Lv Lo");
    run({"not on locked rows", "V 0-1000 E 200-700 O 100-1500#30", splitAt(400),
         "V 0-1000 E 200-400 400-700 O 100-1500#30"});
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
                lay("V 0-4000*");
                mnuEditCopy_Click();
                showSelection(1000, 2200);
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
                    EXPECT_EQ(text(), "V 0-1000 1000-4000=1000-4000");
                }
            }
        }
    }
}

TEST_F(TrackCommandsTest, Clear)
{
    const char* const full = "V 0-1000* E 200-700 O 100-900#30 1000-1100#31 A 300-500 B 0-100";
    run({"effects", full, mnuEditClearEffect_Click, "V 0-1000* O 100-900#30 1000-1100#31 A 300-500 B 0-100"});
    run({"overlays", full, mnuEditClearOverlay_Click, "V 0-1000* E 200-700 A 300-500 B 0-100"});
    platform.answers = {MessageAnswer::kNo, MessageAnswer::kYes};
    run({"all: no", full, mnuEditClearTimeline_Click, full});
    run({"all: yes", full, mnuEditClearTimeline_Click, ""});
    ASSERT_EQ(platform.messages.size(), 2U);
    EXPECT_EQ(platform.messages[1].text, "Are you sure you want to clear the timeline?");
    EXPECT_EQ(platform.messages[1].icon, MessageIcon::kQuestion);

    const struct {
        const char* locked;
        void (*command)();
        const char* message;
    } refusals[] = {
        {"Le", mnuEditClearEffect_Click, "Please unlock the Effect Track before attempting to clear it."},
        {"Lo", mnuEditClearOverlay_Click, "Please unlock the Overlays Track before attempting to clear it."},
        {"Lb", mnuEditClearTimeline_Click,
         "One or more tracks in the timeline are locked. Please unlock these tracks before attempting to clear the "
         "timeline."},
    };
    for (const auto& [locked, clear, message] : refusals) {
        lay(full);
        setRows(locked);
        clear();
        setRows("");
        EXPECT_EQ(platform.messages.back().text, message);
        EXPECT_EQ(platform.messages.back().icon, MessageIcon::kInformation);
        EXPECT_EQ(text(), full);
        EXPECT_EQ(history(), " | 0/0");
    }
}

TEST_F(TrackCommandsTest, AFailureHalfWayLeavesEverythingAsItWas)
{
    const char* const full = "V 500-1000 1200-2000 E 200-900 O 100-900#30* A 300-500 600-900=0-500*";
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
    for (const auto& [deed, call, nth] : failures) {
        runFailing(full, deed, {call}, nth);
    }
}

} // namespace
} // namespace logic_test
