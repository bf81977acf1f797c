#pragma once

// Small media files of exactly a given length, for scripts: a grey picture that stands for the whole length, a soft
// tone. Reading them costs next to nothing, whatever their length.

#include <cstdint>
#include <filesystem>

namespace app {

struct MediaKinds {
    bool picture = false;
    bool sound = false;
};

/// The longest file that is made.
inline constexpr std::int32_t kLongestMediaMs = 24 * 60 * 60 * 1000;

/// As the file's name ends: ".avi" with a picture, else ".wav".
const char* mediaEnding(MediaKinds kinds);

/// Writes an AVI file, or a WAV file without picture, from 1 ms to `kLongestMediaMs` long. Raises std::runtime_error
/// when it could not be written. Any thread.
void writeMedia(const std::filesystem::path& path, std::int32_t lengthMs, MediaKinds kinds);

} // namespace app
