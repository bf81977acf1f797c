#include "hand/slider_drag.h"

#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/snapping.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_hints.h"
#include "timeline/slider_places.h"

#include <cmath>

namespace frmTimeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;
constexpr float kLeftEdge = -6;
constexpr int kApart = 6;   // pixels between the handles of the selection
constexpr int kGiveUp = 20; // pixels from the other handle where scrolling at an edge ends

float rightEdge() { return static_cast<float>(form.picScale.ScaleWidth - 5); }

/// What a step of a drag does.
enum class Step : std::uint8_t { kMove, kStay, kStop, kScrollLeft, kScrollRight };

/// left is where the handle would go; isRight says that the pointer did not go left.
Step mainStep(float left, bool isRight)
{
    if (isRight) {
        return left >= rightEdge() ? Step::kScrollRight : Step::kMove;
    }
    return left < kLeftEdge ? Step::kScrollLeft : Step::kMove;
}

Step startStep(float left, bool isRight)
{
    if (!isRight) {
        return mainStep(left, isRight);
    }
    const auto end = static_cast<float>(form.imgEndSelHandle.Left);
    if (left >= end - kApart) {
        return Step::kStay;
    }
    if (left >= rightEdge()) {
        return left >= end - kGiveUp ? Step::kStop : Step::kScrollRight;
    }
    return Step::kMove;
}

Step endStep(float left, bool isRight)
{
    if (isRight) {
        return mainStep(left, isRight);
    }
    const auto start = static_cast<float>(form.imgStartSelHandle.Left);
    if (left <= start + kApart) {
        return Step::kStay;
    }
    if (left < kLeftEdge) {
        return left <= start + kGiveUp ? Step::kStop : Step::kScrollLeft;
    }
    return Step::kMove;
}

/// False when the handle waits at an edge for the timer, and the drag has nothing more to do.
bool takeStep(ImageBox& handle, Step step, float left)
{
    switch (step) {
    case Step::kScrollLeft:
    case Step::kScrollRight:
        form.ScrollingRight = step == Step::kScrollRight;
        form.tmTimeline.Enabled = true;
        return false;
    case Step::kMove:
        form.tmTimeline.Enabled = false;
        handle.Left = static_cast<std::int32_t>(std::lround(left));
        return true;
    case Step::kStop:
        form.tmTimeline.Enabled = false;
        return true;
    case Step::kStay:
        return true;
    }
    return true;
}

void press(int button, float x, bool& isDragged)
{
    if (button == kLeftButton) {
        form.Dragging = true;
        form.DragOffset = x;
        isDragged = true;
    }
}

/// True when the button that was pressed has come up.
bool release(int button, bool& isDragged)
{
    if (button != kLeftButton || !form.Dragging) {
        return false;
    }
    form.tmTimeline.Enabled = false;
    form.Dragging = false;
    isDragged = false;
    return true;
}

/// One pointer move of a handle; true when its lines are to follow.
bool drag(int button, float x, ImageBox& handle, Step (*stepTo)(float left, bool isRight), const char* hint)
{
    if (button != kLeftButton || !form.Dragging) {
        return false;
    }
    forms::mdiTarnwick.sbr.Panel(1) = std::string(hint);
    moduleScaleRenderer::ClearScaleLine();
    const float delta = form.DragOffset - x;
    const float left = static_cast<float>(handle.Left) - delta;
    return takeStep(handle, stepTo(left, delta <= 0), left);
}

// What follows from a new place of a handle, or of the view under it.

void takeMainPlace()
{
    const engine::Milliseconds pos = moduleTimeline::GetSliderPosition();
    const std::string text = time_text::MilliSecondsToTimetypeAsString(pos);
    forms::mdiTarnwick.sbr.Panel("SLIDER_POS") = text;
    forms::frmPreview.lblCurrentTime.Caption = text;
    state::SliderPosition = pos;
    OnSliderMove();
}

void takeStartPlace()
{
    state::SelStartPosition = moduleTimeline::GetSelSliderPosition(true);
    forms::frmPreview.sldSeekBar.SetMin(state::SelStartPosition);
}

void takeEndPlace()
{
    state::SelEndPosition = moduleTimeline::GetSelSliderPosition(false);
    forms::frmPreview.sldSeekBar.SetMax(state::SelEndPosition);
}

void takeDraggedPlace()
{
    if (form.DraggingSlider) {
        takeMainPlace();
    }
    if (form.DraggingStart) {
        takeStartPlace();
    }
    if (form.DraggingEnd) {
        takeEndPlace();
    }
}

/// The other handle of the selection comes nearer with every tick: scrolling ends here too, and not only at the next
/// move of the pointer.
bool isNearOther()
{
    const std::int32_t start = form.imgStartSelHandle.Left;
    const std::int32_t end = form.imgEndSelHandle.Left;
    return ((form.DraggingStart && form.ScrollingRight) || (form.DraggingEnd && !form.ScrollingRight))
           && end - start <= kGiveUp;
}

