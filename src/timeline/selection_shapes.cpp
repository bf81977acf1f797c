// The tinted shapes of the selection on the rows.

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/trap.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "items/track_rows.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace moduleTimeline {

using engine::ITWTimeline;
using items::ItemKind;
using items::Items;
using items::TrackRow;

namespace {

/// The effect lane's link stands in its box alone.
bool isLinked(ITWTimeline& engine, const TrackRow& row)
{
    if (row.kind == items::RowKind::kEffect) {
        return row.chkLink.Value == 1;
    }
    engine::Bool16 linked = engine::kFalse;
    engine::check(engine.GetTrackLink(items::trackOf(row), linked));
    return linked != engine::kFalse;
}

bool reachesSelection(ITWTimeline& engine, const TrackRow& row)
{
    const auto kind = row.kind == items::RowKind::kEffect ? ItemKind::kEffect : ItemKind::kSource;
    return !row.isLocked() && isLinked(engine, row) && Items(engine, kind, items::trackOf(row)).count() != 0;
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
