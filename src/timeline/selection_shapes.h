#pragma once

// The tinted shapes of the selection on the rows. Errors are trapped inside. Interface thread only.

namespace moduleTimeline {

/// Shows the tinted shape on each row that the selection reaches: linked, not locked, not empty.
void ShowOrHideTrackSelections();
/// Places the tinted shapes between the handles, but on locked rows.
void RenderAllSelections();

} // namespace moduleTimeline
