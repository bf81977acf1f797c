#pragma once

// A whole item as a value: read from its track, and put on one.
//
// What is read and put in several calls takes the way of calling as its last argument, so that a walk that must not
// stop half way makes its calls in its own manner: `needed(call)` answers nothing and raises when the call was not
// done, `tried(call)` is false then, or raises. All else raises what the engine raises. Interface thread only.

#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "items/source_times.h"

#include <optional>
#include <string>
#include <string_view>

namespace items {

class PutBack;

/// An overlay's transition with its key; it lasts as long as the overlay.
struct OverlayKey {
    std::string name;
    std::int16_t red = 0; // 0 to 255 each
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

/// Of any track but the overlay track that is all.
struct BareSource {
    engine::Handle stream = 0;
    std::int16_t mode = 0;
    SourceTimes times;
};

struct WholeSource : BareSource {
    std::optional<OverlayKey> key; // nothing for an overlay without transition, and on any other track
};

struct WholeEffect {
    std::string name;
    ItemTimes times;
};

/// Through a cast of the engine that the caller holds.
struct ItemPlace {
    engine::ITWTimeline& engine;
    engine::Handle track;
    std::int16_t seq;
};

/// Makes each call once, and raises its failure.
struct RaisingCalls {
    bool tried(auto&& call) const
    {
        engine::check(call());
        return true;
    }
    void needed(auto&& call) const { tried(call); }
};

/// For a way back: makes each call once, and leaves what fails.
struct UncheckedCalls {
    bool tried(auto&& call) const { return !call().failed(); }
};

// --- Reading -------------------------------------------------------------------------------------------------------
// Nothing when there is no such item. A name comes through a buffer of nameBytes and is cut to it; it has no blanks and
// NULs at its end.

/// call(buffer) fills the buffer.
template <class Call, class Calls = RaisingCalls>
std::string readName(std::size_t nameBytes, Call call, Calls&& calls = {})
{
    std::string name(nameBytes, ' ');
    calls.needed([&] { return call(engine::TextBuffer(name)); });
    name.erase(name.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return name;
}

template <class Calls = RaisingCalls>
std::optional<SourceTimes> readTimes(const ItemPlace& at, Calls&& calls = {})
{
    SourceTimes times;
    engine::Bool16 ok = engine::kFalse;
    calls.needed([&] { return at.engine.GetSourceTimes(at.track, at.seq, times.start, times.stop, ok); });
    if (ok == engine::kFalse) {
        return {};
    }
    calls.needed(
        [&] { return at.engine.GetSourceMediaTimes(at.track, at.seq, times.mediaStart, times.mediaStop, ok); });
    return times;
}

template <class Calls = RaisingCalls>
std::optional<BareSource> readSource(const ItemPlace& at, Calls&& calls = {})
{
    const auto times = readTimes(at, calls);
    if (!times) {
        return {};
    }
    BareSource source{.times = *times};
    calls.needed([&] { return at.engine.GetSourceStream(at.track, at.seq, source.stream); });
    calls.needed([&] { return at.engine.GetSourceStretchMode(at.track, at.seq, source.mode); });
    return source;
}

/// Without a name when there is no such transition.
template <class Calls = RaisingCalls>
OverlayKey readKey(const ItemPlace& at, engine::ITWKeyTransition& keys, std::size_t nameBytes, Calls&& calls = {})
{
    OverlayKey key;
    key.name = readName(
        nameBytes, [&](auto buffer) { return at.engine.GetTransitionName(at.track, at.seq, buffer); }, calls);
    calls.needed([&] { return keys.GetKeyRed(at.track, at.seq, key.red); });
    calls.needed([&] { return keys.GetKeyGreen(at.track, at.seq, key.green); });
    calls.needed([&] { return keys.GetKeyBlue(at.track, at.seq, key.blue); });
    return key;
}

std::optional<WholeSource> readWhole(const ItemPlace& at, std::size_t nameBytes);

template <class Calls = RaisingCalls>
std::optional<WholeEffect> readEffect(const ItemPlace& at, std::size_t nameBytes, Calls&& calls = {})
{
    WholeEffect effect;
    engine::Bool16 ok = engine::kFalse;
    calls.needed([&] { return at.engine.GetEffectTimes(at.track, at.seq, effect.times.start, effect.times.stop, ok); });
    if (ok == engine::kFalse) {
        return {};
    }
    effect.name = readName(
        nameBytes, [&](auto buffer) { return at.engine.GetEffectName(at.track, at.seq, buffer); }, calls);
    return effect;
}

// --- Putting -------------------------------------------------------------------------------------------------------

/// The engine's last flag.
template <class Calls = RaisingCalls>
bool setTimes(const ItemPlace& at, const SourceTimes& times, Calls&& calls = {})
{
    engine::Bool16 ok = engine::kFalse;
    calls.tried([&] { return at.engine.SetSourceTimes(at.track, at.seq, times.start, times.stop, ok); });
    calls.tried([&] { return at.engine.SetSourceMediaTimes(at.track, at.seq, times.mediaStart, times.mediaStop, ok); });
    return ok != engine::kFalse;
}

/// Of a new source, which has mode 0. To be called last: it may have a player take in what lies on the track.
template <class Calls = RaisingCalls>
void setMode(const ItemPlace& at, std::int16_t mode, Calls&& calls = {})
{
    if (mode != 0) {
        calls.tried([&] { return at.engine.SetSourceStretchMode(at.track, at.seq, mode); });
    }
}

/// What makes a source that was just added the one that was read.
template <class Calls = RaisingCalls>
void setWhole(const ItemPlace& at, const SourceTimes& times, std::int16_t mode, Calls&& calls = {})
{
    setTimes(at, times, calls);
    setMode(at, mode, calls);
}

// Each puts an item ahead of the one that stands at the place. False when the track has no room; nothing has changed
// then. putBack takes it off again.

/// Without its mode and its key.
bool insertSource(const ItemPlace& at, engine::Handle stream, const SourceTimes& times, PutBack& putBack);
bool insertKey(const ItemPlace& at, const OverlayKey& key, const ItemTimes& times, PutBack& putBack);
bool insertEffect(const ItemPlace& at, std::string_view name, const ItemTimes& times, PutBack& putBack);

// --- Removing ------------------------------------------------------------------------------------------------------
// False when there is no such item. putBack puts it there again.

/// Its key stays.
bool removeSource(const ItemPlace& at, const BareSource& source, PutBack& putBack);
bool removeEffect(const ItemPlace& at, const WholeEffect& effect, PutBack& putBack);

} // namespace items
