#pragma once

// What holds after every command, whatever it was.

#include "app/edit_dump.h"

namespace walk_test {

/// Every overlay has its transition from its start to its stop.
bool areKeysInStep(const app::LaidTimeline& timeline);
/// Gives every source with a picture and without a stretch mode one of its file's, and an overlay a key.
void markSources(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media);
/// What is wrong: items that begin ahead of 0, are no time long, out of order or on each other; an overlay without a
/// transition; a list beside the timeline that shows something else; a link that is not that of its box; an error that
/// no command is meant to meet.
std::string wrongInAny(const app::LaidTimeline& timeline);

} // namespace walk_test
