#pragma once

// Stills of the live picture: where they go, in which size, and under which number. The settings stand for the whole
// run and are kept in the store, but for the counter. Each routine traps its errors. Interface thread only.

#include <cstdint>
#include <string>

namespace moduleCaptureSnap {

inline std::string SnapFolder;       // empty until the settings are read
inline std::int16_t SnapWidth = 320; // pixels
inline std::int16_t SnapHeight = 240;
inline bool SnapUseCaptureDimension = true; // else in the size above
inline std::int16_t SnapCounter = 0;        // the number that is tried next

/// Reads them. What is not in the store, or makes no sense, stays; a folder that nobody has stored is the working
/// folder.
void LoadSettings();
void StoreSettings();
/// Another folder may have room where the one before was full.
void SetSnapFolder(const std::string& folder);

/// Saves the present picture under the first free number from the counter on: "Snap0000.bmp". A folder that is not
/// there is made. Answers what the status bar is to say; why there is no snap the person has been told.
std::string TakeSnapFile();

} // namespace moduleCaptureSnap
