#include "timeline/sliders.h"

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
#include "timeline/slider_hints.h"
#include "timeline/slider_places.h"

namespace moduleTimeline {

using engine::Milliseconds;
using timeline::SliderControls;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

/// What a drag of a handle has said is over once the handles go, though the pointer may not have moved since.
void forgetHint()
{
    Shown<std::string>& hint = forms::mdiTarnwick.sbr.Panel(1);
    if (hint.get() == kStartHandleHint || hint.get() == kEndHandleHint) {
        hint = std::string("Ready");
    }
}

void show(const SliderControls& slider, bool visible)
{
    slider.handle.Visible = visible;
    slider.scaleLine.Visible = visible;
    slider.trackLine.Visible = visible;
    EnableLinkOption(visible);
}

void checkMenus()
{
    forms::mdiTarnwick.mnuViewSelectionSliders.Checked = timeline::isSelectionShown();
    forms::mdiTarnwick.mnuEC_SelSliders.Checked = timeline::isSelectionShown();
}

SliderControls selSlider(bool isStart) { return isStart ? timeline::startSlider() : timeline::endSlider(); }

} // namespace

void SetSliderPosition(Milliseconds pos, bool scroll)
{
    Trapped("moduleTimeline", "SetSliderPosition*", [&] {
        timeline::place(timeline::mainSlider(), pos);
        timeline::letEventsSeeMainSlider();
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
        show(timeline::startSlider(), visible);
        forms::frmPreview.sldSeekBar.SetMin(visible ? GetSelSliderPosition(true) : 0);
        checkMenus();
    });
}

void ShowEndSelSlider(bool visible)
{
    Trapped("moduleTimeline", "ShowEndSelSlider", [&] {
        show(timeline::endSlider(), visible);
        forms::frmPreview.sldSeekBar.SetMax(visible ? GetSelSliderPosition(false) : GetTimelineDuration());
        checkMenus();
    });
}

void ShowSelSliders(bool visible)
{
    Trapped("moduleTimeline", "ShowSelSliders", [&] {
        if (!visible) {
            forgetHint();
        }
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
