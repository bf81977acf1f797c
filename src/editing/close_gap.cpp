#include "editing/close_gap.h"

#include "core/numbers.h"
#include "editing/bare_tracks.h"
#include "editing/row_cuts.h"
#include "editing/selection_edges.h"
#include "editing/sound_mates.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <vector>

namespace editing {

using engine::EngineAs;
using engine::ITWTimeline;
using engine::Milliseconds;
using history::Outcome;
using items::ItemTimes;
using items::RowItems;

namespace {

bool isGoing(const PlacedSource& source) { return !source.row.isLocked && source.row.items.isSelected(source.seq); }

bool remove(const RowItems& row, std::int16_t seq)
{
    return row.isOverlay() ? items::removeOverlay(seq) : row.items.remove(seq);
}

/// A selected item, and how far what follows it comes up.
struct Going {
    RowItems row;
    std::int16_t seq;
    Milliseconds length;
};

/// Sound is often a little longer than its picture, which has nothing behind it for so long. Where both go, the picture
/// counts as long as its sound, or what follows on the two rows would not be level any more.
Milliseconds lengthWithMates(const PlacedSource& source, const std::vector<PlacedSource>& others)
{
    constexpr std::int64_t kTail = 100; // ms
    const auto next = source.row.items.times(static_cast<std::int16_t>(source.seq + 1));
    std::int64_t stop = source.times.stop;
    for (const PlacedSource& other : others) {
        const bool isTail =
            other.times.start == source.times.start && other.times.stop - std::int64_t{source.times.stop} <= kTail;
        if (isTail && isGoing(other) && belongTogether(source, other)) {
            stop = std::max(stop, std::int64_t{other.times.stop});
        }
    }
    return static_cast<Milliseconds>((next ? std::min(stop, std::int64_t{next->start}) : stop) - source.times.start);
}

std::vector<Going> allGoing(ITWTimeline& engine)
{
    std::vector<Going> going;
    const std::vector<PlacedSource> sources = placedSources(engine);
    for (const PlacedSource& source : sources) {
        if (isGoing(source)) {
            going.push_back({source.row, source.seq, lengthWithMates(source, sources)});
        }
    }
    items::forEachRow(engine, [&](const RowItems& row) {
        const bool isOpen = row.kind == items::RowKind::kEffect && !row.isLocked;
        for (std::int16_t seq = isOpen ? row.items.firstSelected() : std::int16_t{-1}; seq != -1;
             seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
            const ItemTimes times = row.items.times(seq).value_or(ItemTimes{});
            going.push_back({row, seq, times.stop - times.start});
        }
    });
    return going;
}

/// Each row for itself. True when something went.
bool closeOwnGaps(ITWTimeline& engine)
{
    bool isChanged = false;
    const std::vector<Going> going = allGoing(engine);
    for (auto item = going.rbegin(); item != going.rend(); ++item) { // the last of a row first: numbers hold
        if (remove(item->row, item->seq)) {
            item->row.shift(item->seq, -item->length);
            isChanged = true;
        }
    }
    return isChanged;
}

/// True when something went, or moved.
bool cutOut(ITWTimeline& engine, const RowItems& row, const SelectionEdges& range)
{
    cutRow(row, engine, range.start);
    cutRow(row, engine, range.stop);
    const std::int16_t first = firstFrom(row, range.start);
    bool isChanged = false;
    for (auto item = row.items.times(first); item && item->stop <= range.stop; item = row.items.times(first)) {
        if (!remove(row, first)) {
            break;
        }
        isChanged = true;
    }
    if (first < row.items.count()) {
        row.shift(first, numbers::subtracted(range.start, range.stop));
        isChanged = true;
    }
    return isChanged;
}

bool cutOutRange(ITWTimeline& engine)
{
    const SelectionEdges range = selectionEdges();
    bool isChanged = false;
    for (const items::TrackRow& row : items::rows()) {
        if (items::isMade(row) && range.start < range.stop && followsEdits(engine, row)) {
            isChanged |= cutOut(engine, items::rowItems(engine, row), range);
        }
    }
    moduleTimeline::ShowSelSliders(false);
    return isChanged;
}

} // namespace

Outcome deleteAndCloseGap()
{
    const auto engine = EngineAs<ITWTimeline>();
    bool isChanged = false;
    if (timeline::isSelectionShown()) {
        isChanged = cutOutRange(*engine);
    } else {
        isChanged = closeOwnGaps(*engine);
    }
    if (isChanged) {
        moduleTimeline::EmptyEffectsOfBareTracks();
    }
    return isChanged ? Outcome::kChanged : Outcome::kNothing;
}

} // namespace editing
