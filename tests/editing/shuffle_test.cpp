// Items go ahead of others in the list, or to the other audio track.

#include "timeline/edit_harness.h"

#include "editing/shuffle.h"
#include "hand/tree_drop.h"
#include "history/command.h"

namespace timeline_test {
namespace {

using Places = std::vector<std::int32_t>;

enum Track { kVideo, kEffects, kOverlays, kAudio1, kAudio2 };

class ShuffleTest : public EditTest {
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

// A 0-10, B 10-20, C 20-30, of different media.
constexpr const char* kAbc = "V 0-1000=100-1100 1000-2000=200-1200 2000-3000=300-1300 E O A B";

TEST_F(ShuffleTest, WithinATrack)
{
    const Case cases[] = {
        {"C onto B", kAbc, drop({kVideo, 2}, {kVideo, 1}),
         "V 0-1000=100-1100 1000-2000=300-1300 2000-3000=200-1200 E O A B"},
        {"C onto A", kAbc, drop({kVideo, 2}, {kVideo, 0}),
         "V 0-1000=300-1300 1000-2000=100-1100 2000-3000=200-1200 E O A B"},
        {"A onto C", kAbc, drop({kVideo, 0}, {kVideo, 2}),
         "V 1000-2000=200-1200 2000-3000=100-1100 3000-4000=300-1300 E O A B"},
        {"A onto B", kAbc, drop({kVideo, 0}, {kVideo, 1}),
         "V 1000-2000=100-1100 2000-3000=200-1200 3000-4000=300-1300 E O A B"},
        {"onto the first, all behind it moves", "V 0-1000 3000-4000=5-1005 5000-5500=7-507 E O A B",
         drop({kVideo, 2}, {kVideo, 0}), "V 0-500=7-507 500-1500 3500-4500=5-1005 E O A B"},
        {"elsewhere only what is in the way", "V 0-1000 1000-2000=5-1005 9000-9500 9500-9600=7-107 E O A B",
         drop({kVideo, 3}, {kVideo, 1}), "V 0-1000 1000-1100=7-107 1100-2100=5-1005 9000-9500 E O A B"},
        {"what was resized comes back at its natural length", "V 0-1000 1000-5000=0-500m2 E O A B",
         drop({kVideo, 1}, {kVideo, 0}), "V 0-500m2 500-1500 E O A B"},
        {"media without length keep the source's", "V 0-1000 1000-1700=300-300 E O A B", drop({kVideo, 1}, {kVideo, 0}),
         "V 0-700=300-300 700-1700 E O A B"},
        {"onto itself", "V 200-1000 1000-5000=0-500 6000-7000 E O A B", drop({kVideo, 1}, {kVideo, 1}),
         "V 200-1000 1000-1500 6000-7000 E O A B"},
        {"the first onto itself", kAbc, drop({kVideo, 0}, {kVideo, 0}), kAbc},
        {"effects keep their length", "V 0-9000 E 0-100 500-900 1000-1700 O A B", drop({kEffects, 2}, {kEffects, 1}),
         "V 0-9000 E 0-100 500-1200 1200-1600 O A B"},
        {"overlays take their keys along", "V 0-9000 E O 0-500#30 500-900#40 1000-1700#50 A B",
         drop({kOverlays, 2}, {kOverlays, 0}), "V 0-9000 E O 0-700#50 700-1200#30 1200-1600#40 A B"},
        {"sound", "V E O A 0-500 700-900=5-205 B", drop({kAudio1, 1}, {kAudio1, 0}), "V E O A 0-200=5-205 200-700 B"},
    };
    for (const Case& c : cases) {
        run(c);
        const std::string after = nodes();
        lay(c.before);
        EXPECT_EQ(nodes(), after) << "the list follows";
    }
}

TEST_F(ShuffleTest, AMissingDropNodeIsTheEnd)
{
    lay(kAbc);
    ModuleTreeView::ShuffleSources({kVideo, 0}, {kVideo, 7});
    EXPECT_EQ(text(), "V 1000-2000=200-1200 2000-3000=300-1300 3000-4000=100-1100 E O A B");
}

TEST_F(ShuffleTest, BetweenTheAudioTracks)
{
    const Case cases[] = {
        {"onto the track", "V E O A 0-500 700-1000=5-305 B 0-100 100-400", drop({kAudio1, 1}, {kAudio2}),
         "V E O A 0-500 B 0-300=5-305 300-400 400-700"},
        {"onto an item", "V E O A 0-100 200-500 B 0-500 700-1000=5-305", drop({kAudio2, 1}, {kAudio1, 1}),
         "V E O A 0-100 100-400=5-305 500-800 B 0-500"},
        {"at its present speed", "V E O A 0-1000=0-300 B 0-100 100-400", drop({kAudio1, 0}, {kAudio2, 1}),
         "V E O A B 0-100 100-1100=0-300 1100-1400"},
        {"the dragged one alone", "V 0-9000* E O A 0-500* 700-1000 B 0-100*", drop({kAudio1, 1}, {kAudio2}),
         "V 0-9000 E O A 0-500 B 0-300 300-400"},
        {"an empty track", "V E O A 300-500 B", drop({kAudio1, 0}, {kAudio2}), "V E O A B 0-200"},
        {"by the menu, to the end, in their order", "V 0-9000* E O A 0-500=5-505* 700-800 800-900* B 0-100 150-200*",
         mdiTarnwick::mnuEditAddtoAudio2_Click, "V 0-9000* E O A 700-800 B 0-100 150-200* 200-700=5-505 700-800"},
        {"and back", "V E O A 0-500 B 0-100 150-200*", mdiTarnwick::mnuEditAddtoAudio1_Click,
         "V E O A 0-500 500-550 B 0-100"},
    };
    for (const Case& c : cases) {
        run(c);
    }
    lay("V E O A 0-500 700-1000=5-305 B 0-100 100-400");
    drop({kAudio1, 1}, {kAudio2, 1})();
    EXPECT_EQ(nodes(), "0 0 0 1 3");
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
    lock(form.chkLockVideo[0]);
    lock(form.chkLockEffect[0]);
    lock(form.chkLockAudio[0]);
    stays("locked", drop({kVideo, 0}, {kVideo, 1}));
    stays("a locked lane", drop({kEffects, 0}, {kEffects, 0}));
    stays("from a locked track", drop({kAudio1, 0}, {kAudio2}));
    stays("to a locked track", drop({kAudio2, 0}, {kAudio1}));
    stays("to a locked track by the menu", mdiTarnwick::mnuEditAddtoAudio1_Click);
    stays("nothing is selected there", mdiTarnwick::mnuEditAddtoAudio2_Click);
}

TEST_F(ShuffleTest, NothingVanishesWhenACallFails)
{
    expectsErrors = true;
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
        SCOPED_TRACE(call);
        lay(layout);
        engineCalls.failCall({call});
        operation();
        EXPECT_FALSE(engineCalls.failsLater());
        EXPECT_EQ(unselected(text()), layout);
        EXPECT_EQ(history(), "Shuffle Sources | 0/1") << "out of force";
        EXPECT_EQ(nodes(), "2 2 2 1 1");
    }
}

} // namespace
} // namespace timeline_test
