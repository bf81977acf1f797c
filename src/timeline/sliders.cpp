// The position slider and those of the selection: placing, reading back, showing.

#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace timeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr std::int32_t kHandleHalf = 5; // pixels from a handle's left to the time it marks

bool isInView(std::int32_t left) { return left >= 0 && left <= form.picScale.ScaleWidth; }

void placeLinesAt(const SliderControls& slider, std::int32_t x)
{
    const std::int32_t onTracks = numbers::added(form.lblHighlight.Left.get(), x);
    slider.scaleLine.Left = x;
    slider.trackLine.Left = onTracks;
}

} // namespace

SliderControls mainSlider() { return {form.imgSliderHandle, form.imgScaleSlider, form.picSlider}; }

SliderControls startSlider() { return {form.imgStartSelHandle, form.imgStartSelSlider, form.picStartSelSlider}; }

SliderControls endSlider() { return {form.imgEndSelHandle, form.imgEndSelSlider, form.picEndSelSlider}; }

bool isSelectionShown() { return form.imgStartSelHandle.Visible && form.imgEndSelHandle.Visible; }

bool isSelectionHidden() { return !form.imgStartSelHandle.Visible && !form.imgEndSelHandle.Visible; }

std::int32_t viewLeft() { return moduleScaleRenderer::TicksToPixels(form.hsb.Value()); }

void place(const SliderControls& slider, engine::Milliseconds pos)
{
    const std::int32_t x = numbers::subtracted(moduleScaleRenderer::MsToPixels(pos), viewLeft());
    const std::int32_t left = numbers::subtracted(x, kHandleHalf);
    placeLinesAt(slider, x); // raises before anything has moved
    slider.handle.Left = left;
}

void placeLines(const SliderControls& slider)
{
    placeLinesAt(slider, numbers::added(slider.handle.Left.get(), kHandleHalf));
}

bool showMainInView()
{
    const SliderControls slider = mainSlider();
    const bool isShown = isInView(slider.scaleLine.Left);
    slider.handle.Visible = isShown;
    slider.scaleLine.Visible = isShown;
    slider.trackLine.Visible = isShown;
    return isShown;
}

void showTrackLineInView(const SliderControls& slider)
{
    if (slider.handle.Visible) {
        slider.trackLine.Visible = isInView(slider.handle.Left);
    }
}

void placeAllAgain()
{
    if (!form.DraggingSlider) {
        place(mainSlider(), state::SliderPosition);
        showMainInView();
    }
    if (!form.DraggingStart) {
        place(startSlider(), state::SelStartPosition);
        showTrackLineInView(startSlider());
    }
    if (!form.DraggingEnd) {
        place(endSlider(), state::SelEndPosition);
        showTrackLineInView(endSlider());
    }
}

namespace {

void show(const SliderControls& slider, bool visible)
{
    slider.handle.Visible = visible;
    slider.scaleLine.Visible = visible;
    slider.trackLine.Visible = visible;
    moduleTimeline::EnableLinkOption(visible);
}

void checkMenus()
{
    forms::mdiTarnwick.mnuViewSelectionSliders.Checked = isSelectionShown();
    forms::mdiTarnwick.mnuEC_SelSliders.Checked = isSelectionShown();
}

} // namespace

} // namespace timeline

namespace moduleTimeline {

using engine::Milliseconds;
using timeline::SliderControls;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

SliderControls selSlider(bool isStart) { return isStart ? timeline::startSlider() : timeline::endSlider(); }

} // namespace

void SetSliderPosition(Milliseconds pos, bool scroll)
{
    Trapped("moduleTimeline", "SetSliderPosition*", [&] {
        timeline::place(timeline::mainSlider(), pos);
        ports.events->letRun();
        const bool isInView = timeline::showMainInView();
        const std::string text = time_text::MilliSecondsToTimetypeAsString(pos);
        forms::mdiTarnwick.sbr.Panel("SLIDER_POS") = text;
        forms::frmPreview.lblCurrentTime.Caption = text;
        state::SliderPosition = pos;
        if (scroll && !isInView) { // clamped by the bar; its change handler places the sliders again
            moduleScaleRenderer::ScrollTo(
                numbers::rounded<std::int32_t>(moduleScaleRenderer::MsToTicks(GetSliderPosition())));
            if (timeline::mainSlider().scaleLine.Left < 0) { // rounded up, past the slider
                moduleScaleRenderer::ScrollTo(form.hsb.Value() - 1);
            }
        }
    });
}

Milliseconds GetSliderPosition()
{
    Milliseconds pos = 0;
    Trapped("moduleTimeline", "GetSliderPosition*", [&] {
        const std::int32_t x = timeline::mainSlider().scaleLine.Left;
        pos = moduleScaleRenderer::PixelsToMs(numbers::added(x, timeline::viewLeft()));
    });
    return pos;
}

void SetSelSliderPosition(Milliseconds pos, bool isStart)
{
    Trapped("moduleTimeline", "SetSelSliderPosition*", [&] {
        timeline::place(selSlider(isStart), pos);
        ports.events->letRun();
        timeline::showTrackLineInView(selSlider(isStart));
    });
}

Milliseconds GetSelSliderPosition(bool isStart)
{
    Milliseconds pos = 0;
    Trapped("moduleTimeline", "GetSelSliderPosition*", [&] {
        const std::int32_t left = selSlider(isStart).handle.Left;
        pos = moduleScaleRenderer::PixelsToMs(
            numbers::added(numbers::added(left, timeline::kHandleHalf), timeline::viewLeft()));
    });
    return pos;
}

void ShowStartSelSlider(bool visible)
{
    Trapped("moduleTimeline", "ShowStartSelSlider", [&] {
        timeline::show(timeline::startSlider(), visible);
        forms::frmPreview.sldSeekBar.SetMin(visible ? GetSelSliderPosition(true) : 0);
        timeline::checkMenus();
    });
}

void ShowEndSelSlider(bool visible)
{
    Trapped("moduleTimeline", "ShowEndSelSlider", [&] {
        timeline::show(timeline::endSlider(), visible);
        forms::frmPreview.sldSeekBar.SetMax(visible ? GetSelSliderPosition(false) : GetTimelineDuration());
        timeline::checkMenus();
    });
}

void ShowSelSliders(bool visible)
{
    Trapped("moduleTimeline", "ShowSelSliders", [&] {
        ShowStartSelSlider(visible);
        ShowEndSelSlider(visible);
        ShowOrHideTrackSelections();
        moduleScaleRenderer::RenderScale();
        moduleScaleRenderer::RenderAllBars();
        RenderAllSelections();
        EnableOrDisableMenuItems();
    });
}

void ToggleSelSliders()
{
    Trapped("moduleTimeline", "ToggleSelSliders", [] {
        if (timeline::isSelectionShown()) {
            ShowSelSliders(false);
        } else {
            if (!form.picSlider.Visible) {
                SetSliderPosition(moduleScaleRenderer::PixelsToMs(timeline::viewLeft()), false);
            }
            constexpr std::int32_t kNewSelectionPx = 100;
            const Milliseconds pos = GetSliderPosition();
            SetSelSliderPosition(pos, true);
            SetSelSliderPosition(numbers::added(pos, moduleScaleRenderer::PixelsToMs(kNewSelectionPx)), false);
            ShowSelSliders(true);
        }
        state::SelStartPosition = GetSelSliderPosition(true);
        state::SelEndPosition = GetSelSliderPosition(false);
    });
}

} // namespace moduleTimeline
