#include "timeline/selection_shapes.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/trap.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "timeline/slider_places.h"

namespace moduleTimeline {

using engine::ITWTimeline;
using items::TrackRow;

namespace {

bool reachesSelection(ITWTimeline& engine, const TrackRow& row)
{
    return !row.isLocked() && items::isLinked(engine, row) && items::rowItems(engine, row).items.count() != 0;
}

} // namespace

void ShowOrHideTrackSelections()
{
    Trapped("moduleTimeline", "ShowOrHideTrackSelections", [] {
        const bool isShown = timeline::isSelectionShown();
        const auto engine = engine::EngineAs<ITWTimeline>();
        for (const TrackRow& row : items::rows()) {
            row.selection.Visible = isShown && reachesSelection(*engine, row);
        }
    });
}

void RenderAllSelections()
{
    Trapped("moduleTimeline", "RenderAllSelections*", [] {
        if (!timeline::isSelectionShown()) {
            return;
        }
        const std::int32_t start = forms::frmTimeline.imgStartSelHandle.Left;
        const std::int32_t end = forms::frmTimeline.imgEndSelHandle.Left;
        const std::int32_t left = numbers::added(start, 6);
        const std::int32_t width = numbers::subtracted(numbers::subtracted(end, start), 1);
        for (const TrackRow& row : items::rows()) {
            if (!row.isLocked()) {
                row.selection.Left = left;
                row.selection.Width = width;
            }
        }
    });
}

} // namespace moduleTimeline
