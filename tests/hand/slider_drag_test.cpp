// Dragging the handles and the divider.

#include "support/logic_harness.h"

#include "hand/list_and_divider.h"
#include "hand/slider_drag.h"
#include "hand/slider_keys.h"
#include "timeline/moduleBookmarks.h"

namespace logic_test {
namespace {

class SliderDragTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        put("V 0-30000");
        frmTimeline::Form_Resize();
        forms::frmPreview.sldSeekBar.SetMax(30000);
    }
    std::string timer() const { return !form.tmTimeline.Enabled ? "off" : form.ScrollingRight ? "right" : "left"; }
};

struct Drag {
    std::int32_t left;  // of the handle that is dragged
    std::int32_t other; // of the other handle
    float move;         // pixels the pointer goes
    std::int32_t expected;
    const char* timer;
};

// The view is 400 wide: 395 is the right edge, -6 the left one.

TEST_F(SliderDragTest, MainHandle)
{
    const Drag cases[] = {
        {100, 0, 50, 150, "off"},    {100, 0, -50, 50, "off"},     {100, 0, 0, 100, "off"},
        {100, 0, 294, 394, "off"},   {100, 0, 295, 100, "right"},  {100, 0, -106, -6, "off"},
        {100, 0, -107, 100, "left"}, {100, 0, 9000, 100, "right"},
    };
    for (const Drag& c : cases) {
        SCOPED_TRACE(c.move);
        moduleTimeline::SetSliderPosition((c.left + 5) * 10 + 3, false);
        frmTimeline::imgSliderHandle_MouseDown(1, 4);
        frmTimeline::imgSliderHandle_MouseMove(1, 4 + c.move);
        EXPECT_EQ(form.imgSliderHandle.Left, c.expected);
        EXPECT_EQ(timer(), c.timer);
        EXPECT_TRUE(form.DraggingSlider);
        if (std::string(c.timer) == "off") {
            EXPECT_EQ(state::SliderPosition, (c.expected + 5) * 10);
            EXPECT_EQ(form.imgScaleSlider.Left, c.expected + 5);
            EXPECT_EQ(form.picSlider.Left, c.expected + 105);
        }
        frmTimeline::imgSliderHandle_MouseUp(1, 0);
        EXPECT_EQ(timer(), "off");
        EXPECT_FALSE(form.Dragging || form.DraggingSlider);
    }
    EXPECT_EQ(forms::mdiTarnwick.sbr.Panel(1).get(), "Reposition the slider");
    EXPECT_EQ(panel("SLIDER_POS"), "0:00:01.053") << "a step that only scrolls leaves it";
    frmTimeline::imgSliderHandle_MouseDown(2, 4);
    frmTimeline::imgSliderHandle_MouseMove(2, 40);
    frmTimeline::imgSliderHandle_MouseMove(1, 40);
    EXPECT_EQ(form.imgSliderHandle.Left, 100) << "only the left button drags";
}

TEST_F(SliderDragTest, WithCtrlTheMainHandleGoesOnToACutOrAMarker)
{
    lay("V 0-1003 O 0-500#30 A 0-1250");
    setRows("La");
    moduleTimeline::SetSliderPosition(2000, false);
    moduleBookmarks::AddBookmark();
    const struct {
        Milliseconds from;
        Milliseconds to;
    } cases[] = {{1060, 1003}, {950, 1003},  {1070, 1070}, {1120, 1120}, {1310, 1250}, {1190, 1250},
                 {1180, 1180}, {2050, 2000}, {60, 0},      {80, 80},     {440, 500}};
    for (const auto& [from, to] : cases) {
        moduleTimeline::SetSliderPosition(from, false);
        frmTimeline::SnapSlider();
        EXPECT_EQ(state::SliderPosition, to) << from;
        if (to != from && to <= forms::frmPreview.sldSeekBar.Max()) {
            EXPECT_EQ(forms::frmPreview.sldSeekBar.Value(), to);
        }
    }
    EXPECT_EQ(panel("SLIDER_POS"), "0:00:00.500");
    moduleBookmarks::RemoveBookmarks();
}

TEST_F(SliderDragTest, ArrowsBehindAKeyStayInView)
{
    lay("V 0-12345 12345-16340 16340-30000"); // the view is 4000 ms wide
    const struct {
        void (*key)();
        int times;
    } cases[] = {{frmTimeline::GoToNextCut, 1},
                 {frmTimeline::GoToNextCut, 1},
                 {frmTimeline::GoToEnd, 1},
                 {frmTimeline::GoToPreviousCut, 2}};
    for (const auto& [key, times] : cases) {
        for (int i = 0; i < times; ++i) {
            key();
        }
        const Milliseconds place = state::SliderPosition;
        for (const int arrow : {37, 39, 39}) {
            frmTimeline::picScale_KeyDown(arrow, 0);
            EXPECT_TRUE(form.imgSliderHandle.Visible) << place << ", " << arrow;
        }
        frmTimeline::picScale_KeyDown(37, 0);
    }
}

TEST_F(SliderDragTest, StartHandle)
{
    const Drag cases[] = {
        {100, 200, 50, 150, "off"},  {100, 200, 93, 193, "off"},    {100, 200, 94, 100, "off"},
        {100, 200, 300, 100, "off"}, {100, 900, 294, 394, "off"},   {100, 900, 295, 100, "right"},
        {100, 415, 295, 100, "off"}, {100, 416, 295, 100, "right"}, {100, 401, 295, 100, "off"},
        {100, 200, -106, -6, "off"}, {100, 200, -107, 100, "left"},
    };
    for (const Drag& c : cases) {
        SCOPED_TRACE(std::to_string(c.other) + " " + std::to_string(c.move));
        showSelection((c.left + 5) * 10, (c.other + 5) * 10);
        frmTimeline::imgStartSelHandle_MouseDown(1, 4);
        frmTimeline::imgStartSelHandle_MouseMove(1, 4 + c.move);
        EXPECT_EQ(form.imgStartSelHandle.Left, c.expected);
        EXPECT_EQ(timer(), c.timer);
        EXPECT_EQ(state::SelStartPosition, (c.expected + 5) * 10);
        EXPECT_EQ(forms::frmPreview.sldSeekBar.Min(), (c.expected + 5) * 10);
        EXPECT_EQ(form.picStartSelSlider.Left, c.expected + 105);
        EXPECT_EQ(form.shpVideoSel[0].Left, c.expected + 6) << "the shape follows at once";
        frmTimeline::imgStartSelHandle_MouseUp(1, 0);
        EXPECT_FALSE(form.Dragging || form.DraggingStart || form.tmTimeline.Enabled);
    }
}

TEST_F(SliderDragTest, EndHandle)
{
    const Drag cases[] = {
        {200, 100, 50, 250, "off"},   {200, 100, -93, 107, "off"},    {200, 100, -94, 200, "off"},
        {200, 100, -300, 200, "off"}, {200, 100, 194, 394, "off"},    {200, 100, 195, 200, "right"},
        {200, -500, -206, -6, "off"}, {200, -500, -207, 200, "left"}, {200, -26, -206, -6, "off"},
        {200, -27, -207, 200, "off"}, {200, -28, -207, 200, "left"},  {200, -13, -207, 200, "off"},
    };
    for (const Drag& c : cases) {
        SCOPED_TRACE(std::to_string(c.other) + " " + std::to_string(c.move));
        showSelection((c.other + 5) * 10, (c.left + 5) * 10);
        frmTimeline::imgEndSelHandle_MouseDown(1, 4);
        frmTimeline::imgEndSelHandle_MouseMove(1, 4 + c.move);
        EXPECT_EQ(form.imgEndSelHandle.Left, c.expected);
        EXPECT_EQ(timer(), c.timer);
        EXPECT_EQ(state::SelEndPosition, (c.expected + 5) * 10);
        EXPECT_EQ(forms::frmPreview.sldSeekBar.Max(), (c.expected + 5) * 10);
        forms::frmPreview.sldSeekBar.SetMin(0);
        frmTimeline::imgEndSelHandle_MouseUp(1, 0);
        EXPECT_EQ(forms::frmPreview.sldSeekBar.Min(), (c.other + 5) * 10);
        EXPECT_FALSE(form.Dragging || form.DraggingEnd || form.tmTimeline.Enabled);
    }
}

TEST_F(SliderDragTest, ScrollingAtTheEdge)
{
    showSelection(3050, 4300);
    moduleTimeline::SetSliderPosition(1000, false);
    frmTimeline::imgStartSelHandle_MouseDown(1, 0);
    frmTimeline::imgStartSelHandle_MouseMove(1, 90);
    frmTimeline::imgStartSelHandle_MouseMove(1, 10);
    ASSERT_EQ(timer(), "right");
    EXPECT_EQ(form.imgStartSelHandle.Left, 390);
    form.tmTimeline.tick();
    EXPECT_EQ(form.hsb.Value(), 1);
    EXPECT_EQ(form.imgStartSelHandle.Left, 390) << "it stands still on the screen";
    EXPECT_EQ(state::SelStartPosition, 4050) << "and so goes on in time";
    EXPECT_EQ(form.imgEndSelHandle.Left, 415);
    EXPECT_EQ(form.imgScaleSlider.Left, 90);
    form.tmTimeline.tick();
    EXPECT_EQ(form.imgEndSelHandle.Left, 405);
    form.tmTimeline.tick(); // within 20 pixels
    EXPECT_EQ(form.hsb.Value(), 2);
    EXPECT_EQ(timer(), "off");
    frmTimeline::imgStartSelHandle_MouseUp(1, 0);
    form.hsb.SetValue(0);
    EXPECT_EQ(moduleTimeline::GetSelSliderPosition(true), 4150);
    EXPECT_EQ(moduleTimeline::GetSelSliderPosition(false), 4300);

    form.hsb.SetValue(1);
    frmTimeline::imgSliderHandle_MouseDown(1, 0);
    frmTimeline::imgSliderHandle_MouseMove(1, -500);
    for (int i = 0; i < 3; ++i) {
        form.tmTimeline.tick();
    }
    EXPECT_EQ(form.hsb.Value(), 0) << "no further than the beginning";
    EXPECT_EQ(state::SliderPosition, 900);
}

TEST_F(SliderDragTest, Divider)
{
    form.Width = 1000; // so that the rows keep 734 pixels
    form.picVerticalResizeLeft = 200;
    struct Move {
        std::int32_t from;
        float by;
        std::int32_t to;
    };
    const Move moves[] = {{200, 66, 266},  {200, 67, 200}, {200, -166, 34}, {200, -167, 200},
                          {900, -10, 890}, {20, 5, 25},    {900, 0, 900}};
    for (const Move& m : moves) {
        form.picVerticalResizeLeft = m.from;
        frmTimeline::picVerticalResize_MouseDown(1, 2);
        frmTimeline::picVerticalResize_MouseMove(1, 2 + m.by);
        EXPECT_EQ(form.picVerticalResizeLeft, m.to) << m.by;
        frmTimeline::picVerticalResize_MouseUp(1, 2);
    }
    frmTimeline::picVerticalResize_MouseMove(1, 90);
    EXPECT_EQ(form.picVerticalResizeLeft, 900) << "not held";
}

} // namespace
} // namespace logic_test
