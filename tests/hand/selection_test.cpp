// Tracks, presses on rows, the timeline list.

#include "timeline/timeline_harness.h"

#include "core/upcalls.h"
#include "hand/list_and_divider.h"
#include "hand/row_events.h"

namespace timeline_test {
namespace {

using namespace moduleTimeline;

class SelectionTest : public TimelineTest {
protected:
    /// video  0-1000 1000-2000 3000-4000     effects  500-1500     overlay  0-1500     Audio 1  0-500
    void fill()
    {
        put(video(), 0, 1000);
        put(video(), 1000, 2000);
        put(video(), 3000, 4000);
        putEffect(500, 1500);
        put(state::OverlayTrack, 0, 1500);
        put(audio(1), 0, 500);
        UpdateTreeView();
    }
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

TEST_F(SelectionTest, TracksAtTheStart)
{
    EXPECT_EQ(tree(), "Timeline TIMELINE +\n"
                      "Video VIDEO v\nEffects EFFECT 999999\nOverlays OVERLAY o\nAudio 1 AUDIO a1\nAudio 2 AUDIO a2\n");
    EXPECT_EQ(state::TrackCollection.Count(), 3);
    EXPECT_EQ(engineCalls.counts["SetTrackLink"], 4);
    EXPECT_EQ(state::SelStartPosition, 1000);
    EXPECT_EQ(state::SelEndPosition, 2000);
    EXPECT_TRUE(IsTimelineEmpty());
    EXPECT_EQ(GetSequenceNumberFromPos(video(), 0), -1);
    fill();
    EXPECT_FALSE(IsTimelineEmpty());
    EXPECT_EQ(GetTimelineDuration(), 4000);
    const std::pair<int, int> places[] = {{0, 0}, {1000, 0}, {1001, 1}, {2001, -1}, {4000, 2}, {4001, -1}};
    for (const auto& [pos, seq] : places) {
        EXPECT_EQ(GetSequenceNumberFromPos(video(), pos), seq) << pos;
    }
    EXPECT_EQ(GetSequenceNumberAtPosEffect(video(), 499), -1);
    EXPECT_EQ(GetSequenceNumberAtPosEffect(video(), 500), 0);
}

TEST_F(SelectionTest, TracksThatCannotBeMade)
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

TEST_F(SelectionTest, Presses)
{
    fill();
    const std::string none = "V 000 E 0 O 0 A 0 B -";
    struct Case {
        const char* what;
        void (*press)(std::int16_t, int, int, float, float);
        int shift; // 1 Shift, 2 Ctrl
        float x;   // 10 ms a pixel
        const char* flags;
        const char* node;
        std::int32_t slider;
    };
    using namespace frmTimeline;
    // Each row goes on from the one before it.
    const Case cases[] = {
        {"the second", picVideo_MouseDown, 0, 150, "V 010 E 0 O 0 A 0 B -", "Video 2", 1000},
        {"its start is the first one's stop", picVideo_MouseDown, 0, 100, "V 100 E 0 O 0 A 0 B -", "Video 1", 1000},
        {"a gap", picVideo_MouseDown, 0, 250, "V 100 E 0 O 0 A 0 B -", "Video 1", 1000},
        {"Shift adds", picVideo_MouseDown, 1, 350, "V 101 E 0 O 0 A 0 B -", "Video 3", 3000},
        {"Ctrl adds on another row", picEffect_MouseDown, 2, 60, "V 101 E 1 O 0 A 0 B -", "Effects 1", 500},
        {"selected already", picVideo_MouseDown, 0, 350, "V 101 E 1 O 0 A 0 B -", "Video 3", 3000},
        {"Shift takes away", picVideo_MouseDown, 1, 350, "V 100 E 1 O 0 A 0 B -", "Video 3", 3000},
        {"overlay alone", picOverlay_MouseDown, 0, 20, "V 000 E 0 O 1 A 0 B -", "Overlays 1", 0},
        {"overlay turned over", picOverlay_MouseDown, 2, 20, "V 000 E 0 O 0 A 0 B -", "Overlays 1", 0},
        {"sound", picAudio_MouseDown, 0, 50, "V 000 E 0 O 0 A 1 B -", "Audio 1 1", 0},
        {"effect alone", picEffect_MouseDown, 0, 150, "V 000 E 1 O 0 A 0 B -", "Effects 1", 500},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.press(0, 1, c.shift, c.x, 12);
        EXPECT_EQ(flags(), c.flags);
        EXPECT_EQ(selectedNode(), c.node);
        EXPECT_EQ(state::SliderPosition, c.slider);
        EXPECT_FALSE(state::ClickShift || state::ClickCtrl);
    }
    EXPECT_GT(engineCalls.counts["SetTransitionSelected"], 2);
    showSelection(10, 90);
    SetSliderPosition(0, false);
    picVideo_MouseDown(0, 1, 0, 350, 12);
    EXPECT_EQ(state::SliderPosition, 0) << "with a selection shown the slider stays";
    ClearMFSTSubSelections();
    EXPECT_EQ(flags(), none);
    moduleScaleRenderer::SetZoomFactor(20);
    form.hsb.SetValue(14);
    picVideo_MouseDown(0, 1, 0, 11, 12); // 151 pixels at 20 ms each
    EXPECT_EQ(flags(), "V 001 E 0 O 0 A 0 B -");
}

TEST_F(SelectionTest, ListOfTheTimeline)
{
    fill();
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

TEST_F(SelectionTest, ClicksOnTheList)
{
    fill();
    struct Case {
        std::vector<std::int32_t> places;
        const char* flags;
    };
    const Case cases[] = {
        {{0, 2}, "V 001 E 0 O 0 A 0 B -"}, {{1, 0}, "V 000 E 1 O 0 A 0 B -"}, {{2, 0}, "V 000 E 0 O 1 A 0 B -"},
        {{3, 0}, "V 000 E 0 O 0 A 1 B -"}, {{3}, "V 000 E 0 O 0 A 0 B -"},    {{0, 0}, "V 100 E 0 O 0 A 0 B -"},
        {{}, "V 000 E 0 O 0 A 0 B -"},
    };
    for (const Case& c : cases) {
        engineCalls.counts.clear();
        frmTimeline::tvwTimeline_NodeClick(c.places);
        EXPECT_EQ(flags(), c.flags);
        const bool isOverlay = c.places == std::vector<std::int32_t>{2, 0};
        EXPECT_EQ(engineCalls.counts["SetTransitionSelected"], isOverlay ? 2 : 1) << "once to clear";
    }
}

} // namespace
} // namespace timeline_test
