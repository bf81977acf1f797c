#include "editing/split.h"

#include "core/numbers.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/items.h"

namespace editing {

using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;

namespace {

constexpr std::size_t kTransitionNameBytes = 20;

bool isInside(const items::ItemTimes& times, Milliseconds position)
{
    return times.start < position && position < times.stop;
}

} // namespace

void splitSource(Handle track, std::int16_t seq, Milliseconds position)
{
    const auto engine = EngineAs<ITWTimeline>();
    const auto now = items::readTimes({*engine, track, seq});
    if (!now || !isInside(now->onTimeline(), position)) {
        return;
    }
    items::SourceTimes left = *now;
    items::SourceTimes right = *now;
    left.stop = right.start = position;
    if (now->hasRate()) {
        const double rate = now->rate();
        right.mediaStart =
            numbers::rounded<std::int32_t>((now->mediaStop - (static_cast<double>(now->stop) - position)) / rate);
        left.mediaStop =
            numbers::rounded<std::int32_t>(((static_cast<double>(position) - now->start) + now->mediaStart) / rate);
    }
    items::SourceEdit(track, seq, kTransitionNameBytes).split(left, right);
}

// On the overlay track a source takes its transition along.
void splitOverlay(Handle track, std::int16_t seq, Milliseconds position) { splitSource(track, seq, position); }

void splitEffect(Handle track, std::int16_t seq, Milliseconds position, std::size_t nameBytes)
{
    const auto engine = EngineAs<ITWTimeline>();
    const auto now = items::Items(*engine, items::ItemKind::kEffect, track).times(seq);
    if (now && isInside(*now, position)) {
        items::EffectEdit(track, seq, nameBytes).split({now->start, position}, {position, now->stop});
    }
}

} // namespace editing
