// Presses on rows and on the nodes of the list.

#include "support/logic_harness.h"

#include "hand/list_and_divider.h"
#include "hand/row_events.h"

namespace logic_test {
namespace {

using namespace moduleTimeline;

constexpr const char* kFilm = "V 0-1000 1000-2000 3000-4000 E 500-1500 O 0-1500#0 A 0-500";

using SelectionTest = LogicTest;

TEST_F(SelectionTest, Presses)
{
    put(kFilm); // without a scroll bar of its own: the view goes where the test sends it
    UpdateTreeView();
    const std::string none = "V 000 E 0 O 0 A 0";
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
        {"the second", picVideo_MouseDown, 0, 150, "V 010 E 0 O 0 A 0", "Video 2", 1000},
        {"its start is the first one's stop", picVideo_MouseDown, 0, 100, "V 100 E 0 O 0 A 0", "Video 1", 1000},
        {"a gap", picVideo_MouseDown, 0, 250, "V 100 E 0 O 0 A 0", "Video 1", 1000},
        {"Shift adds", picVideo_MouseDown, 1, 350, "V 101 E 0 O 0 A 0", "Video 3", 3000},
        {"Ctrl adds on another row", picEffect_MouseDown, 2, 60, "V 101 E 1 O 0 A 0", "Effects 1", 500},
        {"selected already", picVideo_MouseDown, 0, 350, "V 101 E 1 O 0 A 0", "Video 3", 3000},
        {"Shift takes away", picVideo_MouseDown, 1, 350, "V 100 E 1 O 0 A 0", "Video 3", 3000},
        {"overlay alone", picOverlay_MouseDown, 0, 20, "V 000 E 0 O 1 A 0", "Overlays 1", 0},
        {"overlay turned over", picOverlay_MouseDown, 2, 20, "V 000 E 0 O 0 A 0", "Overlays 1", 0},
        {"sound", picAudio_MouseDown, 0, 50, "V 000 E 0 O 0 A 1", "Audio 1 1", 0},
        {"effect alone", picEffect_MouseDown, 0, 150, "V 000 E 1 O 0 A 0", "Effects 1", 500},
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
    showSelection(150, 950);
    SetSliderPosition(0, false);
    picVideo_MouseDown(0, 1, 0, 350, 12);
    EXPECT_EQ(state::SliderPosition, 0) << "with a selection shown the slider stays";
    ClearMFSTSubSelections();
    EXPECT_EQ(flags(), none);
    moduleScaleRenderer::SetZoomFactor(20);
    form.hsb.SetValue(14);
    picVideo_MouseDown(0, 1, 0, 11, 12); // 151 pixels at 20 ms each
    EXPECT_EQ(flags(), "V 001 E 0 O 0 A 0");
}

TEST_F(SelectionTest, ClicksOnTheList)
{
    lay(kFilm);
    struct Case {
        std::vector<std::int32_t> places;
        const char* flags;
    };
    const Case cases[] = {
        {{0, 2}, "V 001 E 0 O 0 A 0"}, {{1, 0}, "V 000 E 1 O 0 A 0"}, {{2, 0}, "V 000 E 0 O 1 A 0"},
        {{3, 0}, "V 000 E 0 O 0 A 1"}, {{3}, "V 000 E 0 O 0 A 0"},    {{0, 0}, "V 100 E 0 O 0 A 0"},
        {{}, "V 000 E 0 O 0 A 0"},
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
} // namespace logic_test
