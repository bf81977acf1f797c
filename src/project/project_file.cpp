#include "project/project_file.h"

#include "core/xml.h"
#include "engine/ITWProjectStore.h"

#include <algorithm>
#include <filesystem>

namespace project {

namespace {

std::int16_t colourPart(std::int16_t value) { return std::clamp<std::int16_t>(value, 0, 255); }

} // namespace

ProjectFile readProjectFile(const std::string& path)
{
    const auto refuse = [&](const std::string& why) {
        throw ProjectFileError("Cannot open the project \"" + path + "\": " + why);
    };
    std::error_code unknown;
    if (std::filesystem::file_size(path, unknown) > engine::kMostProjectBytes && !unknown) {
        refuse("it is too large for a project.");
    }
    pugi::xml_document document;
    if (std::string why; !xml::load(document, path, why)) {
        refuse(why + ". Open it in a text editor, or save it again.");
    }
    ProjectFile file;
    try {
        const auto dimension = xml::firstNamed(document, "PreviewDimension");
        if (!dimension) {
            refuse("it has no PreviewDimension, so that it is no whole project.");
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
    } catch (const engine::RuntimeError& error) {
        refuse(std::string("a number in it cannot be read (") + error.what() + ").");
    }
    return file;
}

} // namespace project
