#include "shell/project_commands.h"

#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/clipboard.h"
#include "journal/journal.h"
#include "media/media_files.h"
#include "preview/frmPreview_events.h"
#include "project/ModuleProject.h"
#include "project/frmNewProject.h"

#include <functional>

namespace mdiTarnwick {

namespace {

forms::MdiTarnwick& form = forms::mdiTarnwick;

constexpr const char* kModule = "mdiTarnwick";

/// The program is busy, and no other project is opened, for as long as it lives.
class LoadSpan {
public:
    LoadSpan() { state::ProjectLoadLock = true; }
    ~LoadSpan()
    {
        state::ProjectLoadLock = false;
        state::OpeningRecentProject = false;
    }
    LoadSpan(const LoadSpan&) = delete;
    LoadSpan& operator=(const LoadSpan&) = delete;

private:
    media::OpeningSpan busy_;
};

bool isBusy() { return state::BusyOpening || state::ProjectLoadLock; }

void forgetChanges()
{
    state::ProjectModified = false;
    state::MediaListDirty = false;
}

/// True when it wrote, or nothing was to be written: there is nothing that a crash could take away.
bool isSavedBy(void (*save)())
{
    save();
    if (!state::SaveCancelled) {
        journal::end();
    }
    return !state::SaveCancelled;
}

/// What a question about unsaved changes was answered with: false when what asked it must stop.
bool mayGoOn(MessageAnswer answer)
{
    if (answer == MessageAnswer::kYes) {
        return isSavedBy(ModuleProject::SaveProject);
    }
    if (answer == MessageAnswer::kNo) {
        forgetChanges();
        journal::end();
        return true;
    }
    return false;
}

bool isProjectName(const std::string& path)
{
    const std::string extension = media::lastPiece(ModuleProject::NameOf(path));
    return extension == "QPJ" || extension == "qpj";
}

std::string chosenProject()
{
    constexpr std::size_t kNameBuffer = 3000; // characters
    OpenFileRequest request;
    request.filters = {{"Quillmont Project (*.qpj)", {"*.qpj"}}};
    request.bufferLength = kNameBuffer;
    return ports.dialogs->openFiles(request);
}

/// In place of what is there; work that nobody was asked about can be brought back. The caller holds the locks.
void openInstead(const std::string& path)
{
    journal::setAside("another project was opened");
    ModuleProject::EmptyProject();
    ModuleProject::OpenProject(path);
}

/// The caller holds the locks.
void openChosen(const std::string& path)
{
    const bool isProject = isProjectName(path);
    if (state::ProjectModified) {
        const std::string name =
            state::ProjectFilePath.empty() ? "Untitled.qpj" : ModuleProject::NameOf(state::ProjectFilePath);
        const MessageAnswer answer = askUser("Save changes to " + name + " ?", MessageButtons::kYesNoCancel);
        // What is given up for a file that is not opened stays, and stays unsaved.
        const bool isKept = answer == MessageAnswer::kNo && !isProject;
        if (!isKept && !mayGoOn(answer)) {
            return;
        }
    }
    if (!isProject) {
        tellUser("Invalid File Format.");
        return;
    }
    openInstead(path);
}

void closeProject()
{
    form.CloseCancelled = false;
    if (askUser("Are you sure you want to close the current project?", MessageButtons::kYesNo) != MessageAnswer::kYes) {
        form.CloseCancelled = true;
        return;
    }
    if ((state::ProjectModified || state::MediaListDirty)
        && !mayGoOn(ports.messages->show("Do you want to save your changes?", MessageIcon::kQuestion,
                                         MessageButtons::kYesNo, "Save Project"))) {
        form.CloseCancelled = true;
        return;
    }
    moduleEdit::ClearSourceClips();
    moduleEdit::ClearEffectClips();
    moduleEdit::ClearTransitionClips();
    ModuleProject::EmptyProject();
    state::ProjectOpenFailed = true;
    state::ProjectSaved = false;
    state::ProjectFilePath.clear();
    forgetChanges();
    ModuleProject::ShowProjectName("");
    media::say("Ready"); // what was said was of the project
}

/// False when nothing would be closed.
bool hasProject() { return !state::ProjectOpenFailed || state::FileCollection.Count() > 0; }

/// Asks what becomes of unsaved changes, and opens what `choose` answers.
void openBy(const std::function<std::string()>& choose)
{
    if (isBusy()) {
        return;
    }
    constexpr std::int32_t kCancelled = 32755;
    constexpr std::int32_t kFileExists = 58;
    constexpr std::int32_t kNameTooLong = 20476;
    const LoadSpan span;
    Trapped(kModule, "mnuFileOpenProject_Click", [&] { openChosen(choose()); },
            {{kCancelled, [] {}},
             {kFileExists, [] { tellUser("Unable to open Project, the Project file may be corrupt."); }},
             {kNameTooLong, [] { tellUser("Unable to open Project. Project path and/or filename is too long."); }}});
    EnableOrDisableMenuItems();
}

/// The dialogue and what follows its end, however it ended.
void showNewProject()
{
    if (frmNewProject::ShowModal()) {
        state::ProjectOpenFailed = false;
    }
    state::ProjectSaved = false;
    frmPreview::Resize();
    form.ProjectStarted = true;
}

} // namespace

void mnuFileNewProject_Click()
{
    if (isBusy()) {
        return;
    }
    Trapped(kModule, "mnuFileNewProject_Click", [] {
        if (form.ProjectStarted && hasProject()) {
            closeProject();
            if (form.CloseCancelled) {
                form.CloseCancelled = false;
                return;
            }
        }
        showNewProject();
    });
    EnableOrDisableMenuItems();
}

void mnuFileOpenProject_Click() { openBy(chosenProject); }

void OpenProjectFile(const std::string& path)
{
    openBy([&] { return path; });
}

void mnuFileRP_Click(std::size_t index)
{
    if (isBusy() || index >= form.mnuFileRP.size() || !form.mnuFileRP[index].Enabled) {
        return;
    }
    const LoadSpan span;
    const std::string path = form.mnuFileRP[index].Caption; // the menu may be made anew meanwhile
    Trapped(kModule, "mnuFileRP_Click", [&] {
        state::OpeningRecentProject = true;
        openInstead(path);
    });
    EnableOrDisableMenuItems();
}

void mnuFileCloseProject_Click()
{
    if (isBusy()) {
        return;
    }
    Trapped(kModule, "mnuFileCloseProject_Click", closeProject);
    EnableOrDisableMenuItems();
}

void mnuFileSaveProject_Click()
{
    if (isBusy()) {
        return;
    }
    isSavedBy(ModuleProject::SaveProject);
    EnableOrDisableMenuItems();
}

void mnuFileSaveProjectAs_Click()
{
    if (isBusy()) {
        return;
    }
    isSavedBy(ModuleProject::SaveProjectAs);
    EnableOrDisableMenuItems();
}

void OpenCommandLine(const std::string& path)
{
    if (path.empty() || path == "%1" || isBusy()) {
        return;
    }
    const LoadSpan span;
    Trapped(kModule, "MDIForm_Load", [&] {
        ports.events->letRun();
        ModuleProject::OpenProject(path);
    });
}

bool MayLoseProject()
{
    if (state::ProjectModified
        && !mayGoOn(askUser("Do you want save your changes before closing?", MessageButtons::kYesNoCancel))) {
        return false;
    }
    journal::end();
    return true;
}

} // namespace mdiTarnwick
