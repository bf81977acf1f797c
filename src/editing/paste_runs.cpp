#include "editing/paste_runs.h"

#include "core/numbers.h"
#include "editing/clipboard.h"
#include "items/put_back.h"
#include "items/whole_item.h"

#include <memory>

namespace editing {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using moduleEdit::EffectClip;
using moduleEdit::SourceClip;
using moduleEdit::TransitionClip;

namespace {

/// Walks the run that ends at index last backwards. insert(piece, its number in the walk) is false when the piece was
/// left out; finish(piece) comes when all is in its place.
template <class Clip, class Insert, class Finish>
PastedPieces pasteRun(const std::vector<Clip>& clips, std::int32_t last, const items::Items& lane, std::int16_t seq,
                      items::PutBack& putBack, Insert insert, Finish finish)
{
    // Both ways back come behind that of an insertion: until it has gone, a piece would be in the way.
    const auto pushed = [&](std::int16_t fromSeq, Milliseconds delta, const std::shared_ptr<Milliseconds>& moved) {
        *moved = lane.shift(fromSeq, delta) ? delta : 0;
    };
    const auto backTo = [&] {
        auto moved = std::make_shared<Milliseconds>(0);
        putBack.onFailure([lane, seq, moved] { lane.tryShift(seq, -*moved); });
        return moved;
    };
    PastedPieces pasted;
    Milliseconds pendingGap = 0;
    const std::int32_t first = last == -1 ? 0 : last - clips[static_cast<std::size_t>(last)].Seq;
    for (std::int32_t i = last; i >= first; --i) {
        const Clip& clip = clips[static_cast<std::size_t>(i)];
        if (!clip.isGap()) {
            const auto moved = backTo();
            pasted.push_back(clip.Length > 0 && insert(clip, pasted.size()));
            if (pasted.back()) {
                pushed(static_cast<std::int16_t>(seq + 1), numbers::added(clip.Length, pendingGap), moved);
                pendingGap = 0;
                finish(clip);
            }
        } else if (lane.count() > 0) { // on an empty track a gap has nothing to keep apart
            pendingGap = clip.gap();
            if (clip.Seq == 0) {
                pushed(seq, pendingGap, backTo());
            }
        }
    }
    return pasted;
}

items::ItemTimes timesAt(Milliseconds start, Milliseconds length) { return {start, numbers::added(start, length)}; }

bool isVideoTrack(ITWTimeline& engine, Handle track)
{
    Bool16 isVideo = kFalse;
    check(engine.IsVideoTrack(track, isVideo));
    return isVideo != kFalse;
}

} // namespace

PastedPieces pasteSources(ITWTimeline& engine, Handle track, std::int16_t seq, Milliseconds position,
                          items::PutBack& putBack)
{
    const items::ItemPlace at{engine, track, seq};
    const auto insert = [&](const SourceClip& clip, std::size_t) {
        const auto [start, stop] = timesAt(position, clip.Length);
        return items::insertSource(at, clip.Stream, {start, stop, clip.MediaStart, clip.MediaStop}, putBack);
    };
    return pasteRun(moduleEdit::SourceClips, moduleEdit::LastSourceClip(track),
                    items::Items(engine, items::ItemKind::kSource, track), seq, putBack, insert,
                    [&](const SourceClip& clip) { items::setMode(at, clip.StretchMode); });
}

void pasteEffects(ITWTimeline& engine, Handle track, std::int16_t seq, Milliseconds position, items::PutBack& putBack)
{
    if (isVideoTrack(engine, track)) {
        const auto insert = [&](const EffectClip& clip, std::size_t) {
            return items::insertEffect({engine, track, seq}, clip.Name, timesAt(position, clip.Length), putBack);
        };
        pasteRun(moduleEdit::EffectClips, moduleEdit::LastEffectClip(track),
                 items::Items(engine, items::ItemKind::kEffect, track), seq, putBack, insert, [](const EffectClip&) {});
    }
}

void pasteTransitions(ITWTimeline& engine, Handle track, std::int16_t seq, Milliseconds position,
                      const PastedPieces& overlays, items::PutBack& putBack)
{
    if (!isVideoTrack(engine, track)) {
        return;
    }
    const items::Items transitions(engine, items::ItemKind::kTransition, track);
    const auto insert = [&](const TransitionClip& clip, std::size_t piece) {
        const bool isWanted = piece >= overlays.size() || overlays[piece];
        // One that never was is only put where it keeps those behind it in step with their overlays.
        const bool wasNone = clip.Name.empty() && seq >= transitions.count();
        return isWanted && !wasNone
               && items::insertKey({engine, track, seq}, {clip.Name, clip.KeyRed, clip.KeyGreen, clip.KeyBlue},
                                   timesAt(position, clip.Length), putBack);
    };
    pasteRun(moduleEdit::TransitionClips, moduleEdit::LastTransitionClip(track), transitions, seq, putBack, insert,
             [](const TransitionClip&) {});
}

} // namespace editing
