#include "hand/row_drag.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/item_moves.h"
#include "engine/engine_access.h"
#include "hand/row_pointer.h"
#include "history/ModuleHistory.h"
#include "history/command.h"
#include "items/row_items.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace frmTimeline {

using engine::EngineAs;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::Items;
using items::ItemTimes;
using items::RowItems;
using items::RowKind;
using items::TrackRow;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

/// The drag in progress.
struct Held {
    RowKind kind;
    std::int16_t index;
    std::optional<history::Command> command; // nothing on an empty row: there is no entry, and nothing moves
    bool hasStepped = false;
};
std::optional<Held> held;

RowItems rowUnder(ITWTimeline& engine, RowKind kind, std::int16_t index)
{
    return items::rowItems(engine, items::row(kind, index));
}

std::int32_t wholePixels(float x) { return numbers::rounded<std::int32_t>(x); }

bool isInResizeZone(RowKind kind, std::int16_t index, float x, float y)
{
    switch (kind) {
    case RowKind::kVideo:
        return moduleTimeline::OnPicVideoMouseMove(x, y, index);
    case RowKind::kEffect:
        return moduleTimeline::OnPicEffectMouseMove(x, y, index);
    case RowKind::kOverlay:
        return moduleTimeline::OnPicOverlayMouseMove(x, y, index);
    case RowKind::kAudio:
        break;
    }
    return moduleTimeline::OnPicAudioMouseMove(x, y, index);
}

void makeEntry()
{
    held->command.emplace(form.DragResize ? "Resize" : "Move");
    if (held->command->isMade()) {
        held->command->bringIntoForce();
    } else { // nothing moves
        held->command->leaveNoTrace();
        held->command.reset();
    }
}

bool hasNewestEntry(const Held& drag) { return drag.command && drag.command->isNewest(); }

/// Whether every item of the last image lies where the newest entry has it.
bool isAsInNewestEntry()
{
    const ModuleHistory::TimelineImage& now = ModuleHistory::LastImage;
    const cHistoryData& entry = ModuleHistory::HistoryCollection.Item(ModuleHistory::HistoryCollection.Count());
    if (!now.IsWhole || !entry.IsWhole() || entry.GetSrcCount() != now.SourceCount
        || entry.GetEffectCount() != now.EffectCount || entry.GetTransitionCount() != now.TransitionCount) {
        return false;
    }
    entry.GetEditOperationData();
    entry.GetEffectOperationData();
    entry.GetTransitionOperationData();
    const ModuleHistory::TimelineImage& then = ModuleHistory::WorkingImage;
    const auto areAlike = [](const auto& some, const auto& others, std::int16_t count) {
        return std::equal(some.begin(), some.begin() + count, others.begin(),
                          [](const auto& a, const auto& b) { return a.Start == b.Start && a.Stop == b.Stop; });
    };
    return areAlike(now.Sources, then.Sources, now.SourceCount) && areAlike(now.Effects, then.Effects, now.EffectCount)
           && areAlike(now.OverlaySources, then.OverlaySources, now.TransitionCount)
           && areAlike(now.Transitions, then.Transitions, now.TransitionCount);
}

/// Stores the newest image if the drag has changed anything. A drag there and back has not, whatever the item that was
/// pressed says: the others may have moved without it.
bool keepsChange(const Held& drag)
{
    if (!drag.hasStepped) {
        return false;
    }
    const auto engine = EngineAs<ITWTimeline>();
    const ItemTimes pressed = rowUnder(*engine, drag.kind, drag.index).items.times(form.DragSeq).value_or(ItemTimes{});
    auto newest = std::exchange(ModuleHistory::LastImage, {});
    ModuleHistory::StoreCurrentTLImage();
    if (pressed == ItemTimes{form.DragOrigStart, form.DragOrigStop} && hasNewestEntry(drag) && isAsInNewestEntry()) {
        ModuleHistory::LastImage = std::move(newest);
        return false;
    }
    return true;
}

/// The selected flags of all items, which a rebuild of the timeline loses.
class SelectedItems {
public:
    SelectedItems()
    {
        items::forEachRow(*engine_, [&](const RowItems& row) {
            for (std::int16_t seq = row.items.firstSelected(); seq != -1;
                 seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
                selected_.push_back({row, seq});
            }
        });
    }

    void select() const
    {
        for (const auto& [row, seq] : selected_) {
            row.select(seq, true);
        }
    }

private:
    struct Item {
        RowItems row;
        std::int16_t seq;
    };
    std::shared_ptr<ITWTimeline> engine_ = EngineAs<ITWTimeline>();
    std::vector<Item> selected_;
};

/// Puts the timeline back to the image of the press. False when there is none, and nothing has changed then.
bool putTimelineBack()
{
    const SelectedItems selected;
    if (!ModuleHistory::Undo()) {
        return false;
    }
    selected.select();
    RenderAllBars();
    return true;
}

