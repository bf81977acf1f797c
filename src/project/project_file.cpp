#include "project/project_file.h"

#include "core/numbers.h"
#include "engine/ITWProjectStore.h"

#include <algorithm>
#include <filesystem>
#include <pugixml.hpp>

namespace project {

namespace {

/// The attribute at a place of an element's list, as a 16-bit number.
std::int16_t numberAt(pugi::xml_node node, int place)
{
    auto attribute = node.first_attribute();
    for (; place > 0; --place) {
        attribute = attribute.next_attribute();
    }
    return numbers::rounded<std::int16_t>(numbers::fromText(attribute.value()));
}

pugi::xml_node firstNamed(const pugi::xml_document& document, const char* name)
{
    return document.find_node([&](const pugi::xml_node& node) { return std::string_view(node.name()) == name; });
}

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
    if (const auto result = document.load_file(path.c_str()); !result) {
        refuse(std::string(result.description()) + ", at byte " + std::to_string(result.offset)
               + ". Open it in a text editor, or save it again.");
    }
    ProjectFile file;
    try {
        const auto dimension = firstNamed(document, "PreviewDimension");
        if (!dimension) {
            refuse("it has no PreviewDimension, so that it is no whole project.");
        }
        file.previewWidth = numberAt(dimension, 0);
        file.previewHeight = numberAt(dimension, 1);
        for (const auto entry : firstNamed(document, "MediaList").children()) {
            file.mediaPaths.emplace_back(entry.first_attribute().value());
        }
        for (const auto key : firstNamed(document, "PropertySettings").children()) {
            // The places are Index, Red, Blue, Green: blue stands ahead of green.
            const auto red = colourPart(numberAt(key, 1));
            const auto blue = colourPart(numberAt(key, 2));
            const auto green = colourPart(numberAt(key, 3));
            file.overlayKeys.push_back({red, green, blue});
        }
    } catch (const engine::RuntimeError& error) {
        refuse(std::string("a number in it cannot be read (") + error.what() + ").");
    }
    return file;
}

} // namespace project
