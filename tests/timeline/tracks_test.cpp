// The tracks at the start, and the list of what lies on them.

#include "support/logic_harness.h"

namespace logic_test {
namespace {

using namespace moduleTimeline;

constexpr const char* kFilm = "V 0-1000 1000-2000 3000-4000 E 500-1500 O 0-1500#0 A 0-500";

class TracksTest : public LogicTest {
protected:
    /// The list with images and tags, items indented; handles of tracks by their names.
    std::string tree() const
    {
        const std::map<Handle, std::string> names = {
            {video(), "v"}, {state::OverlayTrack, "o"}, {audio(1), "a1"}, {audio(2), "a2"}, {999999, "999999"}};
        const TreeNode& root = form.tvwTimeline.Root();
        std::string all = root.Text + " " + root.Image + (root.Expanded ? " +\n" : "\n");
        for (const TreeNode& track : root.Children) {
            all += track.Text + " " + track.Image + " " + names.at(track.Tag) + (track.Expanded ? " +\n" : "\n");
            for (const TreeNode& item : track.Children) {
                all += "  " + item.Text + " " + item.Image + " " + std::to_string(item.Tag) + "\n";
            }
        }
        return all;
    }
};

TEST_F(TracksTest, TracksAtTheStart)
{
    EXPECT_EQ(tree(), "Timeline TIMELINE +\n"
                      "Video VIDEO v\nEffects EFFECT 999999\nOverlays OVERLAY o\nAudio 1 AUDIO a1\nAudio 2 AUDIO a2\n");
    EXPECT_EQ(state::TrackCollection.Count(), 3);
    EXPECT_EQ(engineCalls.counts["SetTrackLink"], 4);
    EXPECT_EQ(state::SelStartPosition, 1000);
    EXPECT_EQ(state::SelEndPosition, 2000);
    EXPECT_TRUE(IsTimelineEmpty());
    EXPECT_EQ(GetSequenceNumberFromPos(video(), 0), -1);
    lay(kFilm);
    EXPECT_FALSE(IsTimelineEmpty());
    EXPECT_EQ(GetTimelineDuration(), 4000);
    const std::pair<int, int> places[] = {{0, 0}, {1000, 0}, {1001, 1}, {2001, -1}, {4000, 2}, {4001, -1}};
    for (const auto& [pos, seq] : places) {
        EXPECT_EQ(GetSequenceNumberFromPos(video(), pos), seq) << pos;
    }
    EXPECT_EQ(GetSequenceNumberAtPosEffect(video(), 499), -1);
    EXPECT_EQ(GetSequenceNumberAtPosEffect(video(), 500), 0);
}

TEST_F(TracksTest, TracksThatCannotBeMade)
{
    state::reset();
    engineCalls.failCall({"CreateTrack"}, 3, engine::kDone); // Audio 1 gets no handle
    frmTimeline::Load();
    ASSERT_EQ(platform.messages.size(), 1U);
    EXPECT_EQ(platform.messages[0].text, "Unable to initialize timeline.");
    EXPECT_EQ(platform.messages[0].icon, MessageIcon::kCritical);
    EXPECT_EQ(state::TrackCollection.Count(), 1);
    EXPECT_EQ(form.tvwTimeline.Root().Children.size(), 3U);
    form.chkLockAudio[0].Value.changed = nullptr;
    form.chkLockAudio[0].Value = std::int16_t{1};
    EXPECT_FALSE(moduleTWState::IsTrackLocked(state::OverlayTrack));
}

TEST_F(TracksTest, ListOfTheTimeline)
{
    lay(kFilm);
    const std::string full = "Timeline TIMELINE +\n"
                             "Video VIDEO v +\n  still.bmp SOURCE 1\n  still.bmp SOURCE 2\n  still.bmp SOURCE 3\n"
                             "Effects EFFECT 999999 +\n  Blur SOURCE 4\n"
                             "Overlays OVERLAY o +\n  still.bmp SOURCE 5\n"
                             "Audio 1 AUDIO a1 +\n  stereo-48k.wav SOURCE 6\n"
                             "Audio 2 AUDIO a2\n";
    EXPECT_EQ(tree(), full);
    UpdateTreeView();
    EXPECT_EQ(tree(), full) << "numbers start anew";
    ModuleTreeView::InsertSource("new", 4, 0);
    ModuleTreeView::InsertSource("second", 4, 1);
    ModuleTreeView::AddSource("Wave", "SOURCE", 999999);
    const std::string changed = tree();
    EXPECT_NE(changed.find("  Blur SOURCE 4\n  Wave SOURCE 9\nOverlays"), std::string::npos) << changed;
    EXPECT_TRUE(changed.ends_with("Audio 2 AUDIO a2\n  new SOURCE 7\n  second SOURCE 8\n")) << changed;
    ModuleTreeView::SetSourceSelected(audio(2), 2);
    EXPECT_EQ(selectedNode(), "Audio 2 2");
    ModuleTreeView::SetSourceSelected(audio(2), 3);
    EXPECT_EQ(selectedNode(), "Audio 2 2") << "no such item";
}

} // namespace
} // namespace logic_test
