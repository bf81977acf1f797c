#include "project/media_search.h"

#include "core/platform.h"
#include "core/shared_state.h"
#include "media/media_files.h"
#include "media/open_dialogue.h"
#include "media/opening.h"
#include "project/ModuleProject.h"

#include <cstdio>
#include <filesystem>

namespace project {

namespace fs = std::filesystem;

using ModuleProject::NameOf;

namespace {

std::string folderOf(const std::string& path) { return fs::path(path).parent_path().string(); }

} // namespace

MediaSearch::MediaSearch(const std::string& project) : project_(project), folder_(folderOf(project)) {}

void MediaSearch::sayProgress(std::int32_t number, std::int32_t count, const std::string& source) const
{
    char counts[48];
    std::snprintf(counts, sizeof counts, "Opening file %02d of %02d (", number, count);
    media::say(counts + NameOf(source) + ") from project \"" + NameOf(project_) + "\"");
}

Found MediaSearch::open(const std::string& source)
{
    // Never in the folder that the program happens to run in.
    const std::string path = (fs::path(project_).parent_path() / source).string();
    if (!moduleTarnwick::CheckMediaFile(path)) {
        return state::OpeningCancelled ? Found::kCancelled : Found::kRefused;
    }
    switch (media::openWithRow(path)) {
    case media::Opened::kOpened:
        return state::OpeningCancelled ? Found::kCancelled : Found::kOpened;
    case media::Opened::kNoStream:
        return Found::kRefused;
    default:
        return search(source);
    }
}

Found MediaSearch::search(const std::string& source)
{
    const std::string named = "File \"" + source + "\"";
    if (askUser(named + " not found. Do you want to search for this file yourself?", MessageButtons::kYesNo,
                MessageIcon::kInformation)
        != MessageAnswer::kYes) {
        tellUser(named + " missing. Unable to open project.");
        return Found::kDeclined;
    }
    std::string chosen;
    for (;;) {
        chosen = ports.dialogs->openFiles(media::searchMediaRequest(folder_));
        if (NameOf(chosen) == NameOf(source)) {
            break;
        }
        folder_ = folderOf(chosen);
        tellUser("Please select the required file.");
    }
    folder_ = folderOf(chosen);
    if (!moduleTarnwick::CheckMediaFile(chosen) || media::openWithRow(chosen) != media::Opened::kOpened) {
        return Found::kRefused;
    }
    hasSearched_ = true;
    return Found::kOpened;
}

} // namespace project