/// Marks a tick as being worked on: events run inside, and the timer may be due again before it is done.
class TickSpan {
public:
    TickSpan() { form.Scrolling = true; }
    ~TickSpan() { form.Scrolling = false; }
    TickSpan(const TickSpan&) = delete;
    TickSpan& operator=(const TickSpan&) = delete;
};

} // namespace

void imgSliderHandle_MouseDown(int button, float x) { press(button, x, form.DraggingSlider); }

void imgStartSelHandle_MouseDown(int button, float x) { press(button, x, form.DraggingStart); }

void imgEndSelHandle_MouseDown(int button, float x) { press(button, x, form.DraggingEnd); }

void imgSliderHandle_MouseMove(int button, float x)
{
    Trapped("frmTimeline", "imgSliderHandle_MouseMove*", [&] {
        if (drag(button, x, form.imgSliderHandle, mainStep, "Reposition the slider")) {
            timeline::placeLines(timeline::mainSlider());
            timeline::letEventsSeeMainSlider();
            takeMainPlace();
        }
    });
}

void imgStartSelHandle_MouseMove(int button, float x)
{
    Trapped("frmTimeline", "imgStartSelHandle_MouseMove*", [&] {
        if (drag(button, x, form.imgStartSelHandle, startStep, moduleTimeline::kStartHandleHint)) {
            timeline::placeLines(timeline::startSlider());
            moduleScaleRenderer::RenderScale();
            moduleTimeline::RenderAllSelections();
            ports.events->letRun();
            takeStartPlace();
        }
    });
}

void imgEndSelHandle_MouseMove(int button, float x)
{
    Trapped("frmTimeline", "imgEndSelHandle_MouseMove*", [&] {
        if (drag(button, x, form.imgEndSelHandle, endStep, moduleTimeline::kEndHandleHint)) {
            timeline::placeLines(timeline::endSlider());
            moduleScaleRenderer::RenderScale();
            moduleTimeline::RenderAllSelections();
            takeEndPlace();
        }
    });
}

void imgSliderHandle_MouseUp(int button, float) { release(button, form.DraggingSlider); }

void SnapSlider()
{
    Trapped("frmTimeline", "SnapSlider", [] {
        const engine::Milliseconds pos = moduleTimeline::GetSliderPosition();
        const auto place = hand::SnapPlaces(hand::SnapPlaces::kCutsAndMarkers).near(pos);
        if (place && *place != state::SliderPosition) {
            moduleTimeline::SetSliderPosition(*place, false);
            engine::Bool16 ok = engine::kFalse;
            engine::check(engine::EngineAs<engine::ITWPreview>()->Seek(*place, ok));
            Slider& seekBar = forms::frmPreview.sldSeekBar;
            if (*place >= seekBar.Min() && *place <= seekBar.Max()) {
                seekBar.SetValue(*place);
            }
        }
    });
}

namespace {

void snapSelection(const char* routine, bool isStart)
{
    Trapped("frmTimeline", routine, [&] {
        const engine::Milliseconds edge = isStart ? state::SelStartPosition : state::SelEndPosition;
        const auto place = hand::SnapPlaces(hand::SnapPlaces::kCutsAndMarkers).near(edge);
        const engine::Milliseconds length =
            isStart ? state::SelEndPosition - place.value_or(edge) : place.value_or(edge) - state::SelStartPosition;
        if (!place || length < moduleScaleRenderer::PixelsToMs(kApart)) {
            return;
        }
        moduleTimeline::SetSelSliderPosition(*place, isStart);
        isStart ? takeStartPlace() : takeEndPlace();
        moduleScaleRenderer::RenderScale();
        moduleTimeline::RenderAllSelections();
        EnableOrDisableMenuItems();
    });
}

} // namespace

void SnapStartSel() { snapSelection("SnapStartSel", true); }

void SnapEndSel() { snapSelection("SnapEndSel", false); }

void imgStartSelHandle_MouseUp(int button, float)
{
    if (release(button, form.DraggingStart)) {
        EnableOrDisableMenuItems();
    }
}

void imgEndSelHandle_MouseUp(int button, float)
{
    if (release(button, form.DraggingEnd)) {
        EnableOrDisableMenuItems();
        forms::frmPreview.sldSeekBar.SetMin(state::SelStartPosition);
        forms::frmPreview.sldSeekBar.SetMax(state::SelEndPosition);
    }
}

void tmTimeline_Timer()
{
    Trapped("frmTimeline", "tmTimeline_Timer*", [] {
        if (form.Scrolling) {
            return;
        }
        if (isNearOther()) {
            form.tmTimeline.Enabled = false;
            return;
        }
        const TickSpan span;
        const std::int32_t before = form.hsb.Value();
        if (form.ScrollingRight && before < form.hsb.Max()) {
            moduleScaleRenderer::ScrollTo(before + 1);
        } else if (!form.ScrollingRight && before > 0) {
            form.hsb.SetValue(before - 1);
        }
        if (form.hsb.Value() != before) { // the handle stands still, so its time has changed
            takeDraggedPlace();
        }
    });
}

} // namespace frmTimeline
