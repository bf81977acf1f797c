#include "capture/frmCaptureOptions.h"

#include "capture/applied_options.h"
#include "capture/entries.h"
#include "capture/frmCapture.h"
#include "capture/live_picture.h"
#include "capture/moduleCaptureSnap.h"
#include "core/file_text.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureOptions.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "export/compression_lists.h"
#include "export/frmProfileProperties.h"
#include "export/moduleProfiles.h"

#include <utility>

namespace frmCaptureOptions {

namespace {

constexpr const char* kModule = "frmCaptureOptions";
constexpr std::int16_t kAsf = 1;
constexpr std::int32_t kOther = 3; // the setting that leaves the profile to the person

forms::FrmCaptureOptions& form = forms::frmCaptureOptions;
forms::FrmCapture& session = forms::frmCapture;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void enableApply(bool isOn)
{
    form.cmdOK.Enabled = isOn;
    form.cmdApply.Enabled = isOn;
}

void changed() { enableApply(true); }

// --- Opening -------------------------------------------------------------------------------------------------------

void fillDevices(ComboBox& box, std::string (*deviceAt)(std::int16_t), const std::string& chosen)
{
    std::vector<std::string> names;
    for (std::int16_t index = 0;; ++index) {
        std::string name = deviceAt(index);
        if (name.empty()) {
            break;
        }
        names.push_back(std::move(name));
    }
    box.ListIndex = -1;
    box.List = std::move(names);
    if (!chooseText(box, chosen) && !box.List.get().empty()) {
        box.ListIndex = 0;
    }
}

void forgetAnswers()
{
    for (auto* const box : {&form.cmbVideoDevices, &form.cmbAudioDevices, &form.cmbVideoCompressors,
                            &form.cmbAudioCompressors, &form.Profile.cboSetting, &form.Profile.cboProfile}) {
        box->ListIndex.changed = nullptr;
    }
    form.txtSnapFolder.Text.changed = nullptr;
    form.tbs.changed = nullptr;
    form.SnapDimension.chkLockAspectRatio.Value.changed = nullptr;
}

void answerChanges()
{
    for (auto* const box :
         {&form.cmbVideoDevices, &form.cmbAudioDevices, &form.cmbVideoCompressors, &form.cmbAudioCompressors}) {
        box->ListIndex.changed = changed;
    }
    form.Profile.cboSetting.ListIndex.changed = [] {
        cboSetting_Click();
        changed();
    };
    form.Profile.cboProfile.ListIndex.changed = [] {
        cboProfile_Click();
        changed();
    };
    form.txtSnapFolder.Text.changed = changed;
    form.tbs.changed = changed;
    form.SnapDimension.chkLockAspectRatio.Value.changed = changed;
}

/// The profile of the captures where there is one, else that of the saves.
void fillProfiles()
{
    frmAdvancedSaveOptions::FillWMFSetting(form.Profile.cboSetting);
    frmAdvancedSaveOptions::FillWMFProfiles(form.Profile.cboProfile, form.Profile.cboSetting, true);
    if (!session.CaptureProfileName.empty() && chooseText(form.Profile.cboProfile, session.CaptureProfileName)) {
        std::int32_t setting = 0;
        while (setting < kOther
               && frmAdvancedSaveOptions::profileOfSetting(setting, true) != session.CaptureProfileName) {
            ++setting;
        }
        form.Profile.cboSetting.ListIndex = setting;
    }
    cboProfile_Click();
    cboSetting_Click();
}

void fillSnapDimension()
{
    constexpr std::int32_t kTooLong = 2000; // pixels
    dimension::reset(
        form.SnapDimension,
        {"160 x 120", "320 x 240", "640 x 480", "720 x 480", "800 x 600", "1024 x 768", dimension::kCustom}, kTooLong,
        changed);
    form.SnapDimension.chkLockAspectRatio.Value = std::int16_t{1};
}

void chooseCompressor(ComboBox& box, const std::string& name)
{
    chooseText(box, name.empty() ? frmAdvancedSaveOptions::kUncompressed : name);
}

void load()
{
    constexpr int kTrueColour = 24;
    forgetAnswers();
    if (std::exchange(session.MustEnumProfiles, false)) {
        moduleProfiles::EnumProfiles();
    }
    fillProfiles();
    fillSnapDimension();
    form.tbs = std::string("SAVE");
    form.TakeSnapTabVisible = ports.shell->colourDepth() >= kTrueColour;
    fillDevices(form.cmbVideoDevices, capture::videoDeviceAt, session.VideoDeviceName);
    fillDevices(form.cmbAudioDevices, capture::audioDeviceAt, session.AudioDeviceName);
    frmAdvancedSaveOptions::FillVideoCompressors(form.cmbVideoCompressors);
    frmAdvancedSaveOptions::FillAudioCompressors(form.cmbAudioCompressors);
    chooseCompressor(form.cmbVideoCompressors, session.CaptureVideoCompressor);
    chooseCompressor(form.cmbAudioCompressors, session.CaptureAudioCompressor);
    SelectedOption(session.CaptureFormat == kAsf ? kAsf : std::int16_t{0});
    LoadTakeSnapOptions();
    answerChanges();
    enableApply(false);
}

// --- Applying ------------------------------------------------------------------------------------------------------

void confirm()
{
    capture::stop();
    if (!capture::applyOptions(capture::Options::kAll)) {
        return;
    }
    close();
}

// --- Stills --------------------------------------------------------------------------------------------------------

/// Of the size only where it counts.
void EnableCustomDimension()
{
    const bool isCustom = form.optSaveSnapOthDim && chosenText(form.SnapDimension.cboDimension) == dimension::kCustom;
    form.SnapDimension.fmeCustomPreviewEnabled = isCustom;
    form.SnapDimension.lblIntoEnabled = isCustom;
    form.SnapDimension.txtWidth.Enabled = isCustom;
    form.SnapDimension.txtHeight.Enabled = isCustom;
    form.SnapDimension.chkLockAspectRatio.Enabled = isCustom;
}

void EnableSaveSnapCapDim(bool isOther)
{
    form.optSaveSnapOthDim = isOther;
    form.SnapDimension.cboDimension.Enabled = isOther;
    EnableCustomDimension();
}

} // namespace

void ShowModal()
{
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void Form_Load()
{
    const WaitCursor wait;
    Trapped(kModule, "Form_Load", load);
}

void SelectedOption(std::int16_t asf)
{
    const bool isAsf = asf == kAsf;
    form.optASF = isAsf;
    form.cmbVideoCompressors.Enabled = !isAsf;
    form.cmbAudioCompressors.Enabled = !isAsf;
    form.Profile.cboSetting.Enabled = isAsf;
    form.Profile.cboProfile.Enabled = isAsf;
    form.Profile.txtProfile.Enabled = isAsf;
    form.cmdCustomProfile.Enabled = isAsf;
}

void optAVI_Click()
{
    SelectedOption(0);
    changed();
}

void optASF_Click()
{
    SelectedOption(kAsf);
    changed();
}

void cboSetting_Click()
{
    Trapped(kModule, "cboSetting_Click", [] {
        const std::int32_t setting = form.Profile.cboSetting.ListIndex;
        ComboBox& profiles = form.Profile.cboProfile;
        if (profiles.ListIndex < 0 || setting < 0 || setting > kOther) {
            return;
        }
        const bool isChosenBySetting = setting < kOther;
        profiles.Visible = !isChosenBySetting;
        form.Profile.txtProfileVisible = isChosenBySetting;
        if (isChosenBySetting && !chooseText(profiles, frmAdvancedSaveOptions::profileOfSetting(setting, true))) {
            profiles.ListIndex = 0;
        }
        form.Profile.txtProfile.Text = chosenText(profiles);
    });
}

void cboProfile_Click() { form.Profile.txtProfile.Text = chosenText(form.Profile.cboProfile); }

void cmdCustomProfile_Click()
{
    Trapped(kModule, "cmdCustomProfile_Click",
            [] { frmProfileProperties::ShowModal(chosenText(form.Profile.cboProfile)); });
}

void cmdDefaultSO_Click()
{
    SelectedOption(0);
    chooseText(form.cmbVideoCompressors, frmAdvancedSaveOptions::kUncompressed);
    chooseText(form.cmbAudioCompressors, frmAdvancedSaveOptions::kUncompressed);
    for (auto* const box : {&form.cmbVideoDevices, &form.cmbAudioDevices}) {
        box->ListIndex = box->List.get().empty() ? -1 : 0;
    }
    changed();
}

void LoadTakeSnapOptions()
{
    form.txtSnapFolder.Text = moduleCaptureSnap::SnapFolder;
    dimension::choose(form.SnapDimension,
                      dimension::textOf(moduleCaptureSnap::SnapWidth, moduleCaptureSnap::SnapHeight));
    EnableSaveSnapCapDim(!moduleCaptureSnap::SnapUseCaptureDimension);
}

void SaveTakeSnapOptions()
{
    const std::string folder = file_text::Trimmed(form.txtSnapFolder.Text.get());
    if (!folder.empty()) {
        moduleCaptureSnap::SetSnapFolder(folder);
    }
    moduleCaptureSnap::SnapWidth =
        dimension::sideIn(form.SnapDimension.txtWidth).value_or(moduleCaptureSnap::SnapWidth);
    moduleCaptureSnap::SnapHeight =
        dimension::sideIn(form.SnapDimension.txtHeight).value_or(moduleCaptureSnap::SnapHeight);
    moduleCaptureSnap::SnapUseCaptureDimension = !form.optSaveSnapOthDim;
    moduleCaptureSnap::StoreSettings();
}

void optSaveSnapCapDim_Click()
{
    EnableSaveSnapCapDim(false);
    changed();
}

void optSaveSnapOthDim_Click()
{
    EnableSaveSnapCapDim(true);
    changed();
}

void cmdSnapFolderBrowse_Click()
{
    Trapped(kModule, "cmdSnapFolderBrowse_Click", [] {
        const std::string folder =
            file_text::WithoutSeparator(ports.dialogs->pickFolder("Select a Folder", state::WorkingFolder));
        if (!folder.empty()) {
            form.txtSnapFolder.Text = folder;
        }
    });
}

void cmdOK_Click() { Trapped(kModule, "cmdOK_Click", confirm); }

void cmdApply_Click()
{
    Trapped(kModule, "cmdApply_Click", [] {
        if (capture::applyOptions(capture::Options::kDevices)) {
            enableApply(false);
        }
    });
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click() { ShowHelp("3_6A_1_2_Capture_Menu.htm#Options"); }

} // namespace frmCaptureOptions
