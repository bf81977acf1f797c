// Cut, copy, delete, crop and paste.

#include "walk/told_commands.h"

#include <algorithm>
#include <cmath>

namespace walk_test {

namespace {

std::int64_t rounded(double value) { return static_cast<std::int64_t>(std::nearbyint(value)); }

bool isSource(Row row) { return row != kEffects; }

/// Nothing can be worked out for such a one: it stays as it is.
bool hasNoRate(Row row, const Item& item) { return isSource(row) && item.mediaLength() <= 0; }

/// Which of its media lies under the selection's start, and under its stop; rounding tells the two apart.
std::int64_t mediaAtStart(const Item& item, const Range& range)
{
    return rounded(static_cast<double>(range.start - item.start) / item.rate() + static_cast<double>(item.mediaStart));
}
std::int64_t mediaAtStop(const Item& item, const Range& range)
{
    return rounded(static_cast<double>(item.mediaStop) - static_cast<double>(item.stop - range.stop) / item.rate());
}

Item within(Row row, const Item& item, const Range& range)
{
    Item part = item;
    if (item.start < range.start) {
        part.start = range.start;
        part.mediaStart = isSource(row) ? mediaAtStart(item, range) : 0;
    }
    if (item.stop > range.stop) {
        part.stop = range.stop;
        part.mediaStop = isSource(row) ? mediaAtStop(item, range) : 0;
    }
    return part;
}

Item ahead(Row row, const Item& item, const Range& range)
{
    Item part = item;
    part.stop = range.start;
    part.mediaStop = isSource(row) ? mediaAtStart(item, range) : 0;
    return part;
}

Item behind(Row row, const Item& item, const Range& range)
{
    Item part = item;
    part.start = range.stop;
    part.mediaStart = isSource(row) ? mediaAtStop(item, range) : 0;
    return part;
}

// --- Over the range ------------------------------------------------------------------------------------------------

bool meets(const Item& item, const Range& range) { return item.stop > range.start && item.start < range.stop; }

/// A delete draws what lies behind the selection out to its end, as far as the item ahead, and media 0, let it.
Item drawnOut(const Item& item, const Range& range, std::int64_t endAhead)
{
    Item drawn = item;
    const double zero = static_cast<double>(item.stop) - static_cast<double>(item.mediaStop) * item.rate();
    const auto least = std::max({range.stop, endAhead, static_cast<std::int64_t>(std::ceil(zero))});
    drawn.start = std::min(item.start, least);
    drawn.mediaStart =
        rounded(static_cast<double>(item.mediaStop) - static_cast<double>(item.stop - drawn.start) / item.rate());
    drawn.slack = 2 + static_cast<int>(std::ceil(std::max(item.rate(), 2 / item.rate())));
    return drawn;
}

void takeOut(Lane& lane, Row row, const Range& range, bool drawsOut)
{
    Lane left{{}, lane.locked, lane.linked};
    bool isOver = false; // the selection lay inside one item
    for (const Item& item : lane.items) {
        if (!isOver && drawsOut && item.start > range.stop && !hasNoRate(row, item)) {
            left.items.push_back(drawnOut(item, range, left.end()));
            continue;
        }
        if (isOver || !meets(item, range) || hasNoRate(row, item)) {
            left.items.push_back(item);
        } else {
            if (item.start < range.start) {
                left.items.push_back(ahead(row, item, range));
            }
            if (item.stop > range.stop) {
                left.items.push_back(behind(row, item, range));
            }
        }
        isOver = isOver || (range.start > item.start && range.stop < item.stop);
    }
    lane = left;
}

void dropOutside(Lane& lane, Row row, const Range& range)
{
    // What shares an edge with the selection stays on Video and Audio, and goes on the other two.
    const std::int64_t margin = row == kOverlay || row == kEffects ? 1 : 0;
    std::erase_if(lane.items, [&](const Item& item) {
        const auto holds = [&](std::int64_t edge) { return item.start < edge && edge < item.stop; };
        const bool isWithin = item.start >= range.start + margin && item.stop <= range.stop - margin;
        return !holds(range.start) && !holds(range.stop) && !isWithin;
    });
}

void cropTo(Lane& lane, Row row, const Range& range)
{
    for (Item& item : lane.items) {
        if (meets(item, range) && !hasNoRate(row, item)) {
            item = within(row, item, range);
        }
    }
}

/// Without the gaps between them.
std::vector<Clip> clipsOf(const Lane& lane, Row row, const Range& range)
{
    std::vector<Clip> clips;
    for (const Item& item : lane.items) {
        if (meets(item, range) && !hasNoRate(row, item)) {
            clips.push_back({within(row, item, range)});
        }
    }
    return clips;
}

void editRange(PlainTimeline& timeline, Edit edit, const Range& range)
{
    for (const Row row : kRows) {
        Lane& lane = timeline.lane(row);
        if (!lane.linked || lane.locked) {
            continue;
        }
        if (edit == Edit::kCut || edit == Edit::kCopy) {
            timeline.clipboard[row] = clipsOf(lane, row, range);
        }
        if (edit == Edit::kCopy) {
            continue;
        }
        if (edit == Edit::kCut || edit == Edit::kDelete) {
            takeOut(lane, row, range, edit == Edit::kDelete && row != kOverlay && row != kEffects);
            continue;
        }
        if (edit == Edit::kCrop) {
            dropOutside(lane, row, range);
        }
        cropTo(lane, row, range);
    }
    timeline.range.reset();
}

// --- Over whole items ----------------------------------------------------------------------------------------------

void editItems(PlainTimeline& timeline, Edit edit)
{
    for (const Row row : kRows) {
        Lane& lane = timeline.lane(row);
        const bool isCrop = edit == Edit::kCrop || edit == Edit::kCropSources;
        for (const Item& item : lane.items) {
            if (item.selected && !lane.locked && (edit == Edit::kCut || edit == Edit::kCopy)) {
                timeline.clipboard[row].push_back({item});
            }
        }
        if (!lane.locked && edit != Edit::kCopy && !(isCrop && lane.firstSelected() == -1)) {
            std::erase_if(lane.items, [&](const Item& item) { return item.selected != isCrop; });
        }
    }
}

// --- Paste ---------------------------------------------------------------------------------------------------------

void closeGap(Lane& lane, std::int64_t position)
{
    for (int seq = 0; seq + 1 < lane.count(); ++seq) {
        if (lane.at(seq).stop == position) {
            lane.shift(seq + 1, position - lane.at(seq + 1).start);
            return;
        }
    }
}

void pasteBefore(Lane& lane, const std::vector<Clip>& clips, int seq, std::int64_t position)
{
    std::int64_t pendingGap = 0;
    for (auto clip = clips.rbegin(); clip != clips.rend(); ++clip) {
        const std::int64_t length = clip->piece.length();
        if (!clip->isGap) {
            Item piece = clip->piece;
            piece.start = position;
            piece.stop = position + length;
            lane.insert(seq, piece);
            lane.shift(seq + 1, length + pendingGap);
            pendingGap = 0;
        } else if (lane.count() > 0) {
            pendingGap = length;
            if (clip->seq == 0) {
                lane.shift(seq, pendingGap);
            }
        }
    }
    lane.makeRoom();
}

/// In two at a time inside. The media are divided by the rate as a whole, which is meant.
void splitItem(Lane& lane, Row row, int seq, std::int64_t position)
{
    const Item whole = lane.at(seq);
    Item right = whole;
    lane.at(seq).stop = position;
    right.start = position;
    if (isSource(row)) {
        const double rate = whole.rate();
        right.mediaStart = rounded(static_cast<double>(whole.mediaStop - (whole.stop - position)) / rate);
        lane.at(seq).mediaStop = rounded(static_cast<double>(position - whole.start + whole.mediaStart) / rate);
    }
    lane.insert(seq + 1, right);
}

/// False when it fails on the way.
bool pasteOn(PlainTimeline& timeline, Row row, std::int64_t position, bool overRange)
{
    Lane& lane = timeline.lane(row);
    const std::vector<Clip>& clips = timeline.clipboard[row];
    if (lane.items.empty()) { // locked or not
        pasteBefore(lane, clips, 0, position);
        return true;
    }
    if (lane.locked) {
        return true;
    }
    if (overRange) {
        closeGap(lane, position);
    }
    int seq = 0;
    while (seq + 1 < lane.count() && position >= lane.at(seq + 1).start) {
        ++seq;
    }
    const Item item = lane.at(seq);
    if (item.start < position && position < item.stop) {
        if (clips.empty()) {
            return true;
        }
        if (hasNoRate(row, item)) {
            return false;
        }
        splitItem(lane, row, seq, position);
    }
    pasteBefore(lane, clips, position <= item.start ? seq : seq + 1, position);
    return true;
}

} // namespace

Outcome edit(PlainTimeline& timeline, Edit edit)
{
    if (timeline.isEmpty()) {
        return Outcome::kNothing;
    }
    if (edit == Edit::kCut || edit == Edit::kCopy) {
        timeline.clipboard = {};
    }
    if (timeline.range) {
        editRange(timeline, edit, *timeline.range);
    } else {
        editItems(timeline, edit);
    }
    if (edit != Edit::kCopy && timeline.lane(kVideo).items.empty()) {
        timeline.lane(kEffects).items.clear();
    }
    return Outcome::kDone;
}

Outcome paste(PlainTimeline& timeline)
{
    const auto range = timeline.range;
    if (range) {
        editRange(timeline, Edit::kDelete, *range);
    }
    const std::int64_t position = range ? range->start : timeline.slider;
    for (const Row row : {kVideo, kAudio1, kAudio2}) {
        if (!pasteOn(timeline, row, position, range.has_value())) {
            break;
        }
    }
    pasteOn(timeline, kEffects, position, range.has_value());
    pasteOn(timeline, kOverlay, position, range.has_value());
    return Outcome::kDone;
}

Outcome split(PlainTimeline& timeline)
{
    const PlainTimeline before = timeline;
    for (const Row row : kRows) {
        Lane& lane = timeline.lane(row);
        const int seq = lane.locked ? -1 : lane.holding(timeline.slider);
        if (seq == -1) {
            continue;
        }
        const std::int64_t least = isSource(row) ? 11 : 1;
        if (lane.at(seq).stop - timeline.slider < least || timeline.slider - lane.at(seq).start < least) {
            continue;
        }
        if (hasNoRate(row, lane.at(seq))) {
            timeline = before;
            return Outcome::kTakenBack;
        }
        splitItem(lane, row, seq, timeline.slider);
    }
    return Outcome::kDone;
}

} // namespace walk_test
