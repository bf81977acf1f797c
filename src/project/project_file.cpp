#include "project/project_file.h"

#include "core/xml.h"
#include "engine/ITWProjectStore.h"

#include <algorithm>
#include <filesystem>
#include <limits>

namespace project {

namespace {

constexpr std::size_t kMostBookmarks = std::numeric_limits<std::int16_t>::max() - 1; // the next one's number fits

std::int16_t colourPart(std::int16_t value) { return std::clamp<std::int16_t>(value, 0, 255); }

bool isOn(pugi::xml_node row, int place, bool otherwise)
{
    return xml::attributeAt(row, place) ? xml::numberAt(row, place) == 1 : otherwise;
}

/// The rows that the tracks of a timeline stand for: each takes the next one of its kind.
AllRowOptions optionsOfTracks(pugi::xml_node timeline)
{
    AllRowOptions all;
    std::vector<RowPlace> pictures{kOverlayRow, kVideoRow}; // the next one is the last
    std::vector<RowPlace> sounds{kAudio2Row, kAudio1Row};
    for (const auto track : timeline.children("Track")) {
        auto& free = std::string_view(track.attribute("Kind").value()) == "Audio" ? sounds : pictures;
        if (!free.empty()) {
            all[free.back()] = {.isLinked = track.attribute("Linked").as_int(1) != 0,
                                .isLocked = false,
                                .isDisabled = track.attribute("Disabled").as_int(0) != 0};
            free.pop_back();
        }
    }
    return all;
}

/// What the window shows of it. All of it may be missing.
void readView(const pugi::xml_document& document, ProjectFile& file)
{
    if (const auto zoom = xml::firstNamed(document, "ZoomFactor")) {
        file.zoomFactor = xml::numberAt(zoom, 0);
    }
    if (const auto sliders = xml::firstNamed(document, "SelectionSliders")) {
        file.selection.isShown = xml::numberAt(sliders, 0) == 1;
        if (file.selection.isShown) {
            file.selection.start = xml::numberAt<std::int32_t>(sliders, 1);
            file.selection.end = xml::numberAt<std::int32_t>(sliders, 2);
        }
    }
    for (const auto bookmark : xml::firstNamed(document, "Bookmarks").children()) {
        if (file.bookmarks.size() >= kMostBookmarks) {
            throw ProjectFileError("it has more markers than can be counted.");
        }
        file.bookmarks.push_back(xml::numberAt<std::int32_t>(bookmark, 0));
    }
}

} // namespace

AllRowOptions readRowOptions(const pugi::xml_document& document)
{
    const auto rows = xml::firstNamed(document, "Rows");
    if (!rows) {
        return optionsOfTracks(xml::firstNamed(document, "Timeline"));
    }
    AllRowOptions all;
    auto row = rows.first_child();
    for (auto options = all.begin(); row && options != all.end(); ++options, row = row.next_sibling()) {
        // The places are Name, Link, Lock, Disable.
        *options = {.isLinked = isOn(row, 1, true), .isLocked = isOn(row, 2, false), .isDisabled = isOn(row, 3, false)};
    }
    return all;
}

ProjectFile readProject(const pugi::xml_document& document)
{
    ProjectFile file;
    try {
        const auto dimension = xml::firstNamed(document, "PreviewDimension");
        if (!dimension) {
            throw ProjectFileError("it has no PreviewDimension, so that it is no whole project.");
        }
        file.previewWidth = xml::numberAt(dimension, 0);
        file.previewHeight = xml::numberAt(dimension, 1);
        for (const auto entry : xml::firstNamed(document, "MediaList").children()) {
            file.mediaPaths.emplace_back(entry.first_attribute().value());
        }
        for (const auto key : xml::firstNamed(document, "PropertySettings").children()) {
            // The places are Index, Red, Blue, Green: blue stands ahead of green.
            const auto red = colourPart(xml::numberAt(key, 1));
            const auto blue = colourPart(xml::numberAt(key, 2));
            const auto green = colourPart(xml::numberAt(key, 3));
            file.overlayKeys.push_back({red, green, blue});
        }
        file.rows = readRowOptions(document);
        readView(document, file);
    } catch (const engine::RuntimeError& error) {
        throw ProjectFileError(std::string("a number in it cannot be read (") + error.what() + ").");
    }
    return file;
}

ProjectFile readProjectFile(const std::string& path)
{
    const std::string cannot = "Cannot open the project \"" + path + "\": ";
    std::error_code unknown;
    if (std::filesystem::file_size(path, unknown) > engine::kMostProjectBytes && !unknown) {
        throw ProjectFileError(cannot + "it is too large for a project.");
    }
    pugi::xml_document document;
    if (std::string why; !xml::load(document, path, why)) {
        throw ProjectFileError(cannot + why + ". Open it in a text editor, or save it again.");
    }
    try {
        return readProject(document);
    } catch (const ProjectFileError& error) {
        throw ProjectFileError(cannot + error.what());
    }
}

} // namespace project
