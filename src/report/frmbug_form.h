#pragma once

// The report dialogue: what has happened, what a report holds, and whether to send it.

namespace frmbug {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmbug
