#pragma once

// The widgets of the dialogue that saves the timeline.

namespace frmExportTimeline {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmExportTimeline
