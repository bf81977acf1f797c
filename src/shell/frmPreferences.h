#pragma once

// The dialogue of the preferences: the bars' colours, the folder for new files, and what a save begins with.
//
// State: `forms::frmPreferences`. Each routine traps its errors. Interface thread only.

#include <functional>

namespace frmPreferences {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal();
void Form_Load();
void Form_Unload();

/// Each asks for a colour.
void cmdVideo_Click();
void cmdAudio_Click();
void cmdEffects_Click();
void cmdOverlays_Click();
/// The colours, the folder and the two boxes of the first tab.
void cmdDefault_Click();
void cmdBrowse_Click();

void cboVideoCompressorST_Click();
/// The second tab.
void cmdDefaultSO_Click();

void OnCboVideoSettingClick();
void OnCboAudioSettingClick();
void cboVideoProfile_Click();
void cboAudioProfile_Click();
void cmdVideoProperties_Click();
void cmdAudioProperties_Click();
void cmdVideoDefault_Click();
void cmdAudioDefault_Click();

void cmdOk_Click();
void cmdApply_Click();
void cmdCancel_Click();
/// Help.
void Command1_Click();

} // namespace frmPreferences
