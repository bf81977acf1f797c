#include "capture/frmCaptureValues.h"

#include "core/file_text.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureValues.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "media/working_folder.h"

#include <algorithm>
#include <filesystem>

namespace frmCaptureValues {

namespace {

constexpr const char* kModule = "frmCaptureValues";
constexpr const char* kStart = "Start";

forms::FrmCaptureValues& form = forms::frmCaptureValues;
forms::FrmCapture& session = forms::frmCapture;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

std::string extension() { return session.CaptureFormat == 1 ? "asf" : "avi"; }

void load()
{
    form.chkShowWindow.Value.changed = nullptr;
    const std::string file = file_text::Trimmed(session.CaptureFile);
    form.txtCaptureFile.Text = file.empty() ? media::inWorkingFolder("Capture." + extension()) : file;
    form.chkShowWindow.Value = static_cast<std::int16_t>(session.ShowStartDialog == 0 ? 1 : 0);
    const bool isTimed = session.StopMode == 1;
    form.optDurationStop = isTimed;
    form.txtDuration.Enabled = isTimed;
    form.txtDuration.Text = isTimed ? std::to_string(session.CaptureDuration) : std::string();
    form.chkShowWindow.Value.changed = chkShowWindow_Click;
}

/// The dialogue stays, with the box to be mended.
void refuseDuration(const char* text)
{
    tellUser(text);
    if (form.txtDuration.SetFocus) {
        form.txtDuration.SetFocus();
    }
}

void refuseNoDuration() { refuseDuration("Please specify a valid capture duration."); }

void browse()
{
    const std::string name = session.CaptureFormat == 1 ? "Asf File" : "Avi File";
    const std::filesystem::path present(media::inWorkingFolder(file_text::Trimmed(form.txtCaptureFile.Text.get())));
    form.txtCaptureFile.Text = ports.dialogs->saveFile({.filters = {{name, {"*." + extension()}}},
                                                        .folder = present.parent_path().string(),
                                                        .defaultExtension = extension(),
                                                        .name = present.filename().string()});
}

void store()
{
    if (session.StopMode == 1) {
        const std::string text = file_text::Trimmed(form.txtDuration.Text.get());
        if (text.empty()) {
            refuseNoDuration();
            return;
        }
        const double seconds = numbers::fromText(text);
        if (seconds < 0) {
            refuseNoDuration();
            return;
        }
        session.CaptureDuration = numbers::rounded<std::int32_t>(seconds);
    }
    session.CaptureFile = file_text::Trimmed(form.txtCaptureFile.Text.get());
    close();
}

} // namespace

void ShowModal(const std::string& title, const std::string& okCaption)
{
    form.Caption = title;
    form.cmdOK = okCaption;
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void Form_Load() { Trapped(kModule, "Form_Load", load); }

void chkShowWindow_Click()
{
    session.ShowStartDialog = static_cast<std::int16_t>(form.chkShowWindow.Value != 0 ? 0 : 1);
}

void optManualStop_Click()
{
    session.StopMode = 0;
    form.optDurationStop = false;
    form.txtDuration.Enabled = false;
}

void optDurationStop_Click()
{
    if (form.optDurationStop) {
        return; // what was typed stays
    }
    session.StopMode = 1;
    form.optDurationStop = true;
    form.txtDuration.Enabled = true;
    form.txtDuration.Text = std::to_string(session.CaptureDuration);
}

bool txtDuration_KeyPress(std::int32_t code)
{
    // Digits, the point and the step back; and what the codes of two arrow keys stand for among the letters.
    constexpr std::int32_t kOthers[] = {46, 8, 39, 37};
    return (code >= '0' && code <= '9') || std::ranges::find(kOthers, code) != std::end(kOthers);
}

void cmdBrowse_Click()
{
    constexpr std::int32_t kCancelled = 32755;
    Trapped(kModule, "cmdBrowse_Click", browse, {{kCancelled, [] {}}});
}

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", store,
            {{engine::error_number::kTypeMismatch, refuseNoDuration},
             {engine::error_number::kOverflow,
              [] { refuseDuration("The capture duration is too long. Please specify at most 2147483647 seconds."); }}});
}

void cmdCancel_Click()
{
    if (form.cmdOK.get() == kStart) {
        session.CaptureAllowed = false;
    }
    close();
}

void cmdHelp_Click() { ShowHelp("3_6A_1_1_File_Menu.htm#SetCaptureFile"); }

} // namespace frmCaptureValues
