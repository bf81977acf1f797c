#pragma once

// The dialogue of capture options: the devices, the format with its compressors or its profile, and how stills are
// kept. It stands over the capture window, whose picture goes on but for the moment in which the options are applied.
//
// What the devices or the compressors refuse changes nothing: the window goes on as before, and the dialogue stays.
//
// State: `forms::frmCaptureOptions`. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <functional>

namespace frmCaptureOptions {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal();
void Form_Load();

/// 0 AVI, 1 ASF: which of the controls count.
void SelectedOption(std::int16_t asf);
void optAVI_Click();
void optASF_Click();
void cboSetting_Click();
void cboProfile_Click();
void cmdCustomProfile_Click();
void cmdDefaultSO_Click();

// --- Stills --------------------------------------------------------------------------------------------------------

void LoadTakeSnapOptions();
void SaveTakeSnapOptions();
void optSaveSnapCapDim_Click();
void optSaveSnapOthDim_Click();
void cmdSnapFolderBrowse_Click();

void cmdOK_Click();
void cmdApply_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmCaptureOptions
