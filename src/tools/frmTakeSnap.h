#pragma once

// A still of the timeline at the main slider, as the movie would show it: a moment is rendered into a file, and a frame
// of that file is shown, in a size of the person's choice, and saved as a bitmap.
//
// Errors are trapped inside. Interface thread only. State: `core/forms/frmTakeSnap.h`.

#include <functional>

namespace frmTakeSnap {

/// What the dialogue's frame of the screens does.
inline std::function<void()> showDialogue;
inline std::function<void()> closeDialogue;

/// Opens the window and comes back when it is closed. What was rendered is gone then, however it was left.
void ShowModal();

void Form_Load();
void Form_Unload();
void cmdBrowse_Click();
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmTakeSnap
