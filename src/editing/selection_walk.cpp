#include "editing/selection_walk.h"

#include "core/shared_state.h"
#include "editing/edit_trap.h"
#include "editing/moduleTWState.h"
#include "editing/range_actions.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/items.h"
#include "items/track_rows.h"
#include "timeline/moduleTimeline.h"

namespace moduleEdit {

using editing::SelectionEdges;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::ItemTimes;
using items::RowKind;
using items::SourceTimes;

namespace {

using SourceAction = bool (*)(Handle, std::int16_t&, const SourceTimes&, const SelectionEdges&);
using EffectAction = bool (*)(Handle, std::int16_t&, const ItemTimes&, const SelectionEdges&);

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
    static constexpr const Actions* kActions[] = {&kCut, &kCopy, nullptr, &kDelete, &kCrop};
    return kActions[static_cast<std::size_t>(mode)];
}

bool isLinked(ITWTimeline& engine, Handle track)
{
    engine::Bool16 linked = engine::kFalse;
    engine::check(engine.GetTrackLink(track, linked));
    return linked != engine::kFalse;
}

bool takesPart(ITWTimeline& engine, Handle track)
{
    return isLinked(engine, track) && !moduleTWState::IsTrackLocked(track);
}

bool effectsTakePart(Handle track)
{
    return moduleTWState::IsEffectSelected(track) && !moduleTWState::IsEffectLocked(track);
}

/// read(seq) answers an item's times while there is one.
template <class Read, class Action>
void walk(Read read, Action action, Handle track, const SelectionEdges& selection, bool& result)
{
    for (; const auto item = read(WalkSeq); ++WalkSeq) {
        result = action(track, WalkSeq, *item, selection);
        if (selection.start > item->start && selection.stop < item->stop) {
            return; // the selection lies in this one
        }
    }
}

void walkRow(ITWTimeline& engine, const items::TrackRow& row, const Actions& actions, const SelectionEdges& selection,
             bool& result)
{
    const Handle track = items::trackOf(row);
    WalkSeq = ClipSeq = 0;
    PrevStart = PrevStop = 0;
    if (row.kind == RowKind::kEffect) {
        if (effectsTakePart(track)) {
            const Items effects(engine, ItemKind::kEffect, track);
            walk([&](std::int16_t seq) { return effects.times(seq); }, actions.ofEffect, track, selection, result);
        }
        return;
    }
    const bool isOverlay = row.kind == RowKind::kOverlay;
    TransitionClipSeq = isOverlay ? std::int16_t{0} : TransitionClipSeq;
    if (takesPart(engine, track)) {
        walk([&](std::int16_t seq) { return items::readSource(engine, track, seq); },
             isOverlay ? actions.ofOverlay : actions.ofSource, track, selection, result);
    }
}

void walkRows(ITWTimeline& engine, const Actions& actions, const SelectionEdges& selection, bool& result)
{
    for (const RowKind kind : {RowKind::kVideo, RowKind::kAudio, RowKind::kEffect, RowKind::kOverlay}) {
        for (const items::TrackRow& row : items::rows()) {
            if (row.kind == kind) {
                walkRow(engine, row, actions, selection, result);
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
    for (const Handle track : state::TrackCollection) {
        if (takesPart(engine, track)) {
            const Items sources(engine, ItemKind::kSource, track);
            dropOutside(sources, selection, liesIn, [&](std::int16_t seq) { return sources.remove(seq); });
        }
        if (effectsTakePart(track)) {
            const Items effects(engine, ItemKind::kEffect, track);
            dropOutside(effects, selection, liesStrictlyIn, [&](std::int16_t seq) { return effects.remove(seq); });
        }
    }
    const Handle overlays = state::OverlayTrack;
    if (takesPart(engine, overlays)) {
        dropOutside(Items(engine, ItemKind::kSource, overlays), selection, liesStrictlyIn,
                    [&](std::int16_t seq) { return items::removeOverlay(engine, seq); });
    }
}

} // namespace

bool EditSelection(EditMode mode)
{
    bool result = true;
    editing::trapped("EditSelection", [&] {
        if (mode == EditMode::kCrop && !CropSourcesOnly) {
            DropOutsideSelection();
        }
        if (const Actions* const actions = actionsOf(mode)) {
            walkRows(*EngineAs<ITWTimeline>(), *actions, editing::selectionEdges(), result);
        }
        moduleTimeline::ShowSelSliders(false);
    });
    return result;
}

void DropOutsideSelection()
{
    editing::trapped("DropOutsideSelection", [] { dropOutside(*EngineAs<ITWTimeline>(), editing::selectionEdges()); });
}

} // namespace moduleEdit
