#pragma once

// What holds after every command, whatever it was. Each answers what is wrong, empty when nothing is.

#include "app/edit_dump.h"
#include "walk/plain_timeline.h"

namespace walk_test {

/// Items begin at 0 or later, are some time long, lie in their order and do not overlap; an overlay for each
/// transition.
std::string wrongInOrder(const app::LaidTimeline& timeline);
/// Every overlay has its transition from its start to its stop.
std::string wrongInKeys(const app::LaidTimeline& timeline);
/// Gives every source with a picture a stretch mode, and every overlay a key, that belong to its file alone.
void markSources(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media);
/// A source has lost its stretch mode, or an overlay its key.
std::string wrongInMarks(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media);
/// The list beside the timeline shows what lies there.
std::string wrongInList(const app::LaidTimeline& timeline);
/// The engine's links are those of the boxes.
std::string wrongInLinks();
/// The program has met an error that no command is told to meet.
std::string wrongInErrors(const std::vector<std::string>& errors);

/// What lies there against what a command must leave.
std::string wrongInItems(const PlainTimeline& timeline, const PlainTimeline& told);
/// The pieces on the clipboard against what a command must leave there; gaps between them do not count.
std::string wrongInClipboard(const PlainTimeline& timeline, const PlainTimeline& told);

} // namespace walk_test
