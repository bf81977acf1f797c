#pragma once

// The widgets of the dialogue of the preferences.

namespace frmPreferences {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmPreferences
