// Random commands, one after another: whatever they do, items stay in order and apart, overlays keep their keys,
// undoing all leads to the beginning and redoing all to the end.

#include "hand/row_events.h"
#include "hand/tree_drop.h"
#include "timeline/edit_harness.h"

#include <random>

namespace timeline_test {
namespace {

using namespace frmTimeline;
using namespace mdiTarnwick;

constexpr const char* kLayout = "V 0-1000 1000-1500=200-1200 2500-3000 3000-3900 E 0-100 300-900 2000-2600 O 0-500#30 "
                                "500-900=0-800#40 1500-1700#50 "
                                "A 200-700 700-1000=100-200 1500-1600 B 0-300 900-1000";

class CommandWalkTest : public EditTest {
protected:
    int upTo(int last) { return std::uniform_int_distribution(0, last)(random); }
    float pixel() { return static_cast<float>(upTo(399)); }

    /// Some command, with its values in words.
    std::string step()
    {
        constexpr void (*kTools[])() = {mnuToolsPackTimelineBars_Click, mnuEditRestoreSize_Click,
                                        mnuToolsRepeatAudio_Click,      mnuEditAddtoAudio1_Click,
                                        mnuEditAddtoAudio2_Click,       mnuEditClearEffect_Click,
                                        mnuEditClearOverlay_Click};
        const int which = upTo(11);
        if (which < 5) {
            return drag();
        }
        if (which < 8) {
            const std::vector<std::int32_t> from{upTo(4), upTo(3)};
            const std::vector<std::int32_t> to{upTo(1) == 0 ? from[0] : upTo(4), upTo(3)};
            tvwTimeline_OLEDragDrop(from, to);
            return "drop " + std::to_string(from[0]) + "." + std::to_string(from[1]) + " on " + std::to_string(to[0])
                   + "." + std::to_string(to[1]);
        }
        if (which < 10) {
            const int pos = upTo(400) * 10;
            moduleTimeline::SetSliderPosition(pos, false);
            mnuToolsSplitTimeline_Click();
            return "split " + std::to_string(pos);
        }
        const int tool = upTo(upTo(9) == 0 ? 6 : 4); // clearing seldom
        kTools[tool]();
        return "tool " + std::to_string(tool);
    }

    std::string drag()
    {
        constexpr decltype(&picVideo_MouseDown) kDown[] = {picVideo_MouseDown, picEffect_MouseDown,
                                                           picOverlay_MouseDown, picAudio_MouseDown};
        constexpr decltype(&picVideo_MouseMove) kMove[] = {picVideo_MouseMove, picEffect_MouseMove,
                                                           picOverlay_MouseMove, picAudio_MouseMove};
        constexpr decltype(&picVideo_MouseUp) kUp[] = {picVideo_MouseUp, picEffect_MouseUp, picOverlay_MouseUp,
                                                       picAudio_MouseUp};
        const auto row = static_cast<std::size_t>(upTo(3));
        const auto index = static_cast<std::int16_t>(row == 3 ? upTo(1) : 0);
        const int keys = upTo(2) == 0 ? 2 : 0;
        const float y = upTo(1) == 0 ? 5 : 15;
        const float x = pixel();
        const float to = pixel();
        kDown[row](index, 1, keys, x, y);
        kMove[row](index, 1, keys, to, y);
        kUp[row](index, 1, keys, to, y);
        return "drag " + std::to_string(row) + "." + std::to_string(index) + " keys " + std::to_string(keys) + " from "
               + std::to_string(x) + " to " + std::to_string(to) + " at " + std::to_string(y);
    }

    /// What is wrong with the items of one kind; empty when nothing is.
    std::string disorder(Handle track, decltype(&engine::ITWTimeline::GetSourceTimes) timesOf)
    {
        Milliseconds end = 0;
        for (std::int16_t seq = 0;; ++seq) {
            Milliseconds start = 0, stop = 0;
            engine::Bool16 ok = engine::kFalse;
            check(((*timelineCalls).*timesOf)(track, seq, start, stop, ok));
            if (ok == engine::kFalse) {
                return {};
            }
            if (start < end || stop <= start) {
                return "item " + std::to_string(seq) + " of track " + std::to_string(track);
            }
            end = stop;
        }
    }
    std::string disorder()
    {
        using engine::ITWTimeline;
        std::string all = disorder(video(), &ITWTimeline::GetEffectTimes);
        for (const Handle track : {video(), audio(1), audio(2), state::OverlayTrack}) {
            all += disorder(track, &ITWTimeline::GetSourceTimes);
        }
        all += disorder(state::OverlayTrack, &ITWTimeline::GetTransitionTimes);
        std::int16_t overlays = 0, keys = 0;
        check(timelineCalls->GetSourceCount(state::OverlayTrack, overlays));
        check(timelineCalls->GetTransitionCount(state::OverlayTrack, keys));
        return all + (overlays == keys ? "" : " overlays without keys");
    }

    std::mt19937 random;
};

TEST_F(CommandWalkTest, KeepsOrderAndHistory)
{
    constexpr unsigned kWalks = 60;
    constexpr int kSteps = 20; // no entry is dropped at the limit
    for (unsigned seed = 1; seed <= kWalks; ++seed) {
        random.seed(seed);
        lay(kLayout);
        std::string steps = "seed " + std::to_string(seed) + "\n";
        for (int i = 0; i < kSteps; ++i) {
            steps += step() + "\n";
            ASSERT_EQ(disorder(), "") << steps << text();
        }
        const std::string end = unselected(text());
        while (ModuleHistory::CanUndo()) {
            ModuleHistory::OnEditUndoClick();
        }
        ASSERT_EQ(text(), kLayout) << steps;
        while (ModuleHistory::CanRedo()) {
            ModuleHistory::OnEditRedoClick();
        }
        ASSERT_EQ(text(), end) << steps;
    }
    // Pieces of stretched sources may have media without length, which cannot be split again.
    expectsErrors = true;
    std::istringstream log(error_log::read());
    for (std::string line; std::getline(log, line);) {
        if (line.starts_with("Function")) {
            EXPECT_NE(line.find("SplitTracks"), line.npos) << line;
        }
    }
}

} // namespace
} // namespace timeline_test
