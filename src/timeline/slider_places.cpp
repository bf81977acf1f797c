#include "timeline/slider_places.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "timeline/moduleScaleRenderer.h"

#include <utility>

namespace timeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

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

void letEventsSeeMainSlider()
{
    struct Span {
        const bool before = std::exchange(form.MovingSlider, true);
        ~Span() { form.MovingSlider = before; }
    };
    const Span span;
    ports.events->letRun();
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

} // namespace timeline
