#pragma once

// The widgets of the window in which a title is written.

namespace frmAddText {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmAddText
