#include "hand/frmTimeline_events.h"

#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWPreview.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/drag_scroll.h"
#include "hand/pointer_turn.h"
#include "hand/row_pointer.h"
#include "hand/slider_drag.h"
#include "items/track_rows.h"
#include "preview/moduleTWPreview.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"
#include "timeline/track_options.h"

#include <algorithm>
#include <utility>

namespace frmTimeline {

using items::RowKind;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kShiftKey = 1;
constexpr std::int16_t kPlaying = 1; // of the preview

void say(const char* hint) { forms::mdiTarnwick.sbr.Panel(1) = std::string(hint); }

std::string nameOf(const items::TrackRow& row)
{
    const std::string kind = items::nameOf(row.kind);
    return row.kind == RowKind::kAudio ? kind + " " + std::to_string(row.index + 1) : kind;
}

void setToolTips()
{
    for (const items::TrackRow& row : items::rows()) {
        row.imgDisable.ToolTipText = "Hide " + nameOf(row);
        row.imgLock.ToolTipText = "Unlock " + nameOf(row);
        row.imgLink.ToolTipText = "Unlink " + nameOf(row);
    }
    form.cmdZoomIn.ToolTipText = std::string("Zoom In");
    form.cmdZoomOut.ToolTipText = std::string("Zoom Out");
    form.cmdSelSliders.ToolTipText = std::string("Show/Hide Selection Sliders");
    form.cmdAddBookmark.ToolTipText = std::string("Add Marker");
    form.cmdRemoveBookmark.ToolTipText = std::string("Remove Marker");
}

void hideWhatComesLater()
{
    form.imgScaleMarker.Visible = false;
    form.imgStartSelHandle.Visible = false;
    form.imgEndSelHandle.Visible = false;
    for (const items::TrackRow& row : items::rows()) {
        row.chkLink.Visible = false; // shown with the selection
        row.imgLink.Visible = false;
    }
}

/// The main slider and the player go where the seek bar stands.
void followSeekBar()
{
    const engine::Milliseconds pos = forms::frmPreview.sldSeekBar.Value();
    moduleTimeline::SetSliderPosition(pos, false);
    engine::Bool16 ok = engine::kFalse;
    engine::check(engine::EngineAs<engine::ITWPreview>()->Seek(pos, ok));
}

/// The arrow keys move the main slider, within the range of the seek bar.
void onArrowKey(int key, int shift)
{
    constexpr int kLeftArrow = 37;
    constexpr int kRightArrow = 39;
    if (key != kLeftArrow && key != kRightArrow) {
        return; // no other key moves anything, though the seek bar may stand off the slider
    }
    Slider& seekBar = forms::frmPreview.sldSeekBar;
    const engine::Milliseconds step = moduleScaleRenderer::PixelsToMs((shift & kShiftKey) != 0 ? 1 : 5);
    const engine::Milliseconds pos = moduleTimeline::GetSliderPosition();
    if (key == kRightArrow && numbers::added(pos, step) <= seekBar.Max()) {
        seekBar.SetValue(pos + step);
    } else if (key == kLeftArrow && numbers::subtracted(pos, step) >= seekBar.Min()) {
        seekBar.SetValue(pos - step);
    }
    followSeekBar();
}

} // namespace

// --- The form ------------------------------------------------------------------------------------------------------

void Load()
{
    Trapped("frmTimeline", "Form_Load", [] {
        setToolTips();
        hideWhatComesLater();
        timeline::bindOptions();
        form.hsb.changed = hsb_Scroll;
        form.tmTimeline.tick = tmTimeline_Timer;
        form.tmDrag.tick = tmDrag_Timer;
        moduleTimeline::InitTimeline();
    });
}

void Form_Resize()
{
    Trapped("frmTimeline", "Form_Resize*", [] {
        // No events run here, as the screen is in the middle of its layout: what a move of the bar leads to is done
        // below.
        const auto changed = std::exchange(form.hsb.changed, nullptr);
        moduleScaleRenderer::AdjustScroll();
        form.hsb.changed = changed;
        timeline::placeAllAgain();
        moduleBookmarks::UpdateBookmarks(form.DraggingBookmark ? form.SelectedBookmark : std::int16_t{-1});
        moduleScaleRenderer::RenderScale();
        moduleScaleRenderer::RenderAllBars();
        moduleTimeline::RenderAllSelections();
    });
}

void Form_MouseMove() { moduleScaleRenderer::ClearScaleLine(); }

void Form_Activate()
{
    constexpr std::int16_t kTimeline = 2;
    SetActiveContext(kTimeline);
    RefreshActions();
}

void CloseFromWindowMenu()
{
    form.Visible = false;
    forms::mdiTarnwick.mnuViewTimeline.Checked = false;
}

// --- Scale and ground ----------------------------------------------------------------------------------------------

