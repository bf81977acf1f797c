#include "editing/trim_item.h"

#include "core/numbers.h"
#include "editing/stream_facts.h"
#include "items/whole_item.h"

#include <algorithm>
#include <limits>

namespace editing {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using items::ItemTimes;
using items::RowKind;
using items::SourceTimes;

namespace {

constexpr std::int64_t kShortest = 11; // as of a resize

std::int64_t lengthOf(const SourceTimes& times) { return std::int64_t{times.stop} - times.start; }
std::int64_t mediaLengthOf(const SourceTimes& times) { return std::int64_t{times.mediaStop} - times.mediaStart; }

void readMedium(ITWTimeline& engine, TrimItem& item)
{
    Handle stream = 0;
    check(engine.GetSourceStream(items::trackOf(*item.row), item.seq, stream));
    const StreamFacts facts = factsOf(stream);
    item.keepsMedia = facts.isStill;
    item.mediaLength = facts.length;
}

/// The whole timeline ms that this much of the medium lasts.
std::int64_t lasting(std::int64_t mediaMs, const SourceTimes& times)
{
    constexpr std::int64_t kMost = std::numeric_limits<Milliseconds>::max();
    return std::clamp(mediaMs, std::int64_t{0}, kMost) * lengthOf(times) / mediaLengthOf(times);
}

/// How much of the item can go.
std::int64_t sparedBy(const TrimItem& item)
{
    std::int64_t spared = lengthOf(item.times) - kShortest;
    if (!item.keepsMedia) {
        spared = std::min(spared, lasting(mediaLengthOf(item.times) - 1, item.times));
    }
    return std::max(spared, std::int64_t{0});
}

/// How much of the medium there is to show beyond that end; nothing to say of one that keeps its media.
std::optional<std::int64_t> mediaBeyond(const TrimItem& item, ItemEnd end)
{
    if (item.keepsMedia) {
        return {};
    }
    const SourceTimes& times = item.times;
    return lasting(end == ItemEnd::kStart ? times.mediaStart : std::int64_t{item.mediaLength} - times.mediaStop, times);
}

/// The room on the row beside that end.
std::int64_t roomBeside(ITWTimeline& engine, const TrimItem& item, ItemEnd end)
{
    const items::RowItems row = items::rowItems(engine, *item.row);
    if (end == ItemEnd::kStart) {
        const auto ahead = row.items.times(static_cast<std::int16_t>(item.seq - 1)).value_or(ItemTimes{});
        return std::int64_t{item.times.start} - ahead.stop;
    }
    const auto behind = row.items.times(static_cast<std::int16_t>(item.seq + 1));
    std::int64_t limit = behind ? behind->start : std::numeric_limits<Milliseconds>::max();
    if (row.kind == RowKind::kEffect) {
        Milliseconds filmStop = 0;
        check(engine.GetTrackDuration(row.track, filmStop));
        limit = std::min(limit, std::int64_t{filmStop});
    }
    return limit - item.times.stop;
}

} // namespace

std::optional<SourceTimes> timesNow(ITWTimeline& engine, const items::TrackRow& row, std::int16_t seq)
{
    const items::RowItems lane = items::rowItems(engine, row);
    if (row.kind != RowKind::kEffect) {
        return items::readTimes({engine, lane.track, seq});
    }
    const auto times = lane.items.times(seq);
    return times ? std::optional(SourceTimes{times->start, times->stop, 0, 0}) : std::nullopt;
}

std::optional<TrimItem> readTrimItem(ITWTimeline& engine, const items::TrackRow& row, std::int16_t seq)
{
    const auto times = timesNow(engine, row, seq);
    if (!times) {
        return {};
    }
    TrimItem item{&row, seq, true, 0, *times, {}};
    if (row.kind == RowKind::kOverlay) {
        item.key = items::rowItems(engine, row).transitions.times(seq);
    }
    if (row.kind != RowKind::kEffect) {
        readMedium(engine, item);
    }
    return item;
}

TrimReach reachOf(ITWTimeline& engine, const TrimItem& item, ItemEnd end)
{
    if (!item.keepsMedia && mediaLengthOf(item.times) <= 0) {
        return {}; // it shows nothing, at no speed
    }
    std::int64_t grows = roomBeside(engine, item, end);
    if (const auto media = mediaBeyond(item, end)) {
        grows = std::min(grows, *media);
    }
    const auto most = static_cast<Milliseconds>(std::max(grows, std::int64_t{0}));
    const auto spared = static_cast<Milliseconds>(sparedBy(item));
    return end == ItemEnd::kStart ? TrimReach{-most, spared} : TrimReach{-spared, most};
}

TrimItem trimmed(const TrimItem& item, ItemEnd end, Milliseconds delta)
{
    TrimItem then = item;
    const Milliseconds mediaDelta = item.keepsMedia ? 0 : numbers::rounded<std::int32_t>(delta / item.times.rate());
    if (end == ItemEnd::kStart) {
        then.times.start += delta;
        then.times.mediaStart += mediaDelta;
    } else {
        then.times.stop += delta;
        then.times.mediaStop += mediaDelta;
    }
    if (item.key) {
        then.key = then.times.onTimeline();
    }
    return then;
}

void putTimes(ITWTimeline& engine, const TrimItem& item)
{
    const items::RowItems row = items::rowItems(engine, *item.row);
    row.items.setTimes(item.seq, item.times.onTimeline());
    if (row.kind != RowKind::kEffect) {
        // Read in between, so that the engine takes the two for two changes: else it would draw a start that goes left
        // back to the beginning of the medium, also where it stood ahead of it before.
        row.items.times(item.seq);
        Bool16 ok = kFalse;
        check(engine.SetSourceMediaTimes(row.track, item.seq, item.times.mediaStart, item.times.mediaStop, ok));
    }
    if (item.key) {
        row.transitions.setTimes(item.seq, *item.key);
    }
}

} // namespace editing
