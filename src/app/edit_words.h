#pragma once

// The language of scripts: one command a line, its words apart by blanks; "#" begins a comment.
//
// Positions are milliseconds. Tracks are `video`, `audio1`, `audio2`, `overlay` and `effects`. Interface thread only.

#include "app/edit_session.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace app {

/// Runs one line; what it prints goes to `printed`. Raises `WrongWords` for a line that cannot be meant; then nothing
/// has changed.
void runLine(EditSession& session, std::string_view line, std::ostream& printed);

/// Runs all lines of a script, or until `interrupted` is set. Raises `WrongWords` with the number of the line
/// that is wrong, from 1, and the cause.
void runScript(EditSession& session, std::istream& script, std::ostream& printed, const volatile int& interrupted);

/// All words with what they take and do, a line each.
std::string wordsHelp();

} // namespace app
