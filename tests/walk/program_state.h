#pragma once

// The program's state in the plain words of the models.

#include "app/edit_dump.h"
#include "walk/plain_timeline.h"

namespace walk_test {

PlainTimeline plainNow(const app::LaidTimeline& laid, const app::EditSession& session);

/// The history, as `HistoryModel::text` has it.
std::string historyNow();

/// Whether the transitions on the clipboard follow each other like their overlays. Gaps may differ, which is meant.
bool areKeysClippedAlike();

} // namespace walk_test
