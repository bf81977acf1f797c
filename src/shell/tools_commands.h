#pragma once

// The commands of the menus that open a tool over the timeline. While files or a project are being opened, and while
// another edit runs, they are refused without a word. Raise nothing. Interface thread only.

namespace mdiTarnwick {

/// How the selected sources are fitted to the movie.
void mnuEditStretchMode_Click();
/// The colour that the selected overlay loses.
void mnuEditSetOverlayTransparency_Click();
/// A title is written, which may go over the film.
void mnuToolsAddText_Click();
/// The window that records a camera and a microphone.
void mnuToolsCapture_Click();
/// While the mode is on, both ends of a bar trim it. It is off at each start.
void mnuToolsTrimMode_Click();
/// A still of the movie at the main slider.
void mnuToolsTakeSnap_Click();

} // namespace mdiTarnwick
