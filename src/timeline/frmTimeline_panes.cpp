// The timeline list and the divider between it and the rows.

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/frmTimeline_events.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <cmath>

namespace frmTimeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;

/// Sets the selected flag of the item that a child node stands for.
void selectItem(const TreeNode& trackNode, std::int16_t seq)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    if (trackNode.Tag == ModuleTreeView::kEffectLane) {
        engine::check(engine->SetEffectSelected(state::TrackCollection.Item(1), seq, engine::kTrue));
        return;
    }
    engine::check(engine->SetSourceSelected(trackNode.Tag, seq, engine::kTrue));
    if (trackNode.Tag == state::OverlayTrack) {
        engine::check(engine->SetTransitionSelected(state::OverlayTrack, seq, engine::kTrue));
    }
}

/// Whether the divider may go there. Both limits are told in twips, 15 to a pixel.
bool isAllowed(float left, bool isRight)
{
    constexpr float kTwips = 15;
    constexpr float kRowsNeed = 11000;
    constexpr float kListNeeds = 500;
    return isRight ? left * kTwips < static_cast<float>(form.Width) * kTwips - kRowsNeed : left * kTwips >= kListNeeds;
}

} // namespace

void tvwTimeline_NodeClick(const std::vector<std::int32_t>& places)
{
    Trapped("frmTimeline", "tvwTimeline_NodeClick", [&] {
        form.tvwTimeline.Selected = places;
        moduleTimeline::ClearMFSTSubSelections();
        if (places.size() == 2) {
            const TreeNode& trackNode = form.tvwTimeline.Root().Children.at(static_cast<std::size_t>(places[0]));
            selectItem(trackNode, static_cast<std::int16_t>(places[1]));
        }
        EnableOrDisableMenuItems();
        moduleScaleRenderer::RenderAllBars();
    });
}

void picVerticalResize_MouseDown(int button, float x)
{
    if (button == kLeftButton) {
        form.DividerOffset = x;
        form.DividerHeld = true;
    }
}

void picVerticalResize_MouseMove(int button, float x)
{
    if (button != kLeftButton || !form.DividerHeld) {
        return;
    }
    const float delta = form.DividerOffset - x;
    const float left = static_cast<float>(form.picVerticalResizeLeft) - delta;
    if (isAllowed(left, delta <= 0)) {
        form.picVerticalResizeLeft = static_cast<std::int32_t>(std::lround(left));
    }
}

void picVerticalResize_MouseUp(int button, float)
{
    if (button == kLeftButton && form.DividerHeld) {
        form.DividerHeld = false;
        moduleScaleRenderer::RenderAllBars();
        moduleTimeline::ShowOrHideTrackSelections();
        moduleTimeline::RenderAllSelections();
    }
}

} // namespace frmTimeline
