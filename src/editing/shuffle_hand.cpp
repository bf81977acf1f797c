#include "editing/shuffle_hand.h"

#include "editing/shuffle.h"
#include "items/item_edit.h"

namespace ModuleTreeView {

using engine::Handle;

namespace {

constexpr std::size_t kTransitionNameBytes = 20;

void take(const items::WholeSource& source)
{
    ShuffleStream = source.stream;
    ShuffleStretch = source.mode;
    ShuffleStart = source.times.start;
    ShuffleStop = source.times.stop;
    ShuffleMediaStart = source.times.mediaStart;
    ShuffleMediaStop = source.times.mediaStop;
    const auto key = source.key.value_or(items::OverlayKey{});
    ShuffleName = key.name;
    ShuffleKeyRed = key.red;
    ShuffleKeyGreen = key.green;
    ShuffleKeyBlue = key.blue;
}

} // namespace

bool readSource(engine::ITWTimeline& engine, Handle track, std::int16_t seq)
{
    const auto source = items::readWhole({engine, track, seq}, kTransitionNameBytes);
    take(source.value_or(items::WholeSource{}));
    return source.has_value();
}

bool EditCutSource(Handle track, std::int16_t seq)
{
    items::SourceEdit edit(track, seq, kTransitionNameBytes);
    take(edit.source());
    return edit.remove();
}

// On the overlay track a source takes its transition along.
bool EditCutOverlay(Handle track, std::int16_t seq) { return EditCutSource(track, seq); }

bool EditCutEffect(Handle track, std::int16_t seq)
{
    constexpr std::size_t kNameBytes = 10;
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const auto effect = items::readEffect({*engine, track, seq}, kNameBytes);
    if (!effect) {
        return false;
    }
    ShuffleName = effect->name;
    ShuffleStart = effect->times.start;
    ShuffleStop = effect->times.stop;
    return items::Items(*engine, items::ItemKind::kEffect, track).remove(seq);
}

} // namespace ModuleTreeView
