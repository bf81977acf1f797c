#include "editing/row_cuts.h"

#include "items/item_edit.h"

namespace editing {

using engine::ITWTimeline;
using engine::Milliseconds;
using items::ItemTimes;
using items::RowItems;
using items::RowKind;

namespace {

constexpr std::size_t kNameBytes = 260;

bool cutSource(ITWTimeline& engine, const RowItems& row, std::int16_t seq, Milliseconds pos)
{
    const items::SourceTimes whole = items::readTimes({engine, row.track, seq}).value_or(items::SourceTimes{});
    items::SourceTimes left = whole;
    items::SourceTimes right = whole;
    left.stop = right.start = pos;
    if (whole.hasRate()) {
        left.mediaStop = right.mediaStart = whole.mediaAt(pos);
    }
    return items::SourceEdit(row.track, seq, kNameBytes).split(left, right);
}

} // namespace

bool followsEdits(ITWTimeline& engine, const items::TrackRow& row)
{
    return !row.isLocked() && items::isLinked(engine, row);
}

void cutRow(const RowItems& row, ITWTimeline& engine, Milliseconds pos)
{
    const std::int16_t seq = row.items.at(pos);
    const auto item = row.items.times(seq);
    if (!item || pos <= item->start || item->stop <= pos) {
        return;
    }
    const bool isCut = row.kind == RowKind::kEffect
                           ? items::EffectEdit(row.track, seq, kNameBytes).split({item->start, pos}, {pos, item->stop})
                           : cutSource(engine, row, seq, pos);
    if (!isCut) {
        throw engine::RuntimeError(engine::error_number::kInvalidCall, "There is no room for another item.");
    }
}

std::int16_t firstFrom(const RowItems& row, Milliseconds pos)
{
    std::int16_t seq = 0;
    for (auto item = row.items.times(seq); item && item->start < pos; item = row.items.times(seq)) {
        ++seq;
    }
    return seq;
}

} // namespace editing
