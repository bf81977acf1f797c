#pragma once

// The start and the end of the program without screens. The ports are set. Interface thread only.

namespace app {

/// Everything at its start values, the engine made, all panels loaded, the timeline at one millisecond a pixel. Raises
/// std::runtime_error when the program does not start.
void startEditing();
/// Unloads what holds threads, and lets the engine go.
void endEditing();

} // namespace app
