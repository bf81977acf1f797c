#pragma once

// The widgets of the dialogue for the stretch mode.

namespace frmStretchMode {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmStretchMode
