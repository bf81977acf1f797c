#include "project/frmNewProject.h"

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmNewProject.h"
#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "disk/folder_trial.h"
#include "preview/frame_offer.h"

#include <optional>
#include <string>

namespace frmNewProject {

namespace {

forms::FrmNewProject& form = forms::frmNewProject;

constexpr const char* kModule = "frmNewProject";

/// Those of computer screens first, then those of television, screens and phones today.
const std::vector<std::string> kDimensions = {"160 x 120",   "320 x 240",   "640 x 480",       "720 x 480",
                                              "800 x 600",   "1024 x 768",  "640 x 360",       "720 x 576",
                                              "1280 x 720",  "1920 x 1080", "2560 x 1440",     "3840 x 2160",
                                              "1080 x 1920", "1080 x 1080", dimension::kCustom};

/// Pixels; nothing when it is none that a movie can have.
std::optional<std::int16_t> sideIn(const TextBox& box)
{
    const auto side = dimension::sideIn(box);
    const bool isWithin = side && *side >= frmPreview::kLeastFrameSide && *side <= frmPreview::kMostFrameSide;
    return isWithin ? side : std::nullopt;
}

void refuse(const std::string& text, const TextBox& box)
{
    tellUser(text);
    if (box.SetFocus) {
        box.SetFocus();
    }
}

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void startProject(std::int16_t width, std::int16_t height, const std::string& folder)
{
    frmPreview::SetFrameSize(width, height);
    state::WorkingFolder = folder;
    forms::frmMediaList.Caption = std::string("Media List - Project: Untitled");
    constexpr std::int16_t kDefaultPointer = 0;
    forms::mdiTarnwick.MousePointer = kDefaultPointer;
    form.IsAccepted = true;
    close();
    UpdatePreview(); // what lies on the timeline is laid out anew
}

} // namespace

bool ShowModal()
{
    Form_Load();
    Trapped(kModule, "ShowModal", [] {
        if (showDialogue) {
            showDialogue();
        }
    });
    return form.IsAccepted;
}

void Form_Load()
{
    Trapped(kModule, "Form_Load", [] {
        form.IsAccepted = false;
        constexpr std::int32_t kNoLimit = 0; // what is typed is asked for at the end
        dimension::reset(form.PreviewDimension, kDimensions, kNoLimit);
        cmdDefault_Click();
    });
}

void cmdBrowse_Click()
{
    Trapped(kModule, "cmdBrowse_Click", [] {
        const std::string chosen = ports.dialogs->pickFolder("Select a Folder", state::WorkingFolder);
        if (!chosen.empty()) {
            form.txtPath.Text = file_text::WithoutSeparator(chosen);
        }
    });
}

void cmdDefault_Click()
{
    Trapped(kModule, "cmdDefault_Click", [] {
        form.txtPath.Text = state::WorkingFolder;
        form.PreviewDimension.chkLockAspectRatio.Value = std::int16_t{1};
        dimension::choose(form.PreviewDimension, "320 x 240");
    });
}

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] {
        const auto width = sideIn(form.PreviewDimension.txtWidth);
        const auto height = sideIn(form.PreviewDimension.txtHeight);
        const std::string folder = file_text::WithoutSeparator(form.txtPath.Text.get());
        if (!width || !height) {
            refuse("The width and the height must be numbers from " + std::to_string(frmPreview::kLeastFrameSide)
                       + " to " + std::to_string(frmPreview::kMostFrameSide) + ".",
                   width ? form.PreviewDimension.txtHeight : form.PreviewDimension.txtWidth);
        } else if (const std::string trouble = disk::troubleWithFolder(folder); !trouble.empty()) {
            refuse(trouble, form.txtPath);
        } else {
            startProject(*width, *height, folder);
        }
    });
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click() { ShowHelp("3_4_1_Creating_New_Project.htm"); }

} // namespace frmNewProject
