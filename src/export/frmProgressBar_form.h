#pragma once

// The widgets of the window of a running save.

namespace frmProgressBar {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmProgressBar
