#include "editing/item_moves.h"

#include "core/numbers.h"
#include "core/trap.h"
#include "engine/engine_access.h"
#include "items/row_items.h"

#include <algorithm>
#include <optional>

namespace moduleTimeline {

using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::forEachRow;
using items::ItemKind;
using items::Items;
using items::ItemTimes;
using items::RowItems;

namespace {

constexpr const char* kModule = "moduleTimeline";

Milliseconds leftMoveLength(const Items& items, std::int16_t seq)
{
    const auto item = items.times(seq);
    if (!item) {
        return 0;
    }
    const auto ahead = seq > 0 ? items.times(static_cast<std::int16_t>(seq - 1)) : std::nullopt;
    return item->start - ahead.value_or(ItemTimes{}).stop;
}

Milliseconds leftMoveLength(const char* routine, ItemKind kind, Handle track, std::int16_t seq)
{
    Milliseconds length = 0;
    Trapped(kModule, routine, [&] { length = leftMoveLength(Items(*EngineAs<ITWTimeline>(), kind, track), seq); });
    return length;
}

/// True when the first selected item has moved.
bool shiftSelected(const RowItems& row, Milliseconds delta)
{
    const std::int16_t first = row.items.firstSelected();
    if (first == -1) {
        return false;
    }
    const auto before = row.items.times(first);
    row.shift(first, delta);
    return row.items.times(first) != before;
}

bool resizeItem(const RowItems& row, std::int16_t seq, Milliseconds delta)
{
    constexpr Milliseconds kTooShort = 10;
    const auto item = row.items.times(seq);
    if (!item) {
        return false;
    }
    const ItemTimes resized{item->start, numbers::added(item->stop, delta)};
    if (resized.stop - resized.start <= kTooShort) {
        return false;
    }
    row.setTimes(seq, resized);
    row.shift(seq + 1, delta);
    return true;
}

bool resizeSelected(const RowItems& row, Milliseconds delta)
{
    bool isChanged = false;
    for (std::int16_t seq = row.items.firstSelected(); seq != -1;
         seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
        isChanged |= resizeItem(row, seq, delta);
    }
    return isChanged;
}

} // namespace

Milliseconds GetSourceLeftMoveLength(Handle track, std::int16_t seq)
{
    return leftMoveLength("GetSourceLeftMoveLength", ItemKind::kSource, track, seq);
}

Milliseconds GetEffectLeftMoveLength(Handle track, std::int16_t seq)
{
    return leftMoveLength("GetEffectLeftMoveLength", ItemKind::kEffect, track, seq);
}

Milliseconds GetSelMinLeftMoveLength()
{
    std::optional<Milliseconds> least;
    Trapped(kModule, "GetSelMinLeftMoveLength*", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        forEachRow(*engine, [&](const RowItems& row) {
            const std::int16_t first = row.items.firstSelected();
            if (first != -1) {
                const Milliseconds length = leftMoveLength(row.items, first);
                least = std::min(least.value_or(length), length);
            }
        });
    });
    return least.value_or(0);
}

bool ShiftSelSources(Milliseconds delta)
{
    bool isChanged = false;
    Trapped(kModule, "ShiftSelSources*", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        forEachRow(*engine,
                   [&](const RowItems& row) { isChanged |= delta != 0 && !row.isLocked && shiftSelected(row, delta); });
    });
    return isChanged;
}

bool ResizeSelSources(Milliseconds delta)
{
    bool isChanged = false;
    Trapped(kModule, "ResizeSelSources*", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        forEachRow(*engine, [&](const RowItems& row) { isChanged |= delta != 0 && resizeSelected(row, delta); });
    });
    return isChanged;
}

} // namespace moduleTimeline
