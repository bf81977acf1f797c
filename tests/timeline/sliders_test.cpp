// The sliders: placing and reading back, the selection's shapes, keys, events that come in between.

#include "support/logic_harness.h"

namespace logic_test {
namespace {

using namespace moduleTimeline;

class SlidersTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        put("V 0-30000"); // the bar goes from 0 to 270
        frmTimeline::Form_Resize();
    }
    /// "15 20 120 shown": handle, line on the scale, line over the tracks.
    static std::string text(const ImageBox& handle, const Marker& scale, const Marker& line)
    {
        return std::to_string(handle.Left) + " " + std::to_string(scale.Left) + " " + std::to_string(line.Left) + " "
               + (handle.Visible ? "H" : "-") + (scale.Visible ? "S" : "-") + (line.Visible ? "L" : "-");
    }
    std::string mainText() const { return text(form.imgSliderHandle, form.imgScaleSlider, form.picSlider); }
    std::string startText() const
    {
        return text(form.imgStartSelHandle, form.imgStartSelSlider, form.picStartSelSlider);
    }
};

TEST_F(SlidersTest, MainSlider)
{
    SetSliderPosition(1234, false);
    EXPECT_EQ(mainText(), "118 123 223 HSL");
    EXPECT_EQ(state::SliderPosition, 1234);
    EXPECT_EQ(GetSliderPosition(), 1230) << "as fine as a pixel";
    EXPECT_EQ(panel("SLIDER_POS"), "0:00:01.234");
    EXPECT_EQ(forms::frmPreview.lblCurrentTime.Caption.get(), "0:00:01.234");

    SetSliderPosition(4000, false);
    EXPECT_EQ(mainText(), "395 400 500 HSL") << "the edge counts as inside";
    SetSliderPosition(4010, false);
    EXPECT_EQ(mainText(), "396 401 501 ---");
    EXPECT_EQ(form.hsb.Value(), 0);
    SetSliderPosition(12340, true);
    EXPECT_EQ(form.hsb.Value(), 123);
    EXPECT_EQ(mainText(), "-1 4 104 HSL") << "at the left edge, but for what a tick rounds off";
    SetSliderPosition(35000, true);
    EXPECT_EQ(form.hsb.Value(), 270) << "as far as the bar goes";
    EXPECT_EQ(mainText(), "795 800 900 ---");
    SetSliderPosition(0, true);
    EXPECT_EQ(mainText(), "-5 0 100 HSL");
}

TEST_F(SlidersTest, ATimeBehindTheLastPixelMovesNothing)
{
    expectsErrors = true;
    moduleScaleRenderer::SetZoomFactor(1);
    SetSliderPosition(123, false);
    SetSelSliderPosition(150, true);
    SetSliderPosition(2147483646, false);
    EXPECT_EQ(mainText(), "118 123 223 HSL");
    EXPECT_EQ(state::SliderPosition, 123);
    SetSelSliderPosition(2147483646, true);
    EXPECT_EQ(startText(), "145 150 250 ---");
    EXPECT_NE(error_log::read().find("SetSelSliderPosition"), std::string::npos);
}

TEST_F(SlidersTest, HiddenSelectionIsPlacedAllTheSame)
{
    SetSelSliderPosition(1500, true);
    EXPECT_EQ(startText(), "145 150 250 ---");
    EXPECT_EQ(GetSelSliderPosition(true), 1500);
    ShowStartSelSlider(true);
    EXPECT_EQ(startText(), "145 150 250 HSL");
    EXPECT_EQ(forms::frmPreview.sldSeekBar.Min(), 1500);
    SetSelSliderPosition(40, true);
    EXPECT_EQ(startText(), "-1 4 104 HS-");
}

TEST_F(SlidersTest, Toggle)
{
    auto& preview = forms::frmPreview.sldSeekBar;
    form.hsb.SetValue(50);
    state::ProjectModified = false;
    EXPECT_FALSE(form.picSlider.Visible) << "at 0, left of the view";
    ToggleSelSliders();
    EXPECT_EQ(state::SliderPosition, 5000) << "it comes into the view first";
    EXPECT_EQ(state::SelStartPosition, 5000);
    EXPECT_EQ(state::SelEndPosition, 6000);
    EXPECT_EQ(preview.Min(), 5000);
    EXPECT_EQ(preview.Max(), 6000);
    EXPECT_TRUE(form.imgLinkVideo[0].Visible && form.imgLinkVideo[0].Picture.get() == "LINK");
    EXPECT_TRUE(forms::mdiTarnwick.mnuViewSelectionSliders.Checked && forms::mdiTarnwick.mnuEC_SelSliders.Checked);
    EXPECT_FALSE(state::ProjectModified);
    frmTimeline::cmdSelSliders_Click();
    EXPECT_TRUE(state::ProjectModified);
    EXPECT_EQ(preview.Min(), 0);
    EXPECT_EQ(preview.Max(), 30000);
    EXPECT_FALSE(form.imgLinkVideo[0].Visible || form.shpVideoSel[0].Visible || form.imgEndSelHandle.Visible);
    EXPECT_FALSE(forms::mdiTarnwick.mnuViewSelectionSliders.Checked || forms::mdiTarnwick.mnuEC_SelSliders.Checked);
}

