// Opening a project.

#include "media/opening.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/clipboard.h"
#include "engine/ITWProjectStore.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "media/closing.h"
#include "media/file_preview.h"
#include "media/frmMediaList_events.h"
#include "media/media_files.h"
#include "preview/frame_offer.h"
#include "project/ModuleProject.h"
#include "project/media_search.h"
#include "project/project_elements.h"
#include "project/row_options.h"
#include "project/staging.h"
#include "settings/recent_lists.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>

namespace ModuleProject {

using engine::check;
using project::Found;

namespace {

constexpr const char* kModule = "ModuleProject";
constexpr std::int16_t kDefaultPointer = 0;
constexpr std::int16_t kHourglass = 11;

forms::MdiTarnwick& form = forms::mdiTarnwick;

/// A command line hands its path between quotes.
std::string unquoted(std::string_view path)
{
    if (!path.empty() && path.front() == '"') {
        path.remove_prefix(1);
        path.remove_suffix(path.empty() ? 0 : 1);
    }
    path.remove_prefix(std::min(path.find_first_not_of(' '), path.size()));
    path.remove_suffix(path.size() - 1 - path.find_last_not_of(' '));
    return std::string(path);
}

/// What the program has written there. Raises 321 for what is no project.
project::ProjectFile readFile(const std::string& path)
{
    try {
        return project::readProjectFile(path);
    } catch (const project::ProjectFileError& error) {
        throw engine::RuntimeError(project::kInvalidFormat, error.what());
    }
}

/// What the file says beside the timeline, in force. Its media are open, and the timeline lies on the tracks.
void applyView(const project::ProjectFile& file)
{
    GetPropertySettings(file);
    GetBookMarkFromProject(file);
    GetZoomFactor(file);
    moduleBookmarks::UpdateBookmarks(); // they were placed at the zoom before
    GetSelSliderPos(file);
    project::bringRowOptions(file.rows);
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
    moduleScaleRenderer::RenderScale();
    UpdatePreview();
}

void showThatItIsOpen(const std::string& path)
{
    state::ProjectFilePath = path;
    state::ProjectSaved = true;
    state::ProjectOpenFailed = false;
    form.ProjectStarted = true;
    ShowProjectName(path);
    form.MousePointer = kDefaultPointer;
    media::say("Done");
    form.pbarMain.Visible = false;
}

/// Opens the media with a row each, in their order. What could not be had, else nothing.
Found openMedia(const std::vector<std::string>& files, const std::string& path)
{
    project::MediaSearch search(path);
    const auto count = static_cast<std::int32_t>(files.size());
    if (count >= 2) {
        form.pbarMain.SetMin(1);
        form.pbarMain.SetMax(count);
        form.pbarMain.Visible = true;
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        const auto number = static_cast<std::int32_t>(i) + 1;
        search.sayProgress(number, count, files[i]);
        form.pbarMain.SetValue(number);
        media::lookAhead(files, i);
        ports.events->letRun();
        if (const Found found = search.open(files[i]); found != Found::kOpened) {
            return found;
        }
    }
    return search.hasSearched() ? Found::kElsewhere : Found::kOpened;
}

/// The whole of it. Raises what the steps raise.
Found load(const std::string& path)
{
    project::askForTemporaryName(path);
    const project::Staging staging;
    staging.copyFrom(path);
    const project::ProjectFile file = readFile(staging.path());
    if (!GetPreviewDimensions(file)) {
        throw engine::RuntimeError(project::kInvalidFormat,
                                   "\"" + path + "\" has no frame size that a movie can have.");
    }
    const Found found = openMedia(file.mediaPaths, path);
    if (found != Found::kOpened && found != Found::kElsewhere) {
        return found;
    }
    media::say("Building Timeline (this may take some time)...");
    ports.events->letRun();
    check(engine::EngineAs<engine::ITWProjectStore>()->LoadProject(staging.path()));
    applyView(file);
    if (!state::OpeningRecentProject) {
        PutInRecentProjects(path);
    }
    UpdateTreeView();
    ModuleHistory::EmptyHistory(); // of what was done while files were being opened
    showThatItIsOpen(path);
    return found;
}

/// Nothing is open, and the next save asks for a name.
void leaveEmpty()
{
    EmptyProject();
    state::ProjectOpenFailed = true;
    state::ProjectSaved = false;
    state::ProjectFilePath.clear();
    state::ProjectModified = false;
    state::MediaListDirty = false;
    form.pbarMain.Visible = false;
    form.MousePointer = kDefaultPointer;
    ShowProjectName("");
    if (!state::NewRecentProject.empty()) {
        ModuleSettings::UpdateResentProjectMenu();
    }
    EnableOrDisableMenuItems();
}

/// What the disk does is no fault of the program that anybody should report; its own words stand below ours.
void tellDiskError()
{
    const engine::RuntimeError error = currentError();
    tellUser(std::string("Unable to open project.\r\n\r\n") + error.what());
    ReportError(kModule, "Open Project*", error);
}

/// The load with its errors. True when the project is open; `isElsewhere`: files of it were found in other places.
bool loadTold(const std::string& path, bool& isElsewhere)
{
    Found found = Found::kRefused;
    const auto body = [&] {
        try {
            found = load(path);
        } catch (...) {
            media::say("Error");
            form.MousePointer = kDefaultPointer;
            form.pbarMain.Visible = false;
            throw;
        }
    };
    const auto tell = [](const char* text) { return [text] { tellUser(text); }; };
    constexpr std::int32_t kCancelled = 32755;
    constexpr std::int32_t kSubscript = 9;
    const bool isThrough = Trapped(
        kModule, "Open Project", body,
        {{kCancelled, tell("Unable to open project. One or more files in the project were not found.")},
         {project::kFileNotFound, tell("File not found. Unable to open project.")},
         {project::kFileExists, tell("File already exists. Unable to open project.")},
         {project::kInvalidFormat, tell("Invalid file format.")},
         {engine::error_number::kObjectNotSet, tell("Invalid file format.")},
         {engine::error_number::kNoSuchClass,
          tell("Error saving project.\r\n\r\nA component required by Quillmont to handle Projects (msxml3.dll) is "
               "missing. \r\n\r\nPlease reinstall Quillmont.")},
         {kSubscript, tell("Unable to open project. Unexpected error.")},
         {project::kPathNotFound, tellDiskError},
         {project::kPathFileAccess, tellDiskError},
         {project::kNoPermission, tellDiskError},
         {project::kDiskFull, tellDiskError},
         {project::kDiskFails, tellDiskError}});
    isElsewhere = found == Found::kElsewhere;
    const bool isOpen = isThrough && (isElsewhere || found == Found::kOpened);
    if (isThrough && !isOpen) { // in place of the file at which it ended
        media::say(found == Found::kCancelled ? "Opening " + NameOf(path) + " was cancelled." : "Error");
    }
    if (isThrough && found == Found::kRefused) {
        tellUser("Unable to open project.");
    }
    return isOpen;
}

} // namespace

void OpenProject(std::string_view named)
{
    const std::string path = unquoted(named);
    form.MousePointer = kHourglass;
    state::ProjectOpenFailed = false;
    state::NewRecentProject.clear();
    bool isElsewhere = false;
    if (!loadTold(path, isElsewhere)) {
        leaveEmpty();
        return;
    }
    state::ProjectModified = false;
    state::MediaListDirty = false;
    if (isElsewhere) {
        state::markModified(); // the file names other places than its media have now
    }
    EnableOrDisableMenuItems();
}

void EmptyProject()
{
    ModuleHistory::EmptyTimeline();
    moduleTarnwick::CloseAllMediaFiles();
    UpdateTreeView();
    ModuleHistory::EmptyHistory();
    moduleScaleRenderer::SetZoomFactor(0);
    moduleTimeline::ShowSelSliders(false);
    moduleTimeline::ReInitLinkLockDisable();
    moduleBookmarks::RemoveBookmarks();
    Trapped(kModule, "EmptyProject", [] { frmPreview::ForgetFrameSize(); });
    moduleScaleRenderer::AdjustScroll();
    moduleScaleRenderer::ScrollTo(0);
    moduleTimeline::SetSliderPosition(0, false);
    moduleScaleRenderer::RenderScale();
    Trapped(kModule, "EmptyProject", [] { media::closeFilePreview(); });
    UpdatePreview();
    frmMediaList::ClearFileInformation();
}

} // namespace ModuleProject
