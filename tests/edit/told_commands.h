#pragma once

// What each command must leave on the timeline, by its definition alone: a second telling of the commands over plain
// lists, in as few words as they allow.

#include "edit/plain_timeline.h"

namespace edit_test {

enum class Edit : std::uint8_t { kCut, kCopy, kDelete, kCrop, kCropSources };

/// Whether the command was carried through. One that fails on the way puts everything back, or leaves what it has done.
enum class Outcome : std::uint8_t { kNothing, kDone, kTakenBack };

Outcome edit(PlainTimeline& timeline, Edit edit);
Outcome paste(PlainTimeline& timeline);

Outcome pack(PlainTimeline& timeline);
Outcome restoreSize(PlainTimeline& timeline);
/// kNothing: there was nothing to repeat, but the entry of the history was made.
Outcome repeatAudio(PlainTimeline& timeline);
Outcome split(PlainTimeline& timeline);
Outcome clearAll(PlainTimeline& timeline);
Outcome clearRow(PlainTimeline& timeline, Row row);

Outcome add(PlainTimeline& timeline, const Media& media);
Outcome addOverlay(PlainTimeline& timeline, const Media& media);
Outcome addEffect(PlainTimeline& timeline, const std::string& name);

Outcome drag(PlainTimeline& timeline, Row row, int seq, std::int64_t by);
Outcome resize(PlainTimeline& timeline, Row row, int seq, std::int64_t by);
void nudge(PlainTimeline& timeline, std::int64_t by);
/// Places count from 1.
Outcome shuffle(PlainTimeline& timeline, Row row, int from, int onto);
Outcome changeTrack(PlainTimeline& timeline, Row fromRow, int from, Row toRow, int place);

/// Without history.
void put(PlainTimeline& timeline, Row row, const Item& item);
void putEffect(PlainTimeline& timeline, const Item& item);

} // namespace edit_test
