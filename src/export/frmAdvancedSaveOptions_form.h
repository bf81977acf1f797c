#pragma once

// The widgets of the dialogue of advanced save options.

namespace frmAdvancedSaveOptions {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmAdvancedSaveOptions
