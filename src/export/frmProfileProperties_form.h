#pragma once

// The widgets of the dialogue of a profile's properties.

namespace frmProfileProperties {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmProfileProperties
