#pragma once

// The dialogue of advanced save options: compressors and their numbers, the size, a profile, the movie's descriptive
// texts.
//
// What is chosen goes to the engine on OK, but for the compressors, which go there as they are chosen: their lists say
// what they take only then. Cancel leaves them; saves have long relied on it. The profile list stands meanwhile.
//
// Moving the quality asks for another one than the clips have, so what could be copied is encoded then; a click on its
// box still has it copied.
//
// State: `forms::frmAdvancedSaveOptions`. Each routine traps its errors. Interface thread only.

#include "export/compression_lists.h"

#include <functional>
#include <string>
#include <string_view>

namespace frmAdvancedSaveOptions {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

void ShowModal();
void Form_Load();

void SetVideoCompressor(std::string_view name);
void SetAudioCompressor(std::string_view name);
/// Also in the engine, which cannot be asked for it. Raises its failures.
void SetCopyUnchanged(bool isWanted);
const std::string& GetTitle();
const std::string& GetAuthor();
const std::string& GetRating();
const std::string& GetCopyright();
const std::string& GetDescription();

void cboVideoCompressor_Click();
void cboAudioCompressor_Click();
void cboSetting_Click();
void cboProfile_Click();
void cmdProperties_Click();
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmAdvancedSaveOptions
