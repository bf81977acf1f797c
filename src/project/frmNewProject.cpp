#include "project/frmNewProject.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmNewProject.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "disk/whole_file.h"
#include "preview/frame_offer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace frmNewProject {

namespace {

namespace fs = std::filesystem;

forms::FrmNewProject& form = forms::frmNewProject;

constexpr const char* kModule = "frmNewProject";
constexpr std::int16_t kSet = 1;
constexpr double kStartWidth = 320;
constexpr double kStartHeight = 240;
constexpr const char* kStartDimension = "320 x 240";
constexpr const char* kCustom = "Custom";

/// Those of computer screens first, then those of television, screens and phones today.
const std::vector<std::string> kDimensions = {"160 x 120",   "320 x 240",   "640 x 480",   "720 x 480",   "800 x 600",
                                              "1024 x 768",  "640 x 360",   "720 x 576",   "1280 x 720",  "1920 x 1080",
                                              "2560 x 1440", "3840 x 2160", "1080 x 1920", "1080 x 1080", kCustom};

std::optional<double> numberIn(const TextBox& box)
{
    try {
        return numbers::fromText(box.Text.get());
    } catch (const engine::RuntimeError&) { // NOLINT: the person is still typing
        return std::nullopt;
    }
}

/// Up to fifteen digits, as many as it takes.
std::string textOf(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", number);
    return text;
}

/// A change of one box sets the other one, and is not answered by it.
void keepRatio(const TextBox& changed, TextBox& other, double ratio)
{
    const auto number = numberIn(changed);
    if (form.DimensionGuard && changed.Enabled && form.chkLockAspectRatio.Value == kSet && number) {
        form.DimensionGuard = false;
        other.Text = textOf(*number * ratio);
        form.DimensionGuard = true;
    }
}

void EnableCustomDimension(bool isCustom)
{
    form.fmeCustomPreviewEnabled = isCustom;
    form.txtWidth.Enabled = isCustom;
    form.txtHeight.Enabled = isCustom;
    form.chkLockAspectRatio.Enabled = isCustom;
    form.lblIntoEnabled = isCustom;
}

void chooseDimension(std::string_view dimension)
{
    const auto& list = form.cboPreviewDimension.List.get();
    form.cboPreviewDimension.ListIndex = static_cast<std::int32_t>(std::ranges::find(list, dimension) - list.begin());
}

std::string withoutSeparator(std::string folder)
{
    while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with('\\'))) {
        folder.pop_back();
    }
    return folder;
}

/// Pixels; nothing when it is none that a movie can have.
std::optional<std::int16_t> sideIn(const TextBox& box)
{
    const auto number = numberIn(box);
    if (!number || std::abs(*number) > frmPreview::kMostFrameSide + 1) {
        return std::nullopt;
    }
    const auto side = numbers::rounded<std::int16_t>(*number);
    const bool isWithin = side >= frmPreview::kLeastFrameSide && side <= frmPreview::kMostFrameSide;
    return isWithin ? std::optional(side) : std::nullopt;
}

/// Why new files cannot be kept there, for the person; empty when they can.
std::string troubleWith(const std::string& folder)
{
    constexpr const char* kNext = "\r\nPlease choose another working folder.";
    std::error_code error;
    const fs::path path(folder);
    const fs::file_status there = fs::status(path, error);
    if (!path.is_absolute() || !fs::is_directory(there)) {
        return "There is no folder \"" + folder + "\"." + kNext;
    }
    std::string closed = "No files can be made in the folder \"" + folder + "\"." + kNext;
    if ((there.permissions() & fs::perms::owner_write) == fs::perms::none) {
        return closed; // root could; but nobody is meant to
    }
    try {
        const disk::WholeFile trial((path / ".quillmont-trial").string()); // gone again with its object
        return {};
    } catch (const disk::Refused&) { // NOLINT: the reason is the folder's
        return closed;
    }
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
        form.DimensionGuard = true;
        form.AspectRatio = kStartWidth / kStartHeight;
        form.txtWidth.Text.changed = txtWidth_Change;
        form.txtHeight.Text.changed = txtHeight_Change;
        form.cboPreviewDimension.ListIndex.changed = nullptr;
        form.cboPreviewDimension.ListIndex = -1;
        form.cboPreviewDimension.List = kDimensions;
        form.cboPreviewDimension.ListIndex.changed = cboPreviewDimension_Click;
        cmdDefault_Click();
    });
}

void cboPreviewDimension_Click()
{
    Trapped(kModule, "cboPreviewDimension_Click", [] {
        const auto& list = form.cboPreviewDimension.List.get();
        const auto place = static_cast<std::size_t>(form.cboPreviewDimension.ListIndex.get());
        if (place >= list.size()) {
            return;
        }
        const std::string& chosen = list[place];
        EnableCustomDimension(chosen == kCustom); // first: a box that is off does not answer
        if (chosen != kCustom) {
            form.txtWidth.Text = chosen.substr(0, chosen.find(' '));
            form.txtHeight.Text = chosen.substr(chosen.rfind(' ') + 1);
        }
    });
}

void txtWidth_Change()
{
    Trapped(kModule, "txtWidth_Change", [] { keepRatio(form.txtWidth, form.txtHeight, 1 / form.AspectRatio); });
}

void txtHeight_Change()
{
    Trapped(kModule, "txtHeight_Change", [] { keepRatio(form.txtHeight, form.txtWidth, form.AspectRatio); });
}

void cmdBrowse_Click()
{
    Trapped(kModule, "cmdBrowse_Click", [] {
        const std::string chosen = ports.dialogs->pickFolder("Select a Folder", state::WorkingFolder);
        if (!chosen.empty()) {
            form.txtPath.Text = withoutSeparator(chosen);
        }
    });
}

void cmdDefault_Click()
{
    Trapped(kModule, "cmdDefault_Click", [] {
        form.txtPath.Text = state::WorkingFolder;
        form.chkLockAspectRatio.Value = kSet;
        chooseDimension(kStartDimension);
    });
}

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] {
        const auto width = sideIn(form.txtWidth);
        const auto height = sideIn(form.txtHeight);
        const std::string folder = withoutSeparator(form.txtPath.Text.get());
        if (!width || !height) {
            refuse("The width and the height must be numbers from " + std::to_string(frmPreview::kLeastFrameSide)
                       + " to " + std::to_string(frmPreview::kMostFrameSide) + ".",
                   width ? form.txtHeight : form.txtWidth);
        } else if (const std::string trouble = troubleWith(folder); !trouble.empty()) {
            refuse(trouble, form.txtPath);
        } else {
            startProject(*width, *height, folder);
        }
    });
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click() { ShowHelp("3_4_1_Creating_New_Project.htm"); }

} // namespace frmNewProject
