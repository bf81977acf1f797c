// A long walk over all edit commands: what must hold whatever was done before.

#include "editing/edit_harness.h"

#include "editing/split.h"

#include <random>

namespace editing_test {
namespace {

using namespace mdiTarnwick;

class EditWalkTest : public EditTest {
protected:
    int upTo(int most) { return std::uniform_int_distribution(0, most)(random_); }
    Milliseconds someTime() { return upTo(900) * 10; }

    void selectSome()
    {
        const Milliseconds from = someTime();
        if (upTo(1) == 0) {
            select(from, from + 10 + upTo(300) * 10);
            return;
        }
        moduleTimeline::ShowSelSliders(false);
        moduleTimeline::ClearMFSTSubSelections();
        for (const Handle track : {video(), audio(1), state::OverlayTrack}) {
            check(timelineCalls->SetSourceSelected(track, static_cast<std::int16_t>(upTo(3)), engine::kTrue));
        }
        check(timelineCalls->SetEffectSelected(video(), static_cast<std::int16_t>(upTo(2)), engine::kTrue));
    }

    /// Its words, for the trace.
    std::string step()
    {
        static constexpr std::pair<const char*, void (*)()> kCommands[] = {{"cut", mnuEditCut_Click},
                                                                           {"copy", mnuEditCopy_Click},
                                                                           {"delete", mnuEditClear_Click},
                                                                           {"crop", mnuEditCrop_Click},
                                                                           {"crop sources", mnuEditCropSources_Click},
                                                                           {"paste", mnuEditPaste_Click},
                                                                           {"paste", mnuEditPaste_Click},
                                                                           {"paste", mnuEditPaste_Click}};
        static constexpr const char* kRows[] = {"", "", "", "Lv", "Le", "Lo -1", "-v", "-o", "-e L1"};
        const auto& [name, command] = kCommands[upTo(7)];
        const char* const rows = kRows[upTo(8)];
        setRows(rows);
        selectSome();
        moduleTimeline::SetSliderPosition(someTime(), false);
        const std::string words = std::string(name) + (form.imgStartSelHandle.Visible ? " " : " items ")
                                  + std::to_string(moduleTimeline::GetSelSliderPosition(true)) + "-"
                                  + std::to_string(moduleTimeline::GetSelSliderPosition(false)) + " at "
                                  + std::to_string(moduleTimeline::GetSliderPosition()) + " " + rows;
        command();
        return words;
    }

    /// In order and apart, each row; overlays and keys counted alike.
    void expectOrder()
    {
        const auto times = [&](auto get, Handle track) {
            Milliseconds start = 0;
            Milliseconds stop = 0;
            Milliseconds end = 0;
            engine::Bool16 ok = engine::kFalse;
            for (std::int16_t seq = 0; check(((*timelineCalls).*get)(track, seq, start, stop, ok)), ok != 0; ++seq) {
                EXPECT_TRUE(end <= start && start < stop);
                end = stop;
            }
        };
        for (const Handle track : {video(), audio(1), audio(2), state::OverlayTrack}) {
            times(&engine::ITWTimeline::GetSourceTimes, track);
        }
        times(&engine::ITWTimeline::GetEffectTimes, video());
        std::int16_t overlays = 0;
        std::int16_t keys = 0;
        check(timelineCalls->GetSourceCount(state::OverlayTrack, overlays));
        check(timelineCalls->GetTransitionCount(state::OverlayTrack, keys));
        EXPECT_EQ(overlays, keys);
    }

private:
    std::mt19937 random_{20260321};
};

TEST_F(EditWalkTest, EveryStepCanBeTakenBack)
{
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        if (i % 20 == 0 || moduleTimeline::IsTimelineEmpty()) {
            lay("V A0-3000x3 B4000-8000[0-2000] C8000-9000 | E Blur0-3000 Wave3500-4000 Fade4500-9000 | "
                "O A0-2500#1 B2500-4000#2 C4500-9000[0-2250]x1#3 | 1 S0-9000 T9000-9500");
        }
        const std::string before = text();
        const std::string words = step();
        SCOPED_TRACE(before + "\n" + words);
        expectOrder();
        expectStep(before, text());
        expectOrder();
    }
    error_log::remove(); // ranges that are empty or reversed have told their division
}

} // namespace
} // namespace editing_test
