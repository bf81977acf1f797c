#include "timeline/view_times.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>

namespace timeline {

using items::ItemTimes;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr std::int32_t kBefore = 40; // pixels of the timeline left of what is looked at

/// Adds the selected items of a row to what was found before.
void addSelected(const items::RowItems& row, std::optional<ItemTimes>& found)
{
    for (std::int16_t seq = row.items.firstSelected(); seq != -1;
         seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
        if (const auto item = row.items.times(seq)) {
            found = found ? ItemTimes{std::min(found->start, item->start), std::max(found->stop, item->stop)} : *item;
        }
    }
}

} // namespace

void bringIntoView(const ItemTimes& times, std::int32_t leastPx)
{
    Trapped("moduleScaleRenderer", "bringIntoView*", [&] {
        const std::int32_t left = viewLeft();
        const std::int32_t start = moduleScaleRenderer::MsToPixels(times.start);
        const std::int32_t stop = moduleScaleRenderer::MsToPixels(times.stop);
        const std::int32_t seen = std::min(stop, left + form.picScale.ScaleWidth.get()) - std::max(start, left);
        if (seen < std::min(stop - start, leastPx)) {
            moduleScaleRenderer::ScrollTo(std::max(0, start - kBefore) / std::max<std::int32_t>(1, state::TickSpacing));
        }
    });
}

void followEdit(const ItemTimes& times)
{
    if (forms::mdiTarnwick.mnuViewFollowEdits.Checked) {
        bringIntoView(times, form.picScale.ScaleWidth - kBefore);
    }
}

std::optional<ItemTimes> selectedTimes()
{
    if (isSelectionShown()) {
        return ItemTimes{state::SelStartPosition, state::SelEndPosition};
    }
    std::optional<ItemTimes> found;
    Trapped("moduleScaleRenderer", "selectedTimes*", [&] {
        items::forEachRow(*engine::EngineAs<engine::ITWTimeline>(), [&](const items::RowItems& row) {
            if (!row.isLocked) {
                addSelected(row, found);
            }
        });
    });
    return found;
}

} // namespace timeline

namespace moduleScaleRenderer {

void ZoomToFilm() { ZoomTo(0, moduleTimeline::GetTimelineDuration()); }

void ZoomToSelection()
{
    if (const auto times = timeline::selectedTimes()) {
        ZoomTo(times->start, times->stop);
    }
}

} // namespace moduleScaleRenderer
