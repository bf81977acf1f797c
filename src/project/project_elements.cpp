#include "project/project_elements.h"

#include "core/forms/frmMediaList.h"
#include "core/shared_state.h"
#include "core/xml.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/transition_key.h"
#include "media/media_files.h"
#include "preview/frame_offer.h"
#include "project/row_options.h"
#include "project/staging.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace ModuleProject {

using engine::check;
using engine::EngineAs;

namespace {

constexpr std::int16_t kUsualZoom = 10;

/// One round trip.
template <class Change>
void inDocument(const std::string& path, const Change& change)
{
    pugi::xml_document document;
    std::string why;
    if (!xml::load(document, path, why) || !document.first_child()) {
        throw engine::RuntimeError(engine::error_number::kObjectNotSet, "No document in \"" + path + "\": " + why);
    }
    change(document);
    errno = 0;
    if (!xml::save(document, path)) {
        const std::string cause = std::generic_category().message(errno != 0 ? errno : EIO);
        throw engine::RuntimeError(project::kDiskFull, "\"" + path + "\" cannot be written: " + cause + ".");
    }
}

/// One round trip that appends an element to the root.
template <class Fill>
void appendElement(const std::string& path, const char* name, const Fill& fill)
{
    inDocument(path, [&](pugi::xml_document& document) { fill(document.first_child().append_child(name)); });
}

void appendFile(pugi::xml_node list, std::int32_t row)
{
    list.append_child("File").append_attribute("Src") = media::pathOf(state::FileCollection.Item(row)).c_str();
}

std::int16_t rowCount() { return numbers::narrowed<std::int16_t>(forms::frmMediaList.lvwMediaList.Count()); }

void moveFile(const std::string& from, const std::string& to)
{
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        throw engine::RuntimeError(project::kPathFileAccess, "\"" + from + "\" cannot be renamed.");
    }
}

std::int16_t transitionCount()
{
    std::int16_t count = 0;
    check(EngineAs<engine::ITWTimeline>()->GetTransitionCount(state::OverlayTrack, count));
    return count;
}

} // namespace

// --- Writing -------------------------------------------------------------------------------------------------------

void StoreMediaList(const std::string& path)
{
    state::TemporaryProjectPath = project::temporaryNameOf(path);
    moveFile(path, state::TemporaryProjectPath);
    appendElement(state::TemporaryProjectPath, "MediaList", [](pugi::xml_node list) {
        for (std::int32_t row = 1; row <= state::FileCollection.Count(); ++row) {
            appendFile(list, row);
        }
    });
    moveFile(state::TemporaryProjectPath, path);
    state::SavedFileCount = rowCount();
}

void AppendMediaListFiles(const std::string& path)
{
    inDocument(path, [](pugi::xml_document& document) {
        const auto list = xml::firstNamed(document, "MediaList");
        if (!list) {
            throw engine::RuntimeError(engine::error_number::kObjectNotSet, "The project has no MediaList.");
        }
        for (std::int32_t row = state::SavedFileCount + 1; row <= rowCount(); ++row) {
            appendFile(list, row);
        }
    });
    state::SavedFileCount = rowCount();
}

void StorePropertySettings(const std::string& path)
{
    const std::int16_t count = transitionCount();
    if (count == 0) {
        return;
    }
    appendElement(path, "PropertySettings", [&](pugi::xml_node settings) {
        const auto keys = EngineAs<engine::ITWKeyTransition>();
        for (std::int16_t i = 0; i < count; ++i) {
            std::int16_t red = 0;
            std::int16_t green = 0;
            std::int16_t blue = 0;
            check(keys->GetKeyRed(state::OverlayTrack, i, red));
            check(keys->GetKeyBlue(state::OverlayTrack, i, blue));
            check(keys->GetKeyGreen(state::OverlayTrack, i, green));
            auto key = settings.append_child("RGB");
            key.append_attribute("Index") = int{i};
            key.append_attribute("Red") = int{red};
            key.append_attribute("Blue") = int{blue};
            key.append_attribute("Green") = int{green};
        }
    });
}

void StorePreviewDimensions(const std::string& path)
{
    appendElement(path, "PreviewDimension", [](pugi::xml_node dimension) {
        dimension.append_attribute("Width") = int{state::ProjectWidth};
        dimension.append_attribute("Height") = int{state::ProjectHeight};
    });
}

void StoreZoomFactor(const std::string& path)
{
    appendElement(path, "ZoomFactor", [](pugi::xml_node zoom) {
        zoom.append_attribute("Value") = int{moduleScaleRenderer::GetZoomFactor()};
    });
}

void StoreSelSliderPos(const std::string& path)
{
    appendElement(path, "SelectionSliders", [](pugi::xml_node sliders) {
        const bool isShown = timeline::isSelectionShown();
        sliders.append_attribute("Visible") = isShown ? 1 : 0;
        sliders.append_attribute("Start") = isShown ? moduleTimeline::GetSelSliderPosition(true) : 0;
        sliders.append_attribute("End") = isShown ? moduleTimeline::GetSelSliderPosition(false) : 0;
    });
}

void SetBookMarksToProject(const std::string& path)
{
    appendElement(path, "Bookmarks", [](pugi::xml_node bookmarks) {
        int number = 0;
        for (const engine::Milliseconds time : moduleBookmarks::bookmarkTimesToStore()) {
            bookmarks.append_child(("Bookmark_" + std::to_string(number++)).c_str()).append_attribute("Position") =
                time;
        }
    });
}

void StoreRowOptions(const std::string& path)
{
    inDocument(path, [](pugi::xml_document& document) { project::storeRowOptions(document.first_child()); });
}

// --- Applying ------------------------------------------------------------------------------------------------------

bool GetPreviewDimensions(const project::ProjectFile& file)
{
    using namespace frmPreview;
    const auto isSide = [](std::int16_t side) { return side >= kLeastFrameSide && side <= kMostFrameSide; };
    if (!isSide(file.previewWidth) || !isSide(file.previewHeight)) {
        return false;
    }
    SetFrameSize(file.previewWidth, file.previewHeight);
    return true;
}

void GetPropertySettings(const project::ProjectFile& file)
{
    const auto count = std::min<std::size_t>(file.overlayKeys.size(), static_cast<std::size_t>(transitionCount()));
    for (std::size_t i = 0; i < count; ++i) {
        const project::OverlayKey& key = file.overlayKeys[i];
        moduleEdit::ApplyTransitionKey(state::OverlayTrack, static_cast<std::int16_t>(i), key.red, key.green, key.blue);
    }
}

void GetZoomFactor(const project::ProjectFile& file)
{
    const std::int16_t zoom = file.zoomFactor.value_or(kUsualZoom);
    moduleScaleRenderer::SetZoomFactor(zoom >= 0 && zoom <= moduleScaleRenderer::kFurthestZoom ? zoom : kUsualZoom);
}

void GetSelSliderPos(const project::ProjectFile& file)
{
    if (file.selection.isShown) {
        moduleTimeline::SetSelSliderPosition(std::max(0, file.selection.start), true);
        moduleTimeline::SetSelSliderPosition(std::max(0, file.selection.end), false);
        moduleTimeline::ShowSelSliders(true);
        // Who asks for the range asks for these.
        state::SelStartPosition = moduleTimeline::GetSelSliderPosition(true);
        state::SelEndPosition = moduleTimeline::GetSelSliderPosition(false);
    }
}

void GetBookMarkFromProject(const project::ProjectFile& file) { moduleBookmarks::takeBookmarks(file.bookmarks); }

} // namespace ModuleProject
