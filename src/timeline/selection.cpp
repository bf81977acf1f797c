#include "timeline/selection.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace moduleTimeline {

using engine::EngineAs;
using engine::ITWTimeline;
using items::RowItems;
using items::RowKind;

namespace {

engine::Milliseconds pressedTime()
{
    const std::int32_t left = moduleScaleRenderer::TicksToPixels(forms::frmTimeline.hsb.Value());
    return moduleScaleRenderer::PixelsToMs(numbers::added(left, state::ClickX));
}

void applyKeys(const RowItems& row, std::int16_t seq)
{
    const bool isSelected = row.items.isSelected(seq);
    if (state::ClickCtrl || state::ClickShift) { // the two keys do the same
        row.select(seq, !isSelected);
    } else if (!isSelected) {
        ClearMFSTSubSelections();
        row.select(seq, true);
    }
}

/// Where no selection is shown, the slider goes to the item that was pressed, unless it stands on it.
void bringSliderTo(const items::ItemTimes& item)
{
    if (timeline::isSelectionHidden() && !item.holds(state::SliderPosition)) {
        SetSliderPosition(item.start, false);
        OnSliderMove();
    }
}

void press(RowKind kind, std::int16_t index)
{
    const engine::Milliseconds ms = pressedTime();
    const auto engine = EngineAs<ITWTimeline>();
    const RowItems row = items::rowItems(*engine, items::row(kind, index));
    const std::int16_t seq = row.items.at(ms);
    if (const auto item = row.items.times(seq)) {
        applyKeys(row, seq);
        bringSliderTo(*item);
        ModuleTreeView::SetSourceSelected(kind == RowKind::kEffect ? ModuleTreeView::kEffectLane : row.track, seq + 1);
    }
    moduleScaleRenderer::RenderAllBars();
    EnableOrDisableMenuItems();
}

} // namespace

void OnPicMediaClick(std::int16_t index, bool isVideo)
{
    Trapped("moduleTimeline", "OnPicMediaClick", [&] { press(isVideo ? RowKind::kVideo : RowKind::kAudio, index); });
}

void OnPicOverlayClick(std::int16_t index)
{
    Trapped("moduleTimeline", "OnPicOverlayClick", [&] { press(RowKind::kOverlay, index); });
}

void OnPicEffectClick(std::int16_t index)
{
    Trapped("moduleTimeline", "OnPicEffectClick", [&] { press(RowKind::kEffect, index); });
}

void SelectAll()
{
    Trapped("moduleTimeline", "SelectAll", [] {
        ClearMFSTSubSelections();
        const auto engine = EngineAs<ITWTimeline>();
        items::forEachRow(*engine, [](const RowItems& row) {
            const std::int16_t count = row.isLocked ? std::int16_t{0} : row.items.count();
            for (std::int16_t seq = 0; seq < count; ++seq) {
                row.select(seq, true);
            }
        });
        moduleScaleRenderer::RenderAllBars();
        EnableOrDisableMenuItems();
    });
}

} // namespace moduleTimeline
