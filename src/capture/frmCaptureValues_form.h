#pragma once

// The widgets of the dialogue of a capture's file and end.

namespace frmCaptureValues {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmCaptureValues
