#include "timeline/moduleScaleRenderer.h"

#include "core/colours.h"
#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cmath>

namespace moduleScaleRenderer {

using engine::Milliseconds;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr std::int16_t kStartZoom = 10;

/// The factor in force: 0 stands for the start value.
std::int16_t zoom() { return state::ZoomFactor == 0 ? kStartZoom : state::ZoomFactor; }

void drawBand()
{
    constexpr std::int32_t kHandleHalf = 5;
    form.picScale.drawing.filledBox(numbers::added(form.imgStartSelHandle.Left.get(), kHandleHalf), 0,
                                    numbers::added(form.imgEndSelHandle.Left.get(), kHandleHalf),
                                    form.picScale.ScaleHeight, state::ScaleBandColor);
}

void drawMajorTick(std::int32_t x, std::int32_t left)
{
    DrawList& scale = form.picScale.drawing;
    scale.line(x - left, 0, x - left, 8, colours::kWindowText);
    const std::string label = time_text::MilliSecondsToTimetypeAsString(PixelsToMs(x));
    scale.text(x - scale.textWidth(label) / 2 - left, 10, label, colours::kWindowText);
}

/// The bar for a timeline of that length.
void fitBar(Milliseconds length)
{
    const auto visible =
        numbers::rounded<std::int32_t>(static_cast<double>(form.picScale.ScaleWidth) / state::TickSpacing);
    // A count of pixels among counts of ticks: the margin of ten ticks is kept, the end of the film stands apart from
    // the edge of the view by it.
    const auto max = numbers::rounded<std::int32_t>(MsToTicks(length) - visible + state::TickSpacing);
    if (max < 0) {
        constexpr std::int32_t kIdleMax = 100;
        form.hsb.SetMax(0); // brings back a view that was scrolled, as nobody can scroll it any more
        form.hsb.SetMax(kIdleMax);
        form.hsb.Enabled = false;
    } else {
        form.hsb.SetMax(max);
        form.hsb.Enabled = true;
    }
}

/// What a step does once the factor has changed: the sliders keep their times, and the main one comes into view where
/// it is followed. The bar is first, and reaches that far at least, as the view moves within its range; a view that
/// needs no bar stays where it is.
void showZoom(Milliseconds reach, bool isSliderFollowed)
{
    fitBar(std::max(moduleTimeline::GetTimelineDuration(), reach));
    moduleTimeline::SetSliderPosition(state::SliderPosition, isSliderFollowed);
    moduleTimeline::SetSelSliderPosition(state::SelStartPosition, true);
    moduleTimeline::SetSelSliderPosition(state::SelEndPosition, false);
    RenderScale();
    RenderAllBars();
    moduleTimeline::RenderAllSelections();
    moduleBookmarks::UpdateBookmarks();
}

} // namespace

void InitScale()
{
    state::ZoomFactor = kStartZoom;
    state::TickSpacing = 10;
    state::ScaleBandColor = 0xFFBBBB;
}

Milliseconds PixelsToMs(std::int32_t px) { return numbers::multiplied<std::int32_t>(px, zoom()); }

std::int32_t MsToPixels(Milliseconds ms) { return numbers::rounded<std::int32_t>(static_cast<double>(ms) / zoom()); }

std::int32_t TicksToPixels(std::int32_t ticks) { return numbers::multiplied<std::int32_t>(ticks, state::TickSpacing); }

double MsToTicks(Milliseconds ms) { return static_cast<double>(MsToPixels(ms)) / state::TickSpacing; }

std::int16_t GetZoomFactor() { return state::ZoomFactor; }

void SetZoomFactor(std::int16_t msPerPixel) { state::ZoomFactor = msPerPixel; }

std::int16_t GetTickSpacing() { return state::TickSpacing; }

void RenderScale()
{
    Trapped("moduleScaleRenderer", "RenderScale*", [] {
        DrawList& scale = form.picScale.drawing;
        scale.clear();
        if (timeline::isSelectionShown()) {
            drawBand();
        }
        const std::int32_t left = timeline::viewLeft();
        const std::int32_t right = numbers::added(left, form.picScale.ScaleWidth.get());
        for (std::int32_t x = left; x <= right; x += state::TickSpacing) {
            if (x % (state::TickSpacing * 10) == 0) {
                drawMajorTick(x, left);
            } else {
                scale.line(x - left, 0, x - left, 4, colours::kWindowText);
            }
        }
    });
}

void ZoomOut()
{
    Trapped("moduleScaleRenderer", "ZoomOut", [] {
        constexpr int kLimit = 32765;
        if (zoom() * 2 < kLimit) {
            state::ZoomFactor = numbers::narrowed<std::int16_t>(std::min<int>(zoom() * 2, kFurthestZoom));
            showZoom(state::SliderPosition, true);
        }
        state::markModified();
    });
}

void ZoomIn()
{
    Trapped("moduleScaleRenderer", "ZoomIn", [] {
        if (zoom() / 2 > 0) {
            state::ZoomFactor = numbers::rounded<std::int16_t>(zoom() / 2.0);
            showZoom(state::SliderPosition, true);
        }
        state::markModified();
    });
}

void ZoomTo(Milliseconds start, Milliseconds stop)
{
    Trapped("moduleScaleRenderer", "ZoomTo", [=] {
        constexpr std::int32_t kMargin = 20; // pixels on each side; the view begins at a whole tick
        const std::int64_t room = std::max(1, form.picScale.ScaleWidth - 2 * kMargin);
        const std::int64_t fitting = (std::int64_t{stop} - start + room - 1) / room;
        state::ZoomFactor = static_cast<std::int16_t>(std::clamp<std::int64_t>(fitting, 1, kFurthestZoom));
        showZoom(stop, false);
        const std::int32_t startPx = MsToPixels(start);
        const std::int32_t spare = std::max(0, form.picScale.ScaleWidth - (MsToPixels(stop) - startPx));
        ScrollTo(std::max(0, startPx - spare / 2) / std::max<std::int32_t>(1, state::TickSpacing));
        state::markModified();
    });
}

void AdjustScroll()
{
    Trapped("moduleScaleRenderer", "AdjustScroll*", [] { fitBar(moduleTimeline::GetTimelineDuration()); });
}

void ScrollTo(std::int32_t ticks)
{
    if (form.hsb.Enabled) {
        form.hsb.SetValue(ticks);
    }
}

void DrawScaleLine(float x)
{
    form.imgScaleMarker.Left = static_cast<std::int32_t>(std::lround(x));
    form.imgScaleMarker.Visible = true;
}

void ClearScaleLine() { form.imgScaleMarker.Visible = false; }

} // namespace moduleScaleRenderer
