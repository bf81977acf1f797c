#include "editing/selection_walk.h"

#include "editing/edit_trap.h"
#include "editing/range_actions.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/row_items.h"
#include "timeline/moduleTimeline.h"

namespace moduleEdit {

using editing::Answer;
using editing::SelectionEdges;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::Items;
using items::ItemTimes;
using items::RowKind;
using items::SourceTimes;
using items::TrackRow;

namespace {

using SourceAction = Answer (*)(Handle, std::int16_t&, const SourceTimes&, const SelectionEdges&);
using EffectAction = Answer (*)(Handle, std::int16_t&, const ItemTimes&, const SelectionEdges&);

/// What a mode does to an item of each kind of row.
struct Actions {
    SourceAction ofSource;
    EffectAction ofEffect;
    SourceAction ofOverlay;
};

/// Nothing for the reserved mode.
const Actions* actionsOf(EditMode mode)
{
    static constexpr Actions kCut{CutAction, CutActionEffect, CutActionOverlay};
    static constexpr Actions kCopy{CopyAction, CopyActionEffect, CopyActionOverlay};
    static constexpr Actions kDelete{DeleteAction, DeleteActionEffect, DeleteActionOverlay};
    static constexpr Actions kCrop{CropAction, CropActionEffect, CropActionOverlay};
    static constexpr Actions kReplace{replaceAction, DeleteActionEffect, replaceActionOverlay};
    static constexpr const Actions* kActions[] = {&kCut, &kCopy, nullptr, &kDelete, &kCrop, &kReplace};
    return kActions[static_cast<std::size_t>(mode)];
}

bool takesPart(ITWTimeline& engine, const TrackRow& row) { return !row.isLocked() && items::isLinked(engine, row); }

/// read(seq) answers an item's times while there is one.
template <class Read, class Action>
void walk(Read read, Action action, Handle track, const SelectionEdges& selection, Answer& result)
{
    for (; const auto item = read(WalkSeq); ++WalkSeq) {
        const Answer answer = action(track, WalkSeq, *item, selection);
        result = {answer.flag, result.isWhole && answer.isWhole};
        if (selection.start > item->start && selection.stop < item->stop) {
            return; // the selection lies in this one
        }
    }
}

void walkRow(ITWTimeline& engine, const TrackRow& row, const Actions& actions, const SelectionEdges& selection,
             Answer& result)
{
    const bool isOverlay = row.kind == RowKind::kOverlay;
    WalkSeq = ClipSeq = 0;
    TransitionClipSeq = isOverlay ? std::int16_t{0} : TransitionClipSeq;
    PrevStart = PrevStop = 0;
    if (!takesPart(engine, row)) {
        return;
    }
    const Handle track = items::trackOf(row);
    if (row.kind == RowKind::kEffect) {
        const Items effects = items::rowItems(engine, row).items;
        walk([&](std::int16_t seq) { return effects.times(seq); }, actions.ofEffect, track, selection, result);
    } else {
        walk(
            [&](std::int16_t seq) {
                return items::readTimes({engine, track, seq});
            },
            isOverlay ? actions.ofOverlay : actions.ofSource, track, selection, result);
    }
}

/// visit(row) comes for the rows that were made, kind by kind.
template <class Visit>
void forRowsOf(std::initializer_list<RowKind> kinds, Visit visit)
{
    for (const RowKind kind : kinds) {
        for (const TrackRow& row : items::rows()) {
            if (row.kind == kind && items::isMade(row)) {
                visit(row);
            }
        }
    }
}

bool isStrictlyIn(Milliseconds pos, const ItemTimes& item) { return item.start < pos && pos < item.stop; }

bool holdsAnEdge(const ItemTimes& item, const SelectionEdges& selection)
{
    return isStrictlyIn(selection.start, item) || isStrictlyIn(selection.stop, item);
}

/// Removes the items that neither an edge lies in nor `stays(item)` keeps. remove(seq) is false when nothing went.
template <class Stays, class Remove>
void dropOutside(const Items& lane, const SelectionEdges& selection, Stays stays, Remove remove)
{
    std::int16_t seq = 0;
    while (const auto item = lane.times(seq)) {
        const bool goes = !holdsAnEdge(*item, selection) && !stays(*item);
        if (!goes || !remove(seq)) {
            ++seq;
        }
    }
}

void dropOutside(ITWTimeline& engine, const SelectionEdges& selection)
{
    const auto liesIn = [&](const ItemTimes& item) {
        return item.start >= selection.start && item.stop <= selection.stop;
    };
    const auto liesStrictlyIn = [&](const ItemTimes& item) {
        return item.start > selection.start && item.stop < selection.stop;
    };
    forRowsOf({RowKind::kVideo, RowKind::kEffect, RowKind::kAudio, RowKind::kOverlay}, [&](const TrackRow& row) {
        if (!takesPart(engine, row)) {
            return;
        }
        const items::RowItems lane = items::rowItems(engine, row);
        const auto remove = [&](std::int16_t seq) {
            return lane.isOverlay() ? items::removeOverlay(seq) : lane.items.remove(seq);
        };
        if (items::isMediaRow(row.kind)) {
            dropOutside(lane.items, selection, liesIn, remove);
        } else {
            dropOutside(lane.items, selection, liesStrictlyIn, remove);
        }
    });
}

} // namespace

editing::Answer EditSelection(EditMode mode)
{
    Answer result;
    const bool isWhole = editing::trapped("EditSelection", [&] {
        if (mode == EditMode::kCrop && !CropSourcesOnly) {
            result.isWhole = DropOutsideSelection();
        }
        if (const Actions* const actions = actionsOf(mode)) {
            const auto engine = EngineAs<ITWTimeline>();
            const SelectionEdges selection = editing::selectionEdges();
            forRowsOf({RowKind::kVideo, RowKind::kAudio, RowKind::kEffect, RowKind::kOverlay},
                      [&](const TrackRow& row) { walkRow(*engine, row, *actions, selection, result); });
        }
        moduleTimeline::ShowSelSliders(false);
    });
    return {result.flag, result.isWhole && isWhole};
}

bool DropOutsideSelection()
{
    return editing::trapped("DropOutsideSelection",
                            [] { dropOutside(*EngineAs<ITWTimeline>(), editing::selectionEdges()); });
}

} // namespace moduleEdit
