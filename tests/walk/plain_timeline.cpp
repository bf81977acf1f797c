#include "walk/plain_timeline.h"

#include <algorithm>

namespace walk_test {

int Lane::firstSelected(int from) const
{
    for (int seq = from; seq < count(); ++seq) {
        if (at(seq).selected) {
            return seq;
        }
    }
    return -1;
}

int Lane::holding(std::int64_t time) const
{
    const auto found =
        std::ranges::find_if(items, [&](const Item& item) { return item.start <= time && time <= item.stop; });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

void Lane::insert(int seq, Item item) { items.insert(items.begin() + seq, std::move(item)); }

void Lane::shift(int fromSeq, std::int64_t delta)
{
    if (fromSeq >= count()) {
        return;
    }
    const std::int64_t room = at(fromSeq).start - (fromSeq > 0 ? at(fromSeq - 1).stop : 0);
    delta = std::max(delta, -std::max<std::int64_t>(room, 0));
    for (int seq = fromSeq; seq < count(); ++seq) {
        at(seq).start += delta;
        at(seq).stop += delta;
    }
}

void Lane::makeRoom()
{
    std::int64_t end = 0;
    for (Item& item : items) {
        if (item.start < end) {
            item.stop += end - item.start;
            item.start = end;
        }
        end = item.stop;
    }
}

bool PlainTimeline::isEmpty() const
{
    return std::ranges::all_of(kSourceRows, [&](Row row) { return lane(row).items.empty(); });
}

std::int64_t PlainTimeline::duration() const
{
    std::int64_t end = 0;
    for (const Row row : kSourceRows) {
        end = std::max(end, lane(row).end());
    }
    return end;
}

} // namespace walk_test