void hsb_Scroll()
{
    Trapped("frmTimeline", "hsb_Scroll*", [] {
        if (!form.DraggingSlider) {
            moduleTimeline::SetSliderPosition(state::SliderPosition, false);
        }
        if (!form.DraggingStart) {
            moduleTimeline::SetSelSliderPosition(state::SelStartPosition, true);
        }
        if (!form.DraggingEnd) {
            moduleTimeline::SetSelSliderPosition(state::SelEndPosition, false);
        }
        moduleBookmarks::UpdateBookmarks(form.DraggingBookmark ? form.SelectedBookmark : std::int16_t{-1});
        moduleScaleRenderer::RenderScale();
        moduleScaleRenderer::RenderAllBars();
        moduleTimeline::RenderAllSelections();
    });
}

void picScale_MouseDown(int button, float x)
{
    hand::inTurn([=] {
        Trapped("frmTimeline", "picScale_MouseDown", [&] {
            if (button == kLeftButton) {
                const auto px = numbers::rounded<std::int32_t>(static_cast<double>(timeline::viewLeft()) + x);
                forms::frmPreview.sldSeekBar.SetValue(moduleScaleRenderer::PixelsToMs(px));
                followSeekBar();
                if (moduleTWPreview::PreviewState == kPlaying) {
                    moduleTWPreview::OnCmdPauseClick();
                }
            } else if (button == kRightButton) {
                PopUpEditContext(0, 0);
            }
        });
    });
}

void picScale_MouseMove(float x)
{
    moduleScaleRenderer::DrawScaleLine(x);
    say("Ready");
    Trapped("frmTimeline", "picScale_MouseMove*", [&] {
        const auto px = numbers::rounded<std::int32_t>(static_cast<double>(timeline::viewLeft()) + x);
        const engine::Milliseconds time = std::max(moduleScaleRenderer::PixelsToMs(px), 0);
        form.picScaleToolTip = time_text::MilliSecondsToTimetypeAsString(time);
    });
}

void picScale_KeyDown(int key, int shift)
{
    hand::inTurn([=] { Trapped("frmTimeline", "picScale_KeyDown", [&] { onArrowKey(key, shift); }); });
}

void picTimelineBase_MouseMove(float x)
{
    moduleScaleRenderer::DrawScaleLine(x - static_cast<float>(form.lblHighlight.Left));
    say("Ready");
}

void picTimelineBase_KeyDown(int key, int shift)
{
    hand::inTurn([=] { Trapped("frmTimeline", "picTimelineBase_KeyDown", [&] { onArrowKey(key, shift); }); });
}

void cmdZoomIn_Click() { moduleScaleRenderer::ZoomIn(); }

void cmdZoomOut_Click() { moduleScaleRenderer::ZoomOut(); }

void cmdSelSliders_Click()
{
    moduleTimeline::ToggleSelSliders();
    state::markModified();
}

// --- The rows ------------------------------------------------------------------------------------------------------

namespace {

void click(const char* routine, void (*turn)(const items::TrackRow&), RowKind kind, std::int16_t index)
{
    Trapped("frmTimeline", routine, [&] { turn(items::row(kind, index)); });
}

} // namespace

void imgLinkVideo_Click(std::int16_t i) { click("imgLinkVideo_Click", timeline::turnLink, RowKind::kVideo, i); }

void imgLinkEffect_Click(std::int16_t i) { click("imgLinkEffect_Click", timeline::turnLink, RowKind::kEffect, i); }

void imgLinkOverlay_Click(std::int16_t i) { click("imgLinkOverlay_Click", timeline::turnLink, RowKind::kOverlay, i); }

void imgLinkAudio_Click(std::int16_t i) { click("imgLinkAudio_Click", timeline::turnLink, RowKind::kAudio, i); }

void imgLockVideo_Click(std::int16_t i) { click("imgLockVideo_Click", timeline::turnLock, RowKind::kVideo, i); }

void imgLockEffect_Click(std::int16_t i) { click("imgLockEffect_Click", timeline::turnLock, RowKind::kEffect, i); }

void imgLockOverlay_Click(std::int16_t i) { click("imgLockOverlay_Click", timeline::turnLock, RowKind::kOverlay, i); }

void imgLockAudio_Click(std::int16_t i) { click("imgLockAudio_Click", timeline::turnLock, RowKind::kAudio, i); }

void imgDisableVideo_Click(std::int16_t i)
{
    click("imgDisableVideo_Click", timeline::turnDisable, RowKind::kVideo, i);
}

void imgDisableEffect_Click(std::int16_t i)
{
    click("imgDisableEffect_Click", timeline::turnDisable, RowKind::kEffect, i);
}

void imgDisableOverlay_Click(std::int16_t i)
{
    click("imgDisableOverlay_Click", timeline::turnDisable, RowKind::kOverlay, i);
}

void imgDisableAudio_Click(std::int16_t i)
{
    click("imgDisableAudio_Click", timeline::turnDisable, RowKind::kAudio, i);
}

} // namespace frmTimeline
