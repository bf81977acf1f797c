#pragma once

// The widgets of the dialogue of capture options.

namespace frmCaptureOptions {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmCaptureOptions
