#pragma once

// The person's settings: what is kept from one run to the next, by section and key under `state::AppSection`.
//
// Values are texts, numbers in decimal. A value that is missing, empty, no number, or out of its type's range is taken
// as its default. The bars' colours and the working folder stand in `state::`. The recent lists: `recent_lists.h`.
// Every routine has its trap. Interface thread only.

#include <cstdint>
#include <string>
#include <string_view>

namespace ModuleSettings {

// The save options, as `GetSaveOptionsFromReg` read them last.
inline std::string VideoCompressorName = "Uncompressed";
inline std::string AudioCompressorName = "Uncompressed";
inline std::string VideoDimensionText = "320 x 240"; // width and height in pixels
inline std::int32_t SaveFrameRate = 15;              // frames a second
inline std::int32_t SaveQuality = 75;                // per cent
inline std::int32_t SaveKeyFrameRate = 15;
inline std::int32_t SaveFrameFrequency = 15; // of predicted frames
inline std::int16_t PreviewAfterSave = 1;    // 0 or 1, as the check box
inline std::int16_t HideTutorial = 0;        // the same
inline std::string VideoProfileName = "Video for dial-up modems or LAN (28.8 to 100 Kbps)";
inline std::string AudioProfileName = "Audio for CD-quality (96 Kbps stereo)";

/// Sets the section under which all settings stand.
void SetApplicationName(std::string_view name);

/// Takes over what the preferences' dialogue holds, and writes it: the colours and the working folder.
void StoreGeneralSettingsInReg();
/// Reads them. Without a folder in the store it is the engine's, else the program's own.
void GetGeneralSettingsFromReg();
/// The same for the save options.
void StoreSaveOptionsToReg();
void GetSaveOptionsFromReg();
/// At start: the colours for the bars and the working folder.
void LoadRegistrySettings();
/// Reads the colours again and draws the bars with them.
void AddColorToBars();

// --- The preferences' dialogue (`forms::frmPreferences`) and the values ---------------------------------------------

/// From the dialogue to the values: colours and working folder.
void SetColorValues();
/// And back.
void GetColorValues();
/// From the dialogue to the values: the save options.
void SetSaveOptionValues();
/// And back; a name that its list does not hold becomes the default.
void GetSaveOptionValues();
/// Reads the settings into the dialogue, whose lists are filled.
void LoadPreferences();
/// Writes what the dialogue holds.
void StorePreferences();

/// The engine's folder for new files, else the program's own. Raises the engine's failures.
std::string workingFolderDefault();

} // namespace ModuleSettings
