#pragma once

// The dialogue that saves the timeline as a movie: which tracks, which format, which file.
//
// All of the compression stands in the engine, set anew from the settings at each opening. The profile list stands as
// long as the dialogue. An old file is lost only where the person agreed to it: see `kept_file.h`.
//
// State: `forms::frmExportTimeline`. Each routine traps its errors. Interface thread only.

#include <functional>
#include <string>

namespace frmExportTimeline {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal();
void Form_Load();
void Form_Unload();

/// Settings go to the engine, whose own are forgotten first.
void LoadSettingsFromRegistry();
void FillSaveStreamList();
/// Whether a chosen row has pictures.
bool IsVideoApplicable();
void EnableOK();
void SetSaveCancelled(bool isCancelled);
void SetPreviewWhenDone(bool isWanted);

/// The chosen rows have changed.
void lstSaveStreams_Click();
void optAVI_Click();
void optWMF_Click();
void txtSaveFileName_Change();
void cmdBrowse_Click();
void cmdAdvanced_Click();
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

/// The movie's path: what is typed, without blanks around it; what is no whole path begins in the working folder.
std::string SaveFileName();

} // namespace frmExportTimeline