TEST_F(SlidersTest, ShapesOfTheSelection)
{
    const auto shapes = [&] { // V, E, O, A, B: left and width of the rows that show one
        std::string all;
        const std::pair<const char*, Marker*> rows[] = {{"V", &form.shpVideoSel[0]},
                                                        {"E", &form.shpEffectSel[0]},
                                                        {"O", &form.shpOverlaySel[0]},
                                                        {"A", &form.shpAudioSel[0]},
                                                        {"B", &form.shpAudioSel[1]}};
        for (const auto& [name, shape] : rows) {
            if (shape->Visible) {
                all += name + std::to_string(shape->Left) + "+" + std::to_string(shape->Width) + " ";
            }
        }
        return all;
    };
    put("E 0-1000 O 0-1000#0 B 0-1000");
    showSelection(550, 1050);
    EXPECT_EQ(shapes(), "V56+49 E56+49 O56+49 B56+49 ") << "Audio 1 is empty";
    put("A 0-1000");
    EXPECT_EQ(shapes(), "V56+49 E56+49 O56+49 B56+49 ");
    ShowOrHideTrackSelections();
    EXPECT_EQ(shapes(), "V56+49 E56+49 O56+49 A56+49 B56+49 ");
    frmTimeline::imgLockAudio_Click(0);
    frmTimeline::imgLockEffect_Click(0);
    frmTimeline::imgLinkOverlay_Click(0);
    EXPECT_EQ(shapes(), "V56+49 B56+49 ");
    showSelection(650, 1250);
    frmTimeline::imgLockAudio_Click(0);
    frmTimeline::imgLinkEffect_Click(0);
    frmTimeline::imgLockEffect_Click(0);
    EXPECT_EQ(shapes(), "V66+59 A66+59 B66+59 ") << "the place is caught up on when a row is unlocked";
    frmTimeline::imgLinkEffect_Click(0);
    frmTimeline::imgLinkOverlay_Click(0);
    EXPECT_EQ(shapes(), "V66+59 E66+59 O66+59 A66+59 B66+59 ");
    ShowSelSliders(false);
    EXPECT_EQ(shapes(), "");
}

TEST_F(SlidersTest, KeysAndScale)
{
    auto& preview = forms::frmPreview.sldSeekBar;
    preview.SetMax(1000);
    SetSliderPosition(900, false);
    struct Case {
        int key;
        int shift;
        std::int32_t pos;
    };
    const Case cases[] = {
        {39, 0, 950}, {39, 0, 1000}, {39, 0, 1000}, {37, 1, 990}, {39, 1, 1000}, {37, 0, 950}, {13, 0, 950},
    };
    for (const Case& c : cases) {
        frmTimeline::picScale_KeyDown(c.key, c.shift);
        EXPECT_EQ(state::SliderPosition, c.pos) << c.key << " " << c.shift;
    }
    preview.SetMin(940);
    frmTimeline::picTimelineBase_KeyDown(37, 0);
    EXPECT_EQ(state::SliderPosition, 950) << "below the minimum nothing moves";
    SetSliderPosition(0, false);
    frmTimeline::picScale_KeyDown(65, 0);
    EXPECT_EQ(state::SliderPosition, 0) << "a key of no use does not even bring it into the range";

    form.hsb.SetValue(7);
    preview.SetMin(0);
    preview.SetMax(9000);
    frmTimeline::picScale_MouseDown(1, 29.6F);
    EXPECT_EQ(state::SliderPosition, 1000);
    frmTimeline::picScale_MouseDown(2, 50);
    EXPECT_EQ(state::SliderPosition, 1000);
    preview.SetMax(1500);
    frmTimeline::picScale_MouseDown(1, 300);
    EXPECT_EQ(state::SliderPosition, 1500) << "kept in the range of the preview";

    frmTimeline::picScale_MouseMove(33.4F);
    EXPECT_TRUE(form.imgScaleMarker.Left == 33 && form.imgScaleMarker.Visible);
    frmTimeline::picTimelineBase_MouseMove(150);
    EXPECT_EQ(form.imgScaleMarker.Left, 50);
    EXPECT_EQ(forms::mdiTarnwick.sbr.Panel(1).get(), "Ready");
    frmTimeline::Form_MouseMove();
    EXPECT_FALSE(form.imgScaleMarker.Visible);
}

TEST_F(SlidersTest, ScrollingWhileEventsRun)
{
    SetSliderPosition(2000, false);
    platform.whileEventsRun = [&] {
        platform.whileEventsRun = nullptr;
        form.hsb.SetValue(5); // the person scrolls while the slider is being placed
    };
    SetSliderPosition(2500, false);
    EXPECT_EQ(state::SliderPosition, 2500);
    EXPECT_EQ(form.imgScaleSlider.Left, 150) << "the scroll has put it to the time that was kept until then";
    frmTimeline::hsb_Scroll();
    EXPECT_EQ(form.imgScaleSlider.Left, 200);

    int ticks = 0;
    form.ScrollingRight = true;
    platform.whileEventsRun = [&] { // the timer is due again each time
        ++ticks;
        form.tmTimeline.tick();
    };
    form.tmTimeline.tick();
    EXPECT_EQ(form.hsb.Value(), 6) << "ticks do not pile up in each other";
    EXPECT_EQ(ticks, 3);
}

} // namespace
} // namespace logic_test
