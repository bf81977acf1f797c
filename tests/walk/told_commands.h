#pragma once

// What each command must leave on the timeline, by its definition alone: a second telling of the commands over plain
// lists, in as few words as they allow.

#include "walk/plain_timeline.h"

namespace walk_test {

enum class Edit : std::uint8_t { kCut, kCopy, kDelete, kCrop, kCropSources };

enum class Outcome : std::uint8_t {
    kNothing,   // no command at all
    kDone,      // it counts, whether or not it has changed anything
    kIfChanged, // it counts when it has changed something
    kEntryOnly, // its entry of the history was made, but does not count
    kTakenBack  // it failed on the way, and everything was put back
};

Outcome edit(PlainTimeline& timeline, Edit edit);
Outcome paste(PlainTimeline& timeline);

Outcome pack(PlainTimeline& timeline);
Outcome restoreSize(PlainTimeline& timeline);
Outcome repeatAudio(PlainTimeline& timeline);
Outcome split(PlainTimeline& timeline);
Outcome clearAll(PlainTimeline& timeline);
Outcome clearRow(PlainTimeline& timeline, Row row);

Outcome add(PlainTimeline& timeline, const Media& media);
Outcome addOverlay(PlainTimeline& timeline, const Media& media);
Outcome addEffect(PlainTimeline& timeline, const std::string& name);

Outcome drag(PlainTimeline& timeline, Row row, int seq, std::int64_t by);
Outcome resize(PlainTimeline& timeline, Row row, int seq, std::int64_t by);
Outcome nudge(PlainTimeline& timeline, std::int64_t by);
/// Places count from 1.
Outcome shuffle(PlainTimeline& timeline, Row row, int from, int onto);
Outcome changeTrack(PlainTimeline& timeline, Row fromRow, int from, Row toRow, int place);

/// Without history.
Outcome put(PlainTimeline& timeline, Row row, const Item& item);
Outcome putEffect(PlainTimeline& timeline, const Item& item);

} // namespace walk_test
