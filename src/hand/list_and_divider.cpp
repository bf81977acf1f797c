#include "hand/list_and_divider.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/view_times.h"

#include <algorithm>
#include <cmath>

namespace frmTimeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;

/// Sets the selected flag of the item that a child node stands for, and shows its bar.
void selectItem(const TreeNode& trackNode, std::int16_t seq)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const bool isEffect = trackNode.Tag == ModuleTreeView::kEffectLane;
    const items::Items items(*engine, isEffect ? items::ItemKind::kEffect : items::ItemKind::kSource,
                             isEffect ? state::TrackCollection.Item(1) : trackNode.Tag);
    items.select(seq, true);
    if (trackNode.Tag == state::OverlayTrack) {
        engine::check(engine->SetTransitionSelected(state::OverlayTrack, seq, engine::kTrue));
    }
    if (const auto times = items.times(seq)) {
        constexpr std::int32_t kFound = 24; // pixels of a bar that catch the eye
        timeline::bringIntoView(*times, kFound);
    }
}

/// Whether the divider may go there. Both limits are in twips, 15 to a pixel. Where the form has become too narrow for
/// the rows' own, the list can still have the width again that it had.
bool isAllowed(float left, bool isRight)
{
    constexpr float kTwips = 15;
    constexpr float kRowsNeed = 11000;
    constexpr float kListNeeds = 500;
    const float most = static_cast<float>(form.Width) * kTwips - kRowsNeed;
    const float widest = static_cast<float>(form.DividerWidest) * kTwips;
    return isRight ? left * kTwips < std::max(most, widest + 1) : left * kTwips >= kListNeeds;
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
    const bool isRight = delta <= 0;
    if (isAllowed(left, isRight)) {
        form.picVerticalResizeLeft = static_cast<std::int32_t>(std::lround(left));
        form.DividerWidest =
            isRight ? std::max(form.DividerWidest, form.picVerticalResizeLeft.get()) : form.DividerWidest;
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
