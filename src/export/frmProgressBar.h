#pragma once

// The window of a running save: gives the engine what was chosen, starts it, asks how far it has come, and ends it.
//
//     preparing -> running -> complete -> closed            "&Cancel" stops it, "&Done" closes the window
//                          -> aborted (the disk is full) -> closed
//
// A save that fails on the way never becomes complete: the window says why, and runs on until it is cancelled. What was
// written stays where it is.
//
// State: `forms::frmProgressBar`. Each routine traps its errors. Interface thread only.

#include <functional>
#include <string>

namespace frmProgressBar {

/// Shows the window, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

/// Whether the disk of that path can be used at all; where it keeps silent, the person is told. Asked ahead of anything
/// else that touches the path, which would hang with it.
bool DoesDiskAnswer(const std::string& path);

/// Prepares the save and, when it runs, shows the window. `forms::frmExportTimeline.SaveCancelled` says how it went.
void ShowModal();
/// Whether the save runs.
bool Form_Load();

void tmSave_Timer();
void chkPreviewWhenDone_Click();
void cmdCancel_Click();

} // namespace frmProgressBar
