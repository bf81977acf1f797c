#pragma once

// The widgets of the capture window.

namespace frmCapture {

/// Connects the window to the program; once, at the start.
void connectScreens();

} // namespace frmCapture
