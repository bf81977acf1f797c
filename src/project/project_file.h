#pragma once

// What the program adds to a project file beside the engine's timeline, read as a value. Elements are found by their
// names, attributes mostly by their place, as the format has it.

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

    bool operator==(const RowOptions&) const = default;
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

/// The selection between its two sliders; times are ms.
struct StoredSelection {
    bool isShown = false;
    std::int32_t start = 0;
    std::int32_t end = 0;
};

struct ProjectFile {
    std::vector<std::string> mediaPaths; // `MediaList`, in its order
    std::vector<OverlayKey> overlayKeys; // `PropertySettings`, by overlay
    std::int16_t previewWidth = 0;       // `PreviewDimension`, pixels
    std::int16_t previewHeight = 0;
    AllRowOptions rows;                     // `Rows`
    std::optional<std::int16_t> zoomFactor; // `ZoomFactor`, ms a pixel
    StoredSelection selection;              // `SelectionSliders`
    std::vector<std::int32_t> bookmarks;    // `Bookmarks`, ms, in their order
};

/// A file that is no project. The text is a sentence for people.
struct ProjectFileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Raises `ProjectFileError`, which names the path.
ProjectFile readProjectFile(const std::string& path);
/// The same of a document that was read already. Raises `ProjectFileError`, which says why alone.
ProjectFile readProject(const pugi::xml_document& document);

/// What `Rows` says; without that element what the tracks of the timeline say themselves, as files up to 0.3 have it.
/// What is left out is enabled, unlocked and linked. Raises errors 6 and 13 for numbers that are none.
AllRowOptions readRowOptions(const pugi::xml_document& document);

} // namespace project
