#pragma once

// The widgets of the dialogue for the key colour of an overlay.

namespace frmKeyColor {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmKeyColor
