// Conversions, zoom steps, the scroll bar.

#include "core/upcalls.h"
#include "hand/bookmark_events.h"
#include "hand/list_and_divider.h"
#include "support/logic_harness.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/view_times.h"

#include <cmath>

namespace logic_test {
namespace {

using namespace moduleScaleRenderer;

class ZoomTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        state::ProjectModified = false;
    }
    /// The factors that repeated steps lead to.
    static std::string walk(std::int16_t from, void (*step)(), int count)
    {
        SetZoomFactor(from);
        std::string all;
        for (int i = 0; i < count; ++i) {
            state::ProjectModified = false;
            step();
            EXPECT_TRUE(state::ProjectModified);
            all += (i > 0 ? " " : "") + std::to_string(GetZoomFactor());
        }
        return all;
    }
    std::string bar() const
    {
        return std::to_string(form.hsb.Value()) + " of " + std::to_string(form.hsb.Max())
               + (form.hsb.Enabled ? "" : " idle");
    }
};

TEST_F(ZoomTest, Conversions)
{
    EXPECT_EQ(MsToPixels(15), 2);
    EXPECT_EQ(MsToPixels(25), 2);
    EXPECT_EQ(MsToPixels(-15), -2);
    EXPECT_EQ(PixelsToMs(-7), -70);
    EXPECT_EQ(TicksToPixels(32767), 327670);
    EXPECT_EQ(MsToTicks(12345), 123.4);
    SetZoomFactor(20480);
    EXPECT_EQ(MsToPixels(std::numeric_limits<std::int32_t>::max()), 104858);
    EXPECT_THROW(PixelsToMs(104858), engine::RuntimeError);
    SetZoomFactor(0);
    EXPECT_EQ(GetZoomFactor(), 0);
    EXPECT_EQ(PixelsToMs(3), 30) << "0 counts as the start value";
    EXPECT_EQ(MsToPixels(45), 4);
}

TEST_F(ZoomTest, Steps)
{
    EXPECT_EQ(walk(10, ZoomIn, 5), "5 2 1 1 1");
    EXPECT_EQ(walk(1, ZoomOut, 6), "2 4 8 16 32 64");
    EXPECT_EQ(walk(10, ZoomOut, 13), "20 40 80 160 320 640 1280 2560 5120 10240 20480 20480 20480");
    EXPECT_EQ(walk(8192, ZoomOut, 2), "16384 16384");
    EXPECT_EQ(walk(7, ZoomIn, 1), "4") << "3.5 goes to the even number";
    EXPECT_EQ(walk(0, ZoomIn, 1), "5");
    EXPECT_EQ(walk(0, ZoomOut, 1), "20");
    EXPECT_EQ(walk(107, ZoomIn, 3), "54 27 14");
    EXPECT_EQ(walk(12000, ZoomOut, 2), "20480 20480");
}

TEST_F(ZoomTest, TimesOfSlidersStay)
{
    put("V 0-60000");
    AdjustScroll();
    moduleTimeline::SetSliderPosition(2000, false);
    showSelection(1000, 2500); // 1,000 to 2,500 ms
    ZoomIn();
    EXPECT_EQ(form.imgScaleSlider.Left, 400);
    EXPECT_EQ(form.imgStartSelHandle.Left, 195);
    EXPECT_EQ(form.imgEndSelHandle.Left, 495);
    EXPECT_FALSE(form.picEndSelSlider.Visible);
    EXPECT_EQ(form.shpVideoSel[0].Width, 299);
    ZoomIn(); // 5 to 2: the slider would be at 1,000 and is brought to the left edge
    EXPECT_EQ(form.hsb.Value(), 100);
    EXPECT_EQ(form.imgScaleSlider.Left, 0);
    EXPECT_EQ(form.imgStartSelHandle.Left, -505);
    EXPECT_EQ(state::SliderPosition, 2000);
    EXPECT_TRUE(form.picVideo[0].drawing.inWords().starts_with("filled 0 0 400 23 FFFF80\nbox -1000 0 29000 23"));
}

TEST_F(ZoomTest, ScrollBarFollowsTheLength)
{
    EXPECT_EQ(bar(), "0 of 100 idle");
    put("B 0-12340");
    AdjustScroll();
    EXPECT_EQ(bar(), "0 of 93") << "123.4 ticks, less 40 in view, and a margin of ten";
    put("O 0-30050#0 E 0-500000");
    AdjustScroll();
    EXPECT_EQ(bar(), "0 of 270") << "270.5 goes to the even number; effects do not count";
    form.hsb.SetValue(250);
    remove(state::OverlayTrack, 0);
    AdjustScroll();
    EXPECT_EQ(bar(), "93 of 93");
    remove(audio(2), 0);
    AdjustScroll();
    EXPECT_EQ(bar(), "0 of 100 idle") << "an idle bar leaves no view scrolled away";

    put("V 0-600000");
    SetZoomFactor(1);
    AdjustScroll();
    EXPECT_EQ(bar(), "0 of 59970");
}

TEST_F(ZoomTest, TheSliderIsReachedInFilmsOfAnyLengthAtEveryFactor)
{
    for (const Milliseconds length : {12000, 70 * 60000 + 7, 3 * 3600000}) {
        SetZoomFactor(10);
        remove(video(), 0);
        put("V 0-" + std::to_string(length));
        for (const Milliseconds pos : {0, length * 5 / 12 - 3, length - 1, length}) {
            moduleTimeline::SetSliderPosition(pos, true);
            for (int step = 0; step < 32; ++step) { // 10 to 1, to 16384, and to 1 again
                step < 3 || step >= 17 ? ZoomIn() : ZoomOut();
                SCOPED_TRACE(std::to_string(pos) + " of " + std::to_string(length) + " at "
                             + std::to_string(GetZoomFactor()));
                EXPECT_EQ(state::SliderPosition, pos);
                EXPECT_TRUE(form.picSlider.Visible);
                EXPECT_EQ(form.imgScaleSlider.Left, MsToPixels(pos) - form.hsb.Value() * 10);
                const double ticks = MsToTicks(length);
                EXPECT_EQ(form.hsb.Enabled, std::nearbyint(ticks - 40 + 10) >= 0);
                EXPECT_EQ(form.hsb.Max(), form.hsb.Enabled ? std::nearbyint(ticks - 40 + 10) : 100);
                form.hsb.SetValue(form.hsb.Enabled ? form.hsb.Max() : 0); // the end of the film is in view there
                const std::int32_t end = MsToPixels(length) - form.hsb.Value() * 10;
                EXPECT_TRUE(end >= 0 && end <= 400) << end;
                moduleTimeline::SetSliderPosition(pos, true);
                EXPECT_TRUE(form.picSlider.Visible);
            }
            EXPECT_EQ(GetZoomFactor(), 1);
        }
    }
}

TEST_F(ZoomTest, TheSliderIsReachedBehindTheFilm)
{
    put("V 0-5000");
    moduleTimeline::SetSliderPosition(8000, false);
    for (void (*const step)() : {ZoomIn, ZoomIn, ZoomIn, ZoomOut, ZoomOut, ZoomOut, ZoomOut, ZoomOut, ZoomIn}) {
        step();
        SCOPED_TRACE(GetZoomFactor());
        EXPECT_TRUE(form.picSlider.Visible);
        EXPECT_EQ(moduleTimeline::GetSliderPosition(), 8000);
    }
    moduleTimeline::SetSliderPosition(5000, false);
    ZoomIn();
    EXPECT_EQ(form.hsb.Max(), 32) << "8 ms a pixel; the film's own again";
}