/// True when anything has changed, which is drawn then.
bool step(Milliseconds delta)
{
    if (delta == 0) {
        return false;
    }
    held->hasStepped = true;
    if (!(form.DragResize ? moduleTimeline::ResizeSelSources(delta) : moduleTimeline::ShiftSelSources(delta))) {
        return false;
    }
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
    return true;
}

/// How far what is dragged can go to the left.
Milliseconds roomToTheLeft()
{
    if (!form.DragResize) {
        return moduleTimeline::GetSelMinLeftMoveLength();
    }
    constexpr Milliseconds kShortest = 11;
    const auto engine = EngineAs<ITWTimeline>();
    const ItemTimes pressed =
        rowUnder(*engine, held->kind, held->index).items.times(form.DragSeq).value_or(ItemTimes{});
    return std::max(pressed.stop - pressed.start - kShortest, 0);
}

std::optional<Held> takeHeld()
{
    auto drag = std::exchange(held, std::nullopt);
    return std::exchange(form.DragActive, false) ? std::move(drag) : std::nullopt;
}

} // namespace

void selectAlone(const TrackRow& row, std::int16_t seq)
{
    const auto engine = EngineAs<ITWTimeline>();
    moduleTimeline::ClearMFSTSubSelections();
    items::rowItems(*engine, row).select(seq, true);
    RenderAllBars();
}

void beginDrag(const TrackRow& row, float x, float y)
{
    const auto engine = EngineAs<ITWTimeline>();
    held = Held{.kind = row.kind, .index = row.index, .command = {}};
    form.DragActive = true;
    form.DragLastX = x;
    const Items items = items::rowItems(*engine, row).items;
    form.DragSeq = items.at(moduleScaleRenderer::PixelsToMs(numbers::added(wholePixels(x), timeline::viewLeft())));
    const ItemTimes times = items.times(form.DragSeq).value_or(ItemTimes{});
    form.DragOrigStart = times.start;
    form.DragOrigStop = times.stop;
    form.DragResize = isInResizeZone(row.kind, row.index, x, y);
    if (items.count() > 0) {
        makeEntry();
    }
}

void dragTo(float x)
{
    // Whole pixels from place to place, so that no fraction of one is lost or counted twice.
    const std::int32_t px = numbers::subtracted(wholePixels(x), wholePixels(form.DragLastX));
    form.DragLastX = x;
    Milliseconds delta = moduleScaleRenderer::PixelsToMs(px);
    if (!form.DragResize && delta < 0) {
        delta = std::max(delta, -moduleTimeline::GetSelMinLeftMoveLength());
    }
    if (delta == 0 || !held || !held->command) {
        return;
    }
    step(delta);
}

void dragWithView(std::int32_t ticks)
{
    if (!held || !held->command || ticks == 0) {
        return;
    }
    const Milliseconds tick = moduleScaleRenderer::PixelsToMs(moduleScaleRenderer::TicksToPixels(1));
    const std::int32_t before = form.hsb.Value();
    const auto scroll = [&] {
        moduleScaleRenderer::ScrollTo(before + ticks);
        return form.hsb.Value() - before;
    };
    if (ticks < 0) {
        ticks = std::max(ticks, -roomToTheLeft() / tick);
        step(scroll() * tick);
    } else if (step(ticks * tick)) { // ahead of the view: the film may have to grow for it
        step((scroll() - ticks) * tick);
    }
}

void endDrag(bool keepsSelection)
{
    auto drag = takeHeld();
    if (!drag) {
        return;
    }
    if (keepsChange(*drag)) {
        UpdatePreview();
    } else {
        if (hasNewestEntry(*drag)) {
            // What was undone before the press is gone: kept, a press on a row ends the way forward, whether anything
            // moves or not. Only Esc ahead of the release brings it back.
            ModuleHistory::DeleteLastEntry();
        }
        if (!keepsSelection) {
            selectAlone(items::row(drag->kind, drag->index), form.DragSeq);
        }
    }
    EnableOrDisableMenuItems();
}

void cancelDrag()
{
    if (form.DragActive && held && held->command && !hasNewestEntry(*held)) {
        endDrag(true); // the history has gone on: what was before the press is not for the drag to bring back
        return;
    }
    auto drag = takeHeld();
    if (!drag || !drag->command) {
        return;
    }
    if (!drag->hasStepped || putTimelineBack()) {
        drag->command->leaveNoTrace();
    } else {
        ModuleHistory::StoreCurrentTLImage();
    }
    ModuleTreeView::SetSourceSelected(drag->kind == RowKind::kEffect
                                          ? ModuleTreeView::kEffectLane
                                          : items::trackOf(items::row(drag->kind, drag->index)),
                                      form.DragSeq + 1);
    EnableOrDisableMenuItems();
}

} // namespace frmTimeline
