// What the window does with what was captured, and the dialogues that it opens.

#include "capture/entries.h"
#include "capture/frmCapture.h"
#include "capture/frmCaptureOptions.h"
#include "capture/frmCaptureValues.h"
#include "capture/live_picture.h"
#include "capture/moduleCaptureSnap.h"
#include "core/file_text.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"
#include "settings/recent_lists.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace frmCapture {

using engine::check;

namespace {

constexpr const char* kModule = "frmCapture";

forms::FrmCapture& form = forms::frmCapture;
bool isSnapping = false;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

/// With the desktop's program. One that would not come may hold the device, so the picture is brought anew.
void play(const std::string& path)
{
    engine::Bool16 exists = engine::kFalse;
    check(engine::Engine->FileExists(path, exists));
    if (exists == engine::kFalse) {
        tellUser("File not found.");
    } else if (!ports.shell->openWithDesktop(path)) {
        tellUser("Application Access Failure.");
        capture::stop();
        capture::goLive(capture::liveWindow());
    }
}

/// Unless it is among the recent files already.
void noteRecent(const std::string& path)
{
    if (std::ranges::none_of(forms::mdiTarnwick.mnuFileRF,
                             [&](const Menu& recent) { return recent.Caption.get() == path; })) {
        ModuleSettings::UpdateResentFileMenu();
    }
}

void addToMediaList(const std::string& path)
{
    if (state::BusyOpening) {
        return;
    }
    const media::OpeningSpan span;
    const std::int32_t rowsBefore = forms::frmMediaList.lvwMediaList.Count();
    moduleTarnwick::OpenResentFile(path);
    if (forms::frmMediaList.lvwMediaList.Count() > rowsBefore) {
        state::markModified();
        noteRecent(path);
        form.sbr.Panel(1) = file_text::ExtractFileName(path) + " is in the media list.";
    }
    EnableOrDisableMenuItems();
}

void saveAs()
{
    const std::filesystem::path last(form.LastCapturedFile);
    const std::string extension = last.extension() == ".asf" ? "asf" : "avi";
    const std::string chosen = ports.dialogs->saveFile({.filters = {{"Avi files", {"*.avi"}}, {"Asf files", {"*.asf"}}},
                                                        .folder = last.parent_path().string(),
                                                        .defaultExtension = extension,
                                                        .name = last.filename().string()});
    form.sbr.Panel(1) = std::string("Saving...");
    ports.events->letRun(); // the text is to be seen
    file_text::CopyFileWithShell(form.LastCapturedFile, chosen);
    form.sbr.Panel(1) = std::string();
}

void takeSnap()
{
    capture::showSnapping(true);
    ports.events->letRun(); // the window shows it; somebody may do something meanwhile
    if (form.mnuToolsTakeSnap.Enabled) {
        form.sbr.Panel(1) = moduleCaptureSnap::TakeSnapFile();
    }
}

} // namespace

void mnuFileSetCapFile_Click() { frmCaptureValues::ShowModal("Set Capture File", "OK"); }

void mnuFilePLCFile_Click()
{
    Trapped(kModule, "mnuFilePLCFile_Click", [] { play(form.LastCapturedFile); });
}

void mnuFilePLCFrame_Click()
{
    Trapped(kModule, "mnuFilePLCFrame_Click", [] { play(form.LastSnapFile); });
}

void mnuFileSaveas_Click()
{
    constexpr std::int32_t kCancelled = 32755;
    Trapped(kModule, "mnuFileSaveas_Click", saveAs, {{kCancelled, [] {}}});
}

void mnuFileExit_Click()
{
    if (IsCapturing()) {
        mnuCaptureStop_Click(); // the file is whole, and the last one
    }
    close();
}

void mnuCaptureLCFtoML_Click()
{
    Trapped(kModule, "mnuCaptureLCFtoML_Click", [] { addToMediaList(form.LastCapturedFile); });
}

void mnuCaptureLStoML_Click()
{
    Trapped(kModule, "mnuCaptureLStoML_Click", [] { addToMediaList(form.LastSnapFile); });
}

void mnuCaptureOptions_Click() { frmCaptureOptions::ShowModal(); }

void mnuToolsTakeSnap_Click()
{
    if (std::exchange(isSnapping, true)) {
        return;
    }
    Trapped(kModule, "mnuToolsTakeSnap_Click", takeSnap);
    capture::showSnapping(false);
    isSnapping = false;
}

void mnuHelpContents_Click() { ShowHelp("3_6A_Capturing_Media.htm"); }

void tbr_ButtonClick(std::string_view key)
{
    struct Command {
        std::string_view key;
        const Menu* entry;
        void (*run)();
    };
    static const Command kCommands[] = {
        {"SET_CAPTURE_FILE", &form.mnuFileSetCapFile, mnuFileSetCapFile_Click},
        {"START_CAPTURE", &form.mnuCaptureStart, mnuCaptureStart_Click},
        {"STOP_CAPTURE", &form.mnuCaptureStop, mnuCaptureStop_Click},
        {"TAKE_SNAP", &form.mnuToolsTakeSnap, mnuToolsTakeSnap_Click},
        {"OPTIONS", &form.mnuCaptureOptions, mnuCaptureOptions_Click},
        {"HELP", &form.mnuHelpContents, mnuHelpContents_Click},
        {"CAPTURE_SETTINGS", &form.mnuCaptureCameraSettings, mnuCaptureCameraSettings_Click},
        {"CAPTURE_SETTINGS", &form.mnuToolsVideoSettings, mnuToolsVideoSettings_Click},
        {"CAPTURE_SETTINGS", &form.mnuToolsAudioFromats, mnuToolsAudioFromats_Click},
        {"CAPTURE_SETTINGS", &form.mnuToolsAudioSettings, mnuToolsAudioSettings_Click}};
    for (const Command& command : kCommands) {
        if (command.key == key && command.entry->Enabled) {
            command.run();
            return;
        }
    }
}

} // namespace frmCapture