TEST_F(ZoomTest, TheFilmOrWhatIsSelectedFillsTheView)
{
    const struct {
        const char* items;
        const char* rows;
        void (*zoom)();
        const char* expected; // factor, left edge in ticks, and where it begins and ends in the 400 pixels of the view
    } cases[] = {
        {"V 0-60000", "", ZoomToFilm, "167 from 0: 0 359"},
        {"V 0-3", "", ZoomToFilm, "1 from 0: 0 3"},
        {"V 0-5000 B 0-4200000", "", ZoomToFilm, "11667 from 0: 0 360"},
        {"V 0-43200000", "", ZoomToFilm, "20480 from 0: 0 2109"},
        {"V 0-10000 10000-30000* A 0-31000 40000-48007*", "", ZoomToSelection, "106 from 7: 24 383"},
        {"V 0-60000 E 8000-9000*", "", ZoomToSelection, "3 from 263: 37 370"},
        {"V 5000-9000* A 20000-21000*", "Lv", ZoomToSelection, "3 from 663: 37 370"},
        {"V 0-60000", "Lv", ZoomToSelection, "10 from 0: 0 0"},
    };
    for (const auto& [items, rows, zoom, expected] : cases) {
        SCOPED_TRACE(items);
        SetZoomFactor(10);
        setRows(rows);
        lay(items);
        AdjustScroll();
        moduleTimeline::SetSliderPosition(2000, false);
        state::ProjectModified = false;
        const auto times = zoom == ZoomToFilm ? items::ItemTimes{0, moduleTimeline::GetTimelineDuration()}
                                              : timeline::selectedTimes().value_or(items::ItemTimes{});
        zoom();
        const std::int32_t left = form.hsb.Value() * 10;
        EXPECT_EQ(std::to_string(GetZoomFactor()) + " from " + std::to_string(form.hsb.Value()) + ": "
                      + std::to_string(MsToPixels(times.start) - left) + " "
                      + std::to_string(MsToPixels(times.stop) - left),
                  expected);
        EXPECT_EQ(state::SliderPosition, 2000);
        EXPECT_EQ(state::ProjectModified, times.stop > 0);
    }
    setRows("");
    lay("V 0-60000");
    showSelection(70000, 75000); // behind the film, which the bar reaches
    ZoomToSelection();
    EXPECT_EQ(GetZoomFactor(), 14);
    EXPECT_TRUE(form.picStartSelSlider.Visible && form.picEndSelSlider.Visible);
}

TEST_F(ZoomTest, NothingScrollsTheViewUnderADisabledBar)
{
    put("V 0-1000 E 8000-9000"); // effects do not count
    AdjustScroll();
    UpdateTreeView();
    ASSERT_EQ(bar(), "0 of 100 idle");
    moduleTimeline::SetSliderPosition(8000, true);
    EXPECT_EQ(form.hsb.Value(), 0);
    frmTimeline::tvwTimeline_NodeClick({1, 0});
    EXPECT_EQ(form.hsb.Value(), 0);
    form.ScrollingRight = true;
    form.tmTimeline.tick();
    EXPECT_EQ(form.hsb.Value(), 0);
    form.hsb.SetValue(2); // wherever that came from, an edge brings it back
    form.ScrollingRight = false;
    form.tmTimeline.tick();
    EXPECT_EQ(form.hsb.Value(), 1);
}

TEST_F(ZoomTest, AResizeAtTheEndOfTheFilmLetsNoEventsRun)
{
    put("V 0-60000");
    AdjustScroll();
    form.hsb.SetValue(form.hsb.Max());
    moduleTimeline::SetSliderPosition(58000, false);
    frmTimeline::cmdAddBookmark_Click();
    const int before = platform.eventsRun;
    form.picScale.ScaleWidth = 900;
    frmTimeline::Form_Resize();
    EXPECT_EQ(bar(), "520 of 520");
    EXPECT_EQ(form.imgScaleSlider.Left, 600);
    EXPECT_EQ(form.imgBookmark.back().Left, 596);
    EXPECT_EQ(platform.eventsRun, before);
    EXPECT_TRUE(form.hsb.changed);
    moduleBookmarks::RemoveBookmarks();
    form.picScale.ScaleWidth = 400;
}

} // namespace
} // namespace logic_test
