#pragma once

// The command that gives an overlay another key colour. Interface thread only.

namespace moduleTimeline {

/// Opens the dialogue for the first selected overlay; nothing without one. Raises nothing.
void OnEditSetOverlayTransparencyClick();

} // namespace moduleTimeline
