#pragma once

// The widgets of the window that saves a still.

namespace frmTakeSnap {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmTakeSnap
