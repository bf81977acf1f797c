#pragma once

// The edit commands of the main window, each with its entry of the history. On an empty timeline all but the paste only
// update the menus. Nothing is raised to the caller. Interface thread only.

namespace mdiTarnwick {

void mnuEditCut_Click();
void mnuEditCopy_Click();
void mnuEditPaste_Click();
void mnuEditClear_Click();
void mnuEditCrop_Click();
void mnuEditCropSources_Click();

// These say in the status bar when there was nothing to do.
void mnuEditTrimStart_Click();
void mnuEditTrimEnd_Click();
void mnuEditCloseGap_Click();
void mnuEditSelectWithSound_Click();

} // namespace mdiTarnwick
