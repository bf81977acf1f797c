#pragma once

// What the program adds to a project file beside the engine's timeline: read, as far as rendering needs it.
// Elements are found by their names, attributes mostly by their place, as the format has it.

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace pugi {
class xml_document;
}

namespace project {

/// What the boxes of a row say.
struct RowOptions {
    bool isLinked = true;
    bool isLocked = false;
    bool isDisabled = false;
};

/// The rows of the timeline as their options stand in a file, in the order of its form.
enum RowPlace : std::uint8_t { kVideoRow, kEffectRow, kOverlayRow, kAudio1Row, kAudio2Row, kRowCount };
using AllRowOptions = std::array<RowOptions, kRowCount>;

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
    AllRowOptions rows; // `Rows`
};

/// A file that is no project. The text is a sentence for people that names the path.
struct ProjectFileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Raises `ProjectFileError`.
ProjectFile readProjectFile(const std::string& path);

/// What `Rows` says; without that element what the tracks of the timeline say themselves, as files up to 0.3 have it.
/// What is left out is enabled, unlocked and linked. Raises errors 6 and 13 for numbers that are none.
AllRowOptions readRowOptions(const pugi::xml_document& document);

} // namespace project
