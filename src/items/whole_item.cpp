#include "items/whole_item.h"

#include "core/shared_state.h"
#include "items/put_back.h"
#include "items/transition_key.h"

namespace items {

using engine::Bool16;
using engine::check;
using engine::ITWTimeline;
using engine::kFalse;

namespace {

void removeOnFailure(const ItemPlace& at, ItemKind kind, PutBack& putBack)
{
    putBack.onFailure([at, remove = kItemCalls[static_cast<std::size_t>(kind)].remove] {
        Bool16 removed = kFalse;
        (void)(at.engine.*remove)(at.track, at.seq, removed);
    });
}

} // namespace

std::optional<WholeSource> readWhole(const ItemPlace& at, std::size_t nameBytes)
{
    const auto bare = readSource(at);
    if (!bare) {
        return {};
    }
    WholeSource source{*bare, {}};
    if (at.track == state::OverlayTrack && at.seq < Items(at.engine, ItemKind::kTransition, at.track).count()) {
        source.key = readKey(at, *engine::EngineAs<engine::ITWKeyTransition>(), nameBytes);
    }
    return source;
}

bool insertSource(const ItemPlace& at, engine::Handle stream, const SourceTimes& times, PutBack& putBack)
{
    Bool16 ok = kFalse;
    check(at.engine.InsertSource(at.track, stream, at.seq, times.start, 0, ok));
    if (ok != kFalse) {
        removeOnFailure(at, ItemKind::kSource, putBack);
        setTimes(at, times);
    }
    return ok != kFalse;
}

bool insertKey(const ItemPlace& at, const OverlayKey& key, const ItemTimes& times, PutBack& putBack)
{
    Bool16 ok = kFalse;
    check(at.engine.InsertTransition(at.track, key.name, at.seq, times.start, times.stop, 0, ok));
    if (ok != kFalse) {
        removeOnFailure(at, ItemKind::kTransition, putBack);
        moduleEdit::ApplyTransitionKey(at.track, at.seq, key.red, key.green, key.blue);
    }
    return ok != kFalse;
}

bool insertEffect(const ItemPlace& at, std::string_view name, const ItemTimes& times, PutBack& putBack)
{
    Bool16 ok = kFalse;
    check(at.engine.InsertEffect(at.track, name, at.seq, times.start, times.stop, 0, ok));
    if (ok != kFalse) {
        removeOnFailure(at, ItemKind::kEffect, putBack);
    }
    return ok != kFalse;
}

bool removeSource(const ItemPlace& at, const BareSource& source, PutBack& putBack)
{
    const bool ok = Items(at.engine, ItemKind::kSource, at.track).remove(at.seq);
    if (ok) {
        putBack.onFailure([at, source] {
            Bool16 inserted = kFalse;
            (void)at.engine.InsertSource(at.track, source.stream, at.seq, source.times.start, source.times.stop,
                                         inserted);
            if (inserted != kFalse) { // else these would be another one's
                setWhole(at, source.times, source.mode, UncheckedCalls{});
            }
        });
    }
    return ok;
}

bool removeEffect(const ItemPlace& at, const WholeEffect& effect, PutBack& putBack)
{
    const bool ok = Items(at.engine, ItemKind::kEffect, at.track).remove(at.seq);
    if (ok) {
        putBack.onFailure([at, effect] {
            Bool16 inserted = kFalse;
            (void)at.engine.InsertEffect(at.track, effect.name, at.seq, effect.times.start, effect.times.stop, 0,
                                         inserted);
        });
    }
    return ok;
}

} // namespace items
