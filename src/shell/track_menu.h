#pragma once

// The menu entries that change whole tracks: history, routine, newest image, preview and menus.
//
// Nothing is raised to the caller. Interface thread only.

namespace mdiTarnwick {

void mnuToolsPackTimelineBars_Click();
void mnuEditRestoreSize_Click();
void mnuToolsRepeatAudio_Click();
void mnuToolsSplitTimeline_Click();

/// These three refuse with a message while a row that they would empty is locked.
void mnuEditClearEffect_Click();
void mnuEditClearOverlay_Click();
/// Asks first.
void mnuEditClearTimeline_Click();

/// Move the selected sources of the other audio track to the end of Audio 1, or Audio 2.
void mnuEditAddtoAudio1_Click();
void mnuEditAddtoAudio2_Click();

} // namespace mdiTarnwick
