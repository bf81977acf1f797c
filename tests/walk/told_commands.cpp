// The commands over whole tracks, adding, dragging and shuffling.

#include "walk/told_commands.h"

#include <algorithm>

namespace walk_test {

namespace {

/// The first item that does not begin before it.
int placeFor(const Lane& lane, std::int64_t start)
{
    int seq = 0;
    while (seq < lane.count() && lane.at(seq).start < start) {
        ++seq;
    }
    return seq;
}

/// False where it would meet another effect.
bool layEffect(Lane& lane, const Item& effect)
{
    int seq = 0;
    while (seq < lane.count() && lane.at(seq).stop <= effect.start) {
        ++seq;
    }
    if (effect.stop <= effect.start || (seq < lane.count() && effect.stop > lane.at(seq).start)) {
        return false;
    }
    lane.insert(seq, effect);
    return true;
}

/// A plain press: an item that is not selected becomes the only one.
void press(PlainTimeline& timeline, Row row, int seq)
{
    if (timeline.lane(row).at(seq).selected) {
        return;
    }
    for (Lane& lane : timeline.lanes) {
        for (Item& item : lane.items) {
            item.selected = false;
        }
    }
    timeline.lane(row).at(seq).selected = true;
}

bool isThere(const PlainTimeline& timeline, Row row, int seq) { return seq >= 0 && seq < timeline.lane(row).count(); }

/// The least room to the left of the first selected items, locked rows too.
std::int64_t roomToTheLeft(const PlainTimeline& timeline)
{
    std::optional<std::int64_t> least;
    for (const Lane& lane : timeline.lanes) {
        if (const int seq = lane.firstSelected(); seq != -1) {
            const std::int64_t room = lane.at(seq).start - (seq > 0 ? lane.at(seq - 1).stop : 0);
            least = std::min(least.value_or(room), room);
        }
    }
    return least.value_or(0);
}

/// A source of media without length keeps that of the timeline.
std::int64_t naturalLength(Row row, const Item& item)
{
    return row == kEffects || item.mediaLength() <= 0 ? item.length() : item.mediaLength();
}

bool isAudio(Row row) { return row == kAudio1 || row == kAudio2; }

} // namespace

Outcome pack(PlainTimeline& timeline)
{
    for (Lane& lane : timeline.lanes) {
        std::int64_t end = 0;
        for (Item& item : lane.items) {
            if (!lane.locked) {
                item.stop += end - item.start;
                item.start = end;
                end = item.stop;
            }
        }
    }
    return Outcome::kDone;
}

Outcome restoreSize(PlainTimeline& timeline)
{
    for (const Row row : kSourceRows) {
        Lane& lane = timeline.lane(row);
        for (int seq = lane.firstSelected(); seq != -1; seq = lane.firstSelected(seq + 1)) {
            lane.at(seq).stop = lane.at(seq).start + naturalLength(row, lane.at(seq));
            lane.makeRoom();
        }
    }
    return Outcome::kDone;
}

Outcome repeatAudio(PlainTimeline& timeline)
{
    const std::int64_t videoEnd = timeline.lane(kVideo).end();
    const bool isFirst = timeline.lane(kAudio1).firstSelected() != -1;
    Lane& lane = timeline.lane(isFirst ? kAudio1 : kAudio2);
    if (timeline.lane(kVideo).items.empty() || lane.firstSelected() == -1) {
        return Outcome::kEntryOnly;
    }
    Outcome outcome = Outcome::kEntryOnly;
    while (lane.end() < videoEnd && lane.items.back().mediaLength() > 0) {
        Item next = lane.items.back();
        const std::int64_t remaining = videoEnd - next.stop;
        next.start = next.stop;
        if (remaining >= next.mediaLength()) {
            next.stop = next.start + next.mediaLength();
        } else {
            next.stop = videoEnd;
            next.mediaStop = remaining; // counted from 0, which is meant
        }
        lane.items.push_back(next);
        outcome = Outcome::kDone;
    }
    return outcome;
}

Outcome clearAll(PlainTimeline& timeline)
{
    if (std::ranges::any_of(timeline.lanes, &Lane::locked)) {
        return Outcome::kNothing;
    }
    for (Lane& lane : timeline.lanes) {
        lane.items.clear();
    }
    return Outcome::kDone;
}

Outcome clearRow(PlainTimeline& timeline, Row row)
{
    if (timeline.lane(row).locked) {
        return Outcome::kNothing;
    }
    timeline.lane(row).items.clear();
    return Outcome::kDone;
}

Outcome add(PlainTimeline& timeline, const Media& media)
{
    const std::int64_t start = timeline.duration();
    const Item item{start, start + media.length, 0, media.length, media.name};
    if (media.hasPicture) {
        timeline.lane(kVideo).items.push_back(item);
    }
    if (media.hasSound) {
        timeline.lane(kAudio1).items.push_back(item);
    }
    return Outcome::kDone;
}

Outcome addOverlay(PlainTimeline& timeline, const Media& media)
{
    if (timeline.lane(kVideo).items.empty() || !media.hasPicture) {
        return Outcome::kNothing;
    }
    Lane& lane = timeline.lane(kOverlay);
    lane.items.push_back({lane.end(), lane.end() + media.length, 0, media.length, media.name});
    return Outcome::kDone;
}

Outcome addEffect(PlainTimeline& timeline, const std::string& name)
{
    constexpr std::int64_t kDefaultLength = 2000;
    Lane& lane = timeline.lane(kEffects);
    const std::int64_t videoEnd = timeline.lane(kVideo).end();
    if (lane.locked || timeline.lane(kVideo).items.empty() || lane.end() == videoEnd) {
        return Outcome::kNothing;
    }
    Item effect{timeline.slider, 0, 0, 0, name};
    if (timeline.range) {
        effect.start = timeline.range->start;
        effect.stop = timeline.range->stop;
    } else {
        effect.stop = std::min(effect.start + kDefaultLength, videoEnd);
        for (const Item& other : lane.items) {
            if (other.stop > effect.start) {
                effect.stop = std::min(effect.stop, other.start);
            }
        }
    }
    return layEffect(lane, effect) ? Outcome::kDone : Outcome::kNothing;
}

Outcome drag(PlainTimeline& timeline, Row row, int seq, std::int64_t by)
{
    if (!isThere(timeline, row, seq)) {
        return Outcome::kNothing;
    }
    press(timeline, row, seq);
    if (timeline.lane(row).locked) {
        return Outcome::kNothing;
    }
    nudge(timeline, std::max(by, -roomToTheLeft(timeline)));
    return Outcome::kIfChanged;
}

Outcome resize(PlainTimeline& timeline, Row row, int seq, std::int64_t by)
{
    constexpr std::int64_t kTooShort = 10;
    if (!isThere(timeline, row, seq)) {
        return Outcome::kNothing;
    }
    press(timeline, row, seq);
    if (timeline.lane(row).locked) {
        return Outcome::kNothing;
    }
    for (Lane& lane : timeline.lanes) { // locked ones too
        for (int item = lane.firstSelected(); item != -1; item = lane.firstSelected(item + 1)) {
            if (lane.at(item).length() + by > kTooShort) {
                lane.at(item).stop += by;
                lane.shift(item + 1, by);
            }
        }
    }
    return Outcome::kIfChanged;
}

Outcome nudge(PlainTimeline& timeline, std::int64_t by)
{
    for (Lane& lane : timeline.lanes) {
        if (const int seq = lane.firstSelected(); seq != -1 && !lane.locked) {
            lane.shift(seq, by);
        }
    }
    return Outcome::kNothing;
}

Outcome shuffle(PlainTimeline& timeline, Row row, int from, int onto)
{
    Lane& lane = timeline.lane(row);
    if (lane.locked || !isThere(timeline, row, from - 1) || !isThere(timeline, row, onto - 1)) {
        return Outcome::kNothing;
    }
    Item item = lane.at(from - 1);
    lane.items.erase(lane.items.begin() + from - 1);
    const int place = onto > from ? onto - 1 : onto; // counted without it
    const std::int64_t length = naturalLength(row, item);
    item.start = place == from && onto == from ? item.start : lane.at(place - 1).start;
    item.stop = item.start + length;
    lane.insert(place - 1, item);
    if (place == 1 && onto != from) {
        for (int seq = 1; seq < lane.count(); ++seq) {
            lane.at(seq).start += length;
            lane.at(seq).stop += length;
        }
    }
    lane.makeRoom();
    return Outcome::kDone;
}

Outcome changeTrack(PlainTimeline& timeline, Row fromRow, int from, Row toRow, int place)
{
    if (fromRow == toRow) {
        return shuffle(timeline, fromRow, from, place);
    }
    Lane& source = timeline.lane(fromRow);
    Lane& target = timeline.lane(toRow);
    if (!isAudio(fromRow) || !isAudio(toRow) || source.locked || target.locked || place < 1
        || !isThere(timeline, fromRow, from - 1)) {
        return Outcome::kNothing;
    }
    Item item = source.at(from - 1);
    source.items.erase(source.items.begin() + from - 1);
    const int seq = std::min(place - 1, target.count());
    const std::int64_t length = item.length();
    item.start = seq > 0 ? target.at(seq - 1).stop : 0;
    item.stop = item.start + length;
    target.insert(seq, item);
    target.shift(seq + 1, std::max<std::int64_t>(item.mediaLength(), 0));
    target.makeRoom();
    return Outcome::kDone;
}

Outcome put(PlainTimeline& timeline, Row row, const Item& item)
{
    Lane& lane = timeline.lane(row);
    lane.insert(placeFor(lane, item.start), item);
    lane.makeRoom();
    return Outcome::kNothing;
}

Outcome putEffect(PlainTimeline& timeline, const Item& item)
{
    layEffect(timeline.lane(kEffects), item);
    return Outcome::kNothing;
}

} // namespace walk_test
