// Saving.

#include "project/ModuleProject.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWProjectStore.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/media_files.h"
#include "project/project_elements.h"
#include "project/staging.h"
#include "settings/recent_lists.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>

namespace ModuleProject {

using engine::RuntimeError;

namespace {

constexpr std::int32_t kCancelled = 32755;
constexpr const char* kUnexpected = "Unexpected error saving project.";

/// What a save that writes nothing puts back.
class FlagsBefore {
public:
    void putBack() const
    {
        state::ProjectModified = modified_;
        state::MediaListDirty = dirty_;
        state::ProjectSaved = saved_;
        state::ProjectFilePath = path_;
        state::SavedFileCount = fileCount_;
    }

private:
    bool modified_ = state::ProjectModified;
    bool dirty_ = state::MediaListDirty;
    bool saved_ = state::ProjectSaved;
    std::string path_ = state::ProjectFilePath;
    std::int16_t fileCount_ = state::SavedFileCount;
};

/// Asked for beside the project that it comes from, else where files were last chosen.
std::string chosenName()
{
    const std::string& path = state::ProjectFilePath;
    return ports.dialogs->saveFile({.filters = {{"Quillmont Project (QPJ)", {"*.qpj"}}},
                                    .folder = path.substr(0, path.size() - NameOf(path).size()),
                                    .defaultExtension = "qpj"});
}

/// The engine's part. Files that it had to open again for it come back to the list, in its order.
void storeTimeline(const std::string& path)
{
    engine::Bool16 ok = engine::kFalse;
    engine::check(engine::EngineAs<engine::ITWProjectStore>()->SaveProject(path, ok));
    if (ok == engine::kFalse) {
        throw RuntimeError(engine::error_number::kPathFileAccess, "The timeline could not be written.");
    }
    BringBackFiles();
}

/// Writes the file as a whole. The order of what follows the overlays' keys tells a first save from a later one.
void writeWhole(const std::string& path, bool isFirst)
{
    disk::WholeFile place = project::placeOf(path);
    project::askForTemporaryName(path);
    const project::Staging staging;
    const std::string& copy = staging.path();
    storeTimeline(copy);
    StoreMediaList(copy);
    StorePropertySettings(copy);
    const auto storeView = [&] {
        StoreZoomFactor(copy);
        StoreSelSliderPos(copy);
    };
    if (isFirst) {
        storeView();
    }
    SetBookMarksToProject(copy);
    StorePreviewDimensions(copy);
    if (!isFirst) {
        storeView();
    }
    StoreRowOptions(copy);
    staging.putIn(place);
}

void addFiles(const std::string& path)
{
    disk::WholeFile place = project::placeOf(path);
    const project::Staging staging;
    staging.copyFrom(path);
    AppendMediaListFiles(staging.path());
    staging.putIn(place);
}

void saveUnderNewName()
{
    state::ProjectFilePath = chosenName();
    writeWhole(state::ProjectFilePath, true);
    state::ProjectSaved = true;
    state::ProjectOpenFailed = false;
    forms::mdiTarnwick.ProjectStarted = true;
    state::MediaListDirty = false;
    state::ProjectModified = false;
    PutInRecentProjects(state::ProjectFilePath);
    ShowProjectName(state::ProjectFilePath);
}

void save()
{
    if (!state::ProjectSaved) {
        saveUnderNewName();
    }
    std::error_code ignored;
    const bool isGone = !std::filesystem::exists(state::ProjectFilePath, ignored); // what is called saved must be there
    if (state::ProjectModified || isGone) {
        writeWhole(state::ProjectFilePath, false);
    } else if (state::MediaListDirty) {
        addFiles(state::ProjectFilePath);
    }
    state::ProjectModified = false;
    state::MediaListDirty = false;
    media::say("Saved " + NameOf(state::ProjectFilePath) + ".");
}

/// The disk's own words stand below ours: a full disk, or one that was taken out, is no fault of the program that
/// anybody should report.
void tellDiskError(const RuntimeError& error)
{
    tellUser(std::string(kUnexpected) + "\r\n\r\n" + error.what());
    ReportError("ModuleProject", "SaveProject*", error);
}

void tellUnexpectedLogged()
{
    ReportError("ModuleSettings", "SaveProject*", currentError()); // the name under which logs are searched for it
    tellUser(kUnexpected);
}

/// One save with its errors. `nameTaken` tells that the temporary name stands already. True when it came to its end.
bool saveTold(const std::function<void()>& nameTaken)
{
    const FlagsBefore before;
    state::SaveCancelled = false;
    const auto body = [&] {
        try {
            save();
        } catch (...) {
            before.putBack();
            state::SaveCancelled = true;
            throw;
        }
    };
    const auto tell = [](const char* text) { return [text] { tellUser(text); }; };
    const auto tellDisk = [] { tellDiskError(currentError()); };
    return Trapped(
        "ModuleProject", "Save Project", body,
        {{kCancelled, [] {}},
         {engine::error_number::kNoSuchClass,
          tell("Error saving project.\r\n\r\nA component required by Quillmont to handle Projects (msxml3.dll) is "
               "missing. \r\n\r\nPlease re-install Quillmont.")},
         {project::kFileExists, nameTaken},
         {project::kFileNotFound, tell("File not found.")},
         {project::kNoPermission, tell("Unable to save project. The project file is Read Only.")},
         {engine::error_number::kPathFileAccess, tell("Path/File access error.")},
         {engine::error_number::kObjectNotSet, tellUnexpectedLogged},
         {engine::error_number::kInvalidCall, tellUnexpectedLogged},
         {project::kPathNotFound, tellDisk},
         {project::kDiskFull, tellDisk},
         {project::kDiskFails, tellDisk}},
        [] { tellUser(kUnexpected); });
}

} // namespace

void SaveProject()
{
    saveTold(
        [] { tellUser("A temporary support file by that name already exists. Please specify another filename."); });
}

void SaveProjectAs()
{
    const FlagsBefore before;
    bool isNameTaken = false;
    do {
        isNameTaken = false;
        state::ProjectModified = false;
        state::MediaListDirty = false;
        state::ProjectSaved = false;
        saveTold([&] {
            isNameTaken = true;
            tellUser("Invalid Project Name. Please specify a different name.");
        });
    } while (isNameTaken);
    if (state::SaveCancelled) {
        before.putBack();
    }
}

void PutInRecentProjects(const std::string& path)
{
    const auto& items = forms::mdiTarnwick.mnuFileRP;
    const bool isThere =
        std::ranges::any_of(items, [&](const Menu& item) { return item.Enabled && item.Caption.get() == path; });
    if (!isThere) {
        state::NewRecentProject = path;
        ModuleSettings::UpdateResentProjectMenu();
    }
}

void ShowProjectName(const std::string& path)
{
    forms::frmMediaList.Caption = "Media List - Project: " + (path.empty() ? "Untitled" : NameOf(path));
}

std::string NameOf(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

} // namespace ModuleProject
