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

TEST_F(TrackCommandsTest, RepeatAudioWhereThereIsNothingToRepeat)
{
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
