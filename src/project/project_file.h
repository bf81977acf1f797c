#pragma once

// What the program adds to a project file beside the engine's timeline: read, as far as rendering needs it.
// Elements are found by their names, attributes mostly by their place, as the format has it.

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace project {

/// Key colour of the overlay at this place of the list; each 0 to 255.
struct OverlayKey {
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

struct ProjectFile {
    std::vector<std::string> mediaPaths; // `MediaList`, in its order
    std::vector<OverlayKey> overlayKeys; // `PropertySettings`, by overlay
    std::int16_t previewWidth = 0;       // `PreviewDimension`, pixels
    std::int16_t previewHeight = 0;
};

/// A file that is no project. The text is a sentence for people that names the path.
struct ProjectFileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Raises `ProjectFileError`.
ProjectFile readProjectFile(const std::string& path);

} // namespace project
