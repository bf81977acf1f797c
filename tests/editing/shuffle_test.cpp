// Items go ahead of others in the list, or to the other audio track.

#include "support/logic_harness.h"

#include "editing/shuffle.h"
#include "hand/tree_drop.h"
#include "history/command.h"
#include "shell/track_menu.h"

namespace logic_test {
namespace {

using Places = std::vector<std::int32_t>;

enum Track { kVideo, kEffects, kOverlays, kAudio1, kAudio2 };

class ShuffleTest : public LogicTest {
protected:
    static std::function<void()> drop(const Places& drag, const Places& target)
    {
        return [=] { frmTimeline::tvwTimeline_OLEDragDrop(drag, target); };
    }
    /// How many nodes each track has: "3 0 0 1 0".
    std::string nodes() const
    {
        std::string all;
        for (const TreeNode& track : form.tvwTimeline.Root().Children) {
            all += (all.empty() ? "" : " ") + std::to_string(track.Children.size());
        }
        return all;
    }
};

TEST_F(ShuffleTest, AMissingDropNodeIsTheEnd)
{
    lay("V 0-1000=100-1100 1000-2000=200-1200 2000-3000=300-1300");
    ModuleTreeView::ShuffleSources({kVideo, 0}, {kVideo, 7});
    EXPECT_EQ(text(), "V 1000-2000=200-1200 2000-3000=300-1300 3000-4000=100-1100");
}

TEST_F(ShuffleTest, ToTheOtherAudioTrackAmongSelectedOnes)
{
    const Edit cases[] = {
        {"onto the track, the dragged one alone", "V 0-9000* A 0-500* 700-1000 B 0-100*", drop({kAudio1, 1}, {kAudio2}),
         "V 0-9000 A 0-500 B 0-300 300-400"},
        {"by the menu, to the end, in their order",
         "V 0-9000* A 0-500=5-505* 500-600 700-800* 800-900* B 0-100 150-200*", mdiTarnwick::mnuEditAddtoAudio2_Click,
         "V 0-9000* A 500-600 B 0-100 150-200* 200-700=5-505 700-800 800-900"},
        {"and back", "A 0-500 B 0-100 150-200*", mdiTarnwick::mnuEditAddtoAudio1_Click, "A 0-500 500-550 B 0-100"},
    };
    for (const Edit& c : cases) {
        run(c);
    }
}

TEST_F(ShuffleTest, NothingHappens)
{
    const char* const layout = "V 0-500* 500-900 E 0-100 O 0-900#30 A 0-500 B 0-400*";
    const auto stays = [&](const char* what, const std::function<void()>& operation) {
        SCOPED_TRACE(what);
        lay(layout);
        operation();
        EXPECT_EQ(text(), layout);
        EXPECT_EQ(history(), " | 0/0");
        EXPECT_FALSE(state::ProjectModified);
    };
    stays("video to audio", drop({kVideo, 0}, {kAudio1, 0}));
    stays("audio to video", drop({kAudio1, 0}, {kVideo}));
    stays("video to overlays", drop({kVideo, 0}, {kOverlays, 0}));
    stays("the own track", drop({kVideo, 0}, {kVideo}));
    stays("a track", drop({kAudio1}, {kAudio2}));
    stays("beside all", drop({kVideo, 0}, {}));
    stays("no such node", drop({kVideo, 5}, {kVideo, 0}));
    setRows("Lv Le La");
    stays("locked", drop({kVideo, 0}, {kVideo, 1}));
    stays("a locked lane", drop({kEffects, 0}, {kEffects, 0}));
    stays("from a locked track", drop({kAudio1, 0}, {kAudio2}));
    stays("to a locked track", drop({kAudio2, 0}, {kAudio1}));
    stays("to a locked track by the menu", mdiTarnwick::mnuEditAddtoAudio1_Click);
    stays("nothing is selected there", mdiTarnwick::mnuEditAddtoAudio2_Click);
}

TEST_F(ShuffleTest, NothingVanishesWhenACallFails)
{
    const char* const layout = "V 0-500 500-900 E 0-100 200-250 O 0-900#30 1000-1500#40 A 0-500 B 0-400";
    const struct {
        std::function<void()> operation;
        const char* call;
    } failures[] = {
        {drop({kVideo, 1}, {kVideo, 0}), "InsertSource"},
        {drop({kVideo, 1}, {kVideo, 0}), "SetSourceTimes"},
        {drop({kEffects, 1}, {kEffects, 0}), "InsertEffect"},
        {drop({kOverlays, 1}, {kOverlays, 0}), "InsertTransition"},
        {drop({kOverlays, 1}, {kOverlays, 0}), "SetKeyColor"},
        {drop({kAudio1, 0}, {kAudio2}), "AppendSource"},
        {drop({kAudio1, 0}, {kAudio2}), "RemoveSource"},
    };
    for (const auto& [operation, call] : failures) {
        runFailing(layout, operation, {call});
        EXPECT_EQ(nodes(), "2 2 2 1 1");
    }
}

} // namespace
} // namespace logic_test
