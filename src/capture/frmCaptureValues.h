#pragma once

// The dialogue that asks for the file of a capture and when it is to end. Ahead of a capture its button says "Start",
// and a cancel stops the capture from beginning. The ways to end are taken over as they are chosen.
//
// State: `forms::frmCaptureValues`. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <functional>
#include <string>

namespace frmCaptureValues {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal(const std::string& title, const std::string& okCaption);
void Form_Load();

void chkShowWindow_Click();
void optManualStop_Click();
void optDurationStop_Click();
/// Whether the duration's box takes a key of that code.
bool txtDuration_KeyPress(std::int32_t code);
void cmdBrowse_Click();
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmCaptureValues
