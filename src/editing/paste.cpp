#include "editing/paste.h"

#include "core/shared_state.h"
#include "editing/clipboard.h"
#include "editing/edit_trap.h"
#include "editing/moduleTWState.h"
#include "editing/paste_runs.h"
#include "editing/split.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "items/put_back.h"

namespace moduleEdit {

using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::PutBack;

namespace {

void splitNamedEffect(Handle track, std::int16_t seq, Milliseconds position)
{
    constexpr std::size_t kNameBytes = 260;
    editing::splitEffect(track, seq, position, kNameBytes);
}

/// False when there is none. Raises what the engine raises.
bool closeGap(const Items& lane, Milliseconds position)
{
    const std::int16_t count = lane.count();
    for (std::int16_t seq = 0; seq + 1 < count; ++seq) {
        if (const auto item = lane.times(seq); item && item->stop == position) {
            const auto behind = static_cast<std::int16_t>(seq + 1);
            const auto next = lane.times(behind);
            return next && lane.shift(behind, position - next->start);
        }
    }
    return false;
}

/// Both lists or neither, so that they stay in step.
bool pasteOverlaysBefore(Handle track, std::int16_t seq, Milliseconds position)
{
    return editing::trapped("PasteBefore", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        PutBack putBack;
        const auto pasted = editing::pasteSources(*engine, track, seq, position, putBack);
        editing::pasteTransitions(*engine, track, seq, position, pasted, putBack);
        putBack.done();
    });
}

/// What a paste does to one kind of items.
struct PasteKind {
    ItemKind items;
    bool (*isLocked)(Handle track);
    bool (*hasClip)(Handle track);
    void (*split)(Handle track, std::int16_t seq, Milliseconds position);
    bool (*pasteBefore)(Handle track, std::int16_t seq, Milliseconds position);
    bool hasTransitions = false;
};

constexpr PasteKind kSourcePaste{ItemKind::kSource, moduleTWState::IsTrackLocked, HasSourceClip, editing::splitSource,
                                 PasteBefore};
constexpr PasteKind kEffectPaste{ItemKind::kEffect, moduleTWState::IsEffectLocked, HasEffectClip, splitNamedEffect,
                                 PasteEffectBefore};
constexpr PasteKind kOverlayPaste{ItemKind::kSource,     moduleTWState::IsTrackLocked, HasSourceClip,
                                  editing::splitOverlay, pasteOverlaysBefore,          true};

/// The item that the position falls into or before, else the last one.
std::int16_t itemAt(const Items& lane, Milliseconds position)
{
    std::int16_t seq = 0;
    for (;; ++seq) {
        const auto next = lane.times(static_cast<std::int16_t>(seq + 1));
        if (!next || position < next->start) {
            return seq;
        }
    }
}

/// False when an error was trapped on the way.
bool pasteOnTrack(ITWTimeline& engine, const PasteKind& kind, Handle track, Milliseconds position, bool shift)
{
    const Items lane(engine, kind.items, track);
    if (lane.count() == 0) { // whether locked or not: there is nothing to guard
        return kind.pasteBefore(track, 0, position);
    }
    if (kind.isLocked(track)) {
        return true;
    }
    if (shift) {
        closeGap(lane, position);
        if (kind.hasTransitions) {
            closeGap(Items(engine, ItemKind::kTransition, track), position);
        }
    }
    const std::int16_t seq = itemAt(lane, position);
    const auto item = lane.times(seq).value_or(items::ItemTimes{});
    if (item.start < position && position < item.stop) {
        if (!kind.hasClip(track)) {
            return true;
        }
        kind.split(track, seq, position);
    }
    const bool isAhead = position <= item.start;
    return kind.pasteBefore(track, static_cast<std::int16_t>(isAhead ? seq : seq + 1), position);
}

bool pasteOnTracks(const char* routine, const PasteKind& kind, Milliseconds position, bool shift)
{
    bool isWhole = true;
    return editing::trapped(routine,
                            [&] {
                                const auto engine = EngineAs<ITWTimeline>();
                                for (const Handle track : state::TrackCollection) {
                                    isWhole = isWhole && pasteOnTrack(*engine, kind, track, position, shift);
                                }
                            })
           && isWhole;
}

bool closeGap(const char* routine, ItemKind kind, Milliseconds position, Handle track)
{
    bool isClosed = false;
    editing::trapped(routine, [&] { isClosed = closeGap(Items(*EngineAs<ITWTimeline>(), kind, track), position); });
    return isClosed;
}

} // namespace

bool EditPasteSource(Milliseconds position, bool shift)
{
    return pasteOnTracks("EditPasteSource", kSourcePaste, position, shift);
}

bool EditPasteEffect(Milliseconds position, bool shift)
{
    return pasteOnTracks("EditPasteEffect", kEffectPaste, position, shift);
}

bool EditPasteOverlay(Milliseconds position, bool shift)
{
    bool isWhole = true;
    return editing::trapped("EditPasteOverlay",
                            [&] {
                                isWhole = pasteOnTrack(*EngineAs<ITWTimeline>(), kOverlayPaste, state::OverlayTrack,
                                                       position, shift);
                            })
           && isWhole;
}

bool PasteBefore(Handle track, std::int16_t seq, Milliseconds position)
{
    return editing::trapped("PasteBefore", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        PutBack putBack;
        editing::pasteSources(*engine, track, seq, position, putBack);
        putBack.done();
    });
}

bool PasteEffectBefore(Handle track, std::int16_t seq, Milliseconds position)
{
    return editing::trapped("PasteEffectBefore", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        PutBack putBack;
        editing::pasteEffects(*engine, track, seq, position, putBack);
        putBack.done();
    });
}

bool PasteTransitionBefore(Handle track, std::int16_t seq, Milliseconds position)
{
    return editing::trapped("PasteTransitionBefore", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        PutBack putBack;
        editing::pasteTransitions(*engine, track, seq, position, {}, putBack);
        putBack.done();
    });
}

bool ShiftSourcesFromPos(Milliseconds position, Handle track)
{
    return closeGap("ShiftSourcesFromPos", ItemKind::kSource, position, track);
}

bool ShiftEffectsFromPos(Milliseconds position, Handle track)
{
    return closeGap("ShiftEffectsFromPos", ItemKind::kEffect, position, track);
}

bool ShiftTransitionsFromPos(Milliseconds position, Handle track)
{
    return closeGap("ShiftTransitionsFromPos", ItemKind::kTransition, position, track);
}

} // namespace moduleEdit
