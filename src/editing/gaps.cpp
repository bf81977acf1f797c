#include "editing/gaps.h"

#include "editing/clipboard.h"
#include "editing/edit_trap.h"
#include "editing/selection_walk.h"
#include "engine/engine_access.h"
#include "items/items.h"

#include <optional>

namespace moduleEdit {

using editing::SelectionEdges;
using engine::Handle;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

/// Ahead of item seq, from the item visited before or from the selection's start.
std::optional<Milliseconds> gapAhead(std::int16_t seq, const ItemTimes& item, const SelectionEdges& selection,
                                     bool keepsInner)
{
    const Milliseconds a = selection.start;
    if (seq == 0 || (PrevStop == item.start && a == PrevStop)) {
        return {};
    }
    if (PrevStop < a && a < item.start) {
        return item.start - a;
    }
    if (a > PrevStop || (keepsInner ? PrevStop == item.start : a <= item.start)) {
        return {};
    }
    return item.start - PrevStop;
}

struct GapBehind {
    Milliseconds length;
    bool isLast; // nothing follows
};

/// Behind the item, up to the selection's stop.
std::optional<GapBehind> gapBehind(const Items& lane, std::int16_t seq, const ItemTimes& item,
                                   const SelectionEdges& selection)
{
    const Milliseconds b = selection.stop;
    if (seq >= lane.count() - 1 && b > item.stop) {
        return GapBehind{b - item.stop, true};
    }
    const auto next = lane.times(static_cast<std::int16_t>(seq + 1));
    if (next && item.stop < b && b < next->start) {
        return GapBehind{b - item.stop, false};
    }
    return {};
}

/// addGap(length, isLast) keeps what is found.
template <class AddGap>
bool logGap(const char* routine, ItemKind kind, Handle track, std::int16_t seq, const ItemTimes& item,
            const SelectionEdges& selection, bool before, AddGap addGap)
{
    return editing::trapped(routine, [&] {
        if (before) {
            if (const auto length = gapAhead(seq, item, selection, kind == ItemKind::kSource)) {
                addGap(*length, false);
            }
            return;
        }
        const auto engine = engine::EngineAs<engine::ITWTimeline>();
        if (const auto gap = gapBehind(Items(*engine, kind, track), seq, item, selection)) {
            addGap(gap->length, gap->isLast);
        }
    });
}

} // namespace

bool LogGaps(Handle track, std::int16_t seq, const ItemTimes& source, const SelectionEdges& selection, bool before)
{
    return logGap("LogGaps", ItemKind::kSource, track, seq, source, selection, before, [&](Milliseconds length, bool) {
        constexpr Milliseconds kNoLength = -1;
        AddSourceClip({track, 0, 0, length, ClipSeq++, kNoLength, 0});
    });
}

bool LogGapsEffects(Handle track, std::int16_t seq, const ItemTimes& effect, const SelectionEdges& selection,
                    bool before)
{
    return logGap("LogGapsEffects", ItemKind::kEffect, track, seq, effect, selection, before,
                  [&](Milliseconds length, bool) {
                      AddEffectClip({track, "0", length, ClipSeq++});
                  });
}

bool LogGapsTransition(Handle track, std::int16_t seq, const ItemTimes& source, const SelectionEdges& selection,
                       bool before)
{
    return logGap("LogGapsTransition", ItemKind::kTransition, track, seq, source, selection, before,
                  [&](Milliseconds length, bool isLast) {
                      AddTransitionClip({track, "0", length, 0, 0, 0, TransitionClipSeq});
                      // Kept: behind the last one the count of the sources is raised instead, which only matters
                      // where an overlay without a transition follows.
                      ++(isLast ? ClipSeq : TransitionClipSeq);
                  });
}

} // namespace moduleEdit
