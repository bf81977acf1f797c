#include "settings/recent_lists.h"

#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace ModuleSettings {

namespace {

constexpr std::string_view kModule = "ModuleSettings";
constexpr std::size_t kMenuItems = 4;

/// One list, its menu, and where it is kept.
struct RecentList {
    std::vector<Menu>& menu;
    std::vector<std::string>& paths;
    std::int32_t& count;
    std::string section;
    std::string sectionOfRest; // where the entries behind the first are looked for
    std::string key;
};

RecentList recentFiles()
{
    return {forms::mdiTarnwick.mnuFileRF,
            state::RecentFilePaths,
            state::RecentFileCount,
            "Recent Files",
            "Recent Files",
            "File"};
}

RecentList recentProjects()
{
    // The section of the rest lacks its last letter and holds nothing, so that only the newest project comes back at
    // start. Kept: people know the menu so.
    return {forms::mdiTarnwick.mnuFileRP,
            state::RecentProjectPaths,
            state::RecentProjectCount,
            "Recent Projects",
            "Recent Project",
            "Project"};
}

std::string stored(const std::string& section, const std::string& key)
{
    return ports.settings->get(state::AppSection, section, key).value_or(std::string());
}

void setItemCount(RecentList& list, std::size_t count)
{
    list.menu.resize(count);
    show::mark();
}

void append(RecentList& list, const std::string& path)
{
    list.paths.resize(static_cast<std::size_t>(list.count));
    list.paths.push_back(path);
    ++list.count;
}

void load(RecentList list)
{
    const std::string newest = stored(list.section, list.key + "0");
    setItemCount(list, 1);
    list.count = 0;
    if (newest.empty()) {
        // Without a number: it is no path, but makes the section, which `store` deletes.
        ports.settings->save(state::AppSection, list.section, list.key, "");
        list.menu[0].Caption = "Empty";
        list.menu[0].Enabled = false;
        list.paths.resize(1);
        return;
    }
    list.menu[0].Enabled = true;
    list.menu[0].Caption = newest;
    append(list, newest);
    for (std::size_t i = 1; i < kMenuItems; ++i) {
        const std::string path = stored(list.sectionOfRest, list.key + std::to_string(i));
        if (path.empty()) {
            break;
        }
        setItemCount(list, i + 1);
        list.menu[i].Caption = path;
        append(list, path);
    }
}

void putOnTop(RecentList list, const std::string& path)
{
    list.menu[0].Enabled = true;
    append(list, path);
    setItemCount(list, 1);
    setItemCount(list, std::min(list.paths.size(), kMenuItems));
    for (std::size_t i = 0; i < list.menu.size(); ++i) {
        list.menu[i].Caption = list.paths[list.paths.size() - 1 - i];
    }
}

void store(const RecentList& list)
{
    ports.settings->deleteSection(state::AppSection, list.section);
    for (std::size_t i = 0; i < list.menu.size(); ++i) {
        ports.settings->save(state::AppSection, list.section, list.key + std::to_string(i), list.menu[i].Caption.get());
    }
}

// Delete the section and write the menu's captions.
void StoreResentFilesInReg()
{
    Trapped(kModule, "StoreResentFilesInReg", [] { store(recentFiles()); });
}

void StoreResentProjectsFilesinReg()
{
    Trapped(kModule, "StoreResentProjectsFilesinReg", [] { store(recentProjects()); });
}

[[noreturn]] void raiseInvalidCall()
{
    throw engine::RuntimeError(engine::error_number::kInvalidCall, "Invalid procedure call or argument");
}

/// Raises error 5 when the media list is empty or its last file is gone.
std::string lastFileOfMediaList()
{
    if (state::FileCollection.Count() == 0) {
        raiseInvalidCall();
    }
    const engine::Handle file = state::FileCollection.Item(state::FileCollection.Count());
    for (const std::size_t size : {std::size_t{260}, std::size_t{4096}, std::size_t{65536}}) {
        std::string path(size, ' ');
        engine::Bool16 ok = engine::kFalse;
        engine::check(engine::EngineAs<engine::ITWCoreRoot>()->GetFileName(file, path, ok));
        if (ok != engine::kFalse) {
            path.resize(path.find_last_not_of(std::string_view(" \0", 2)) + 1);
            return path;
        }
    }
    raiseInvalidCall();
}

} // namespace

void GetResentFilesFromReg()
{
    Trapped(kModule, "GetResentFilesFromReg", [] { load(recentFiles()); });
}

void GetResentProjectFilesFromReg()
{
    Trapped(kModule, "GetResentProjectFilesFromReg", [] { load(recentProjects()); });
}

void UpdateResentFileMenu()
{
    Trapped(kModule, "UpdateResentFileMenu",
            [] {
                putOnTop(recentFiles(), lastFileOfMediaList());
                StoreResentFilesInReg();
            },
            {{engine::error_number::kInvalidCall, [] {
                  if (!state::FileNotFoundShown) {
                      tellUser("File not found.");
                  }
              }}});
}

void UpdateResentProjectMenu()
{
    Trapped(kModule, "UpdateResentProjectMenu",
            [] {
                if (state::NewRecentProject.empty()) {
                    raiseInvalidCall();
                }
                putOnTop(recentProjects(), state::NewRecentProject);
                StoreResentProjectsFilesinReg();
            },
            {{engine::error_number::kInvalidCall,
              [] { ReportError(kModule, "UpdateResentProjectMenu*", currentError()); }}});
}

} // namespace ModuleSettings
