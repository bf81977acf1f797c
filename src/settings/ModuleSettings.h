#pragma once

// The person's settings: what is kept from one run to the next, by section and key under `state::AppSection`.
//
// Values are texts, numbers in decimal. A value that is missing, empty, no number, or out of its type's range is taken
// as its default. The bars' colours and the working folder stand in `state::`, and so do the recent lists, which the
// main window's menus `mnuFileRF` and `mnuFileRP` show. Every routine has its trap. Interface thread only.

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

/// Writes the colours and the working folder.
void StoreGeneralSettingsInReg();
/// Reads them. Without a folder in the store it is the engine's, else the program's own.
void GetGeneralSettingsFromReg();
void StoreSaveOptionsToReg();
void GetSaveOptionsFromReg();
/// At start: the colours for the bars and the working folder.
void LoadRegistrySettings();
/// Reads the colours again and draws the bars with them.
void AddColorToBars();

/// At start: fill the recent lists and their menus from the store. An empty list shows "Empty", disabled.
/// Of the projects only the newest comes back; that is meant.
void GetResentFilesFromReg();
void GetResentProjectFilesFromReg();

/// Puts the path of the last file of the media list on top of the recent files, and stores them. Repeats are kept out
/// by the callers. With an empty media list the person is told, unless `state::FileNotFoundShown` says that it was.
///
///     read at start: A B C D (A the newest)   ->  array A B C D     menu A B C D
///     E is opened                             ->  array A B C D E   menu E D C B
///
/// The menu is the array read backwards, also where it came from the store; that is meant.
void UpdateResentFileMenu();
/// The same with the path in `state::NewRecentProject`; an empty one changes nothing and is logged.
void UpdateResentProjectMenu();

/// Delete the section and write the menu's captions.
void StoreResentFilesInReg();
void StoreResentProjectsFilesinReg();

} // namespace ModuleSettings
