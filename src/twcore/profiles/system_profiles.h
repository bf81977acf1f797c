#pragma once

// The profiles that every machine has: a ladder from a modem's rate to 2 Mbit/s for movies, and for sound alone.

#include "twcore/profiles/profile.h"

#include <vector>

namespace twcore {

/// What is saved with until a profile is chosen.
inline constexpr const char* kDefaultVideoProfile = "Video for dial-up modems or LAN (28.8 to 100 Kbps)";
inline constexpr const char* kDefaultAudioProfile = "Audio for CD-quality (96 Kbps stereo)";

/// Always the same, in the order of the list: movies first, each kind from the lowest rate up.
const std::vector<Profile>& systemProfiles();

} // namespace twcore
