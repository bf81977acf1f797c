#include "shell/frmPreferences.h"

#include "core/file_text.h"
#include "core/forms/frmPreferences.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "disk/folder_trial.h"
#include "engine/ITWProfiles.h"
#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/text_buffer.h"
#include "export/compression_lists.h"
#include "export/frmProfileProperties.h"
#include "export/moduleProfiles.h"
#include "settings/ModuleSettings.h"
#include "settings/screen_language.h"

namespace frmPreferences {

using engine::check;
using engine::EngineAs;

namespace {

constexpr const char* kModule = "frmPreferences";
constexpr std::int16_t kSet = 1;
constexpr std::int32_t kUsualSetting = 1; // of three

forms::FrmPreferences& form = forms::frmPreferences;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void changed() { form.cmdApply.Enabled = true; }

/// Runs the handler, and then there is something to apply.
std::function<void()> andChanged(void (*handler)())
{
    return [handler] {
        handler();
        changed();
    };
}

// --- Lists ---------------------------------------------------------------------------------------------------------

void fillProfiles(forms::PreferredProfile& profile, bool isVideo)
{
    using frmAdvancedSaveOptions::profileOfSetting;
    profile.cboSetting.ListIndex.changed = nullptr;
    profile.cboProfile.ListIndex.changed = nullptr;
    profile.cboSetting.List = std::vector<std::string>{profileOfSetting(0, isVideo), profileOfSetting(1, isVideo),
                                                       profileOfSetting(2, isVideo)};
    ComboBox ignored; // the dialogue of a save has another list of settings
    frmAdvancedSaveOptions::FillWMFProfiles(profile.cboProfile, ignored, isVideo);
}

std::string descriptionOf(std::string_view name)
{
    constexpr std::size_t kLongestDescription = 5000;
    if (name.empty() || !moduleProfiles::OpenProfile(name)) {
        return {};
    }
    const auto profiles = EngineAs<engine::ITWProfiles>();
    std::string text =
        engine::textFrom(kLongestDescription, [&](auto buffer) { return profiles->GetProfileDescription(buffer); });
    check(profiles->CloseProfile());
    return text;
}

/// The profile of the setting, where one of the three is chosen.
void settingClicked(forms::PreferredProfile& profile)
{
    if (profile.cboSetting.ListIndex >= 0) {
        chooseText(profile.cboProfile, chosenText(profile.cboSetting));
    }
    profile.txtProfile = descriptionOf(chosenText(profile.cboProfile));
}

/// The other way round: the setting says which of the three it is, if any.
void profileClicked(forms::PreferredProfile& profile)
{
    if (!chooseText(profile.cboSetting, chosenText(profile.cboProfile))) {
        profile.cboSetting.ListIndex = -1;
    }
    profile.txtProfile = descriptionOf(chosenText(profile.cboProfile));
}

void fillLanguages()
{
    form.cboLanguage.ListIndex.changed = nullptr;
    std::vector<std::string> names;
    std::int32_t chosen = 0;
    for (const forms::Language& language : form.Languages) {
        if (language.code == ModuleSettings::screenLanguage()) {
            chosen = static_cast<std::int32_t>(names.size());
        }
        names.push_back(language.name);
    }
    form.cboLanguage.List = names;
    form.cboLanguage.ListIndex = names.empty() ? -1 : chosen;
}

void fillLists()
{
    constexpr std::int32_t kTooLong = 2000; // pixels
    form.cboVideoCompressorST.ListIndex.changed = nullptr;
    form.cboAudioCompressorST.ListIndex.changed = nullptr;
    frmAdvancedSaveOptions::FillVideoCompressors(form.cboVideoCompressorST);
    frmAdvancedSaveOptions::FillAudioCompressors(form.cboAudioCompressorST);
    frmAdvancedSaveOptions::startValues(form.Values, changed);
    dimension::reset(form.VideoDimension, frmAdvancedSaveOptions::videoDimensions(), kTooLong, changed);
    form.VideoDimension.chkLockAspectRatio.Value = kSet;
    fillLanguages();
    moduleProfiles::InitProfiles();
    moduleProfiles::EnumProfiles();
    fillProfiles(form.Video, true);
    fillProfiles(form.Audio, false);
}

void answerChanges()
{
    form.cboVideoCompressorST.ListIndex.changed = andChanged(cboVideoCompressorST_Click);
    form.cboAudioCompressorST.ListIndex.changed = changed;
    form.Video.cboSetting.ListIndex.changed = andChanged(OnCboVideoSettingClick);
    form.Audio.cboSetting.ListIndex.changed = andChanged(OnCboAudioSettingClick);
    form.Video.cboProfile.ListIndex.changed = andChanged(cboVideoProfile_Click);
    form.Audio.cboProfile.ListIndex.changed = andChanged(cboAudioProfile_Click);
    form.cboLanguage.ListIndex.changed = changed;
    form.txtPath.Text.changed = changed;
    form.chkPreview.Value.changed = changed;
    form.chkDoNotShowTutorial.Value.changed = changed;
    form.VideoDimension.chkLockAspectRatio.Value.changed = changed;
}

void forgetAnswers()
{
    form.txtPath.Text.changed = nullptr;
    form.chkPreview.Value.changed = nullptr;
    form.chkDoNotShowTutorial.Value.changed = nullptr;
    form.VideoDimension.chkLockAspectRatio.Value.changed = nullptr;
}

void load()
{
    form.tbSettings = std::string("GENERAL");
    forgetAnswers();
    fillLists();
    const std::string folder = state::WorkingFolder; // a new project may have its own, which looking leaves to it
    ModuleSettings::LoadPreferences();
    state::WorkingFolder = folder;
    answerChanges();
    cboVideoCompressorST_Click();
    OnCboVideoSettingClick();
    OnCboAudioSettingClick();
    form.cmdApply.Enabled = false;
}

// --- What a person does --------------------------------------------------------------------------------------------

void chooseColour(const char* handler, Shown<std::int32_t>& label)
{
    constexpr std::int32_t kCancelled = 32755;
    Trapped(kModule, handler,
            [&] {
                label = ports.dialogs->chooseColour(label);
                changed();
            },
            {{kCancelled, [] {}}});
}

/// Why new files cannot be kept there, for the person; empty when they can.
std::string troubleWith(const std::string& folder)
{
    constexpr std::int32_t kLongestWaitMs = 5000; // for a disk that may have gone to sleep
    if (!ports.machine->askVolume(folder + "/", kLongestWaitMs).hasAnswered) {
        return "The folder \"" + folder + "\" does not answer.\r\nPlease choose another working folder.";
    }
    return disk::troubleWithFolder(folder);
}

/// Stored, and seen at once; false when the folder cannot be one, and the person knows.
bool apply()
{
    if (const std::string trouble = troubleWith(form.txtPath.Text.get()); !trouble.empty()) {
        tellUser(trouble);
        form.tbSettings = std::string("GENERAL");
        if (form.txtPath.SetFocus) {
            form.txtPath.SetFocus();
        }
        return false;
    }
    ModuleSettings::StorePreferences();
    if (form.cboLanguage.ListIndex >= 0) {
        ModuleSettings::keepScreenLanguage(
            form.Languages.at(static_cast<std::size_t>(form.cboLanguage.ListIndex)).code);
    }
    ModuleSettings::AddColorToBars();
    return true;
}

} // namespace

void ShowModal()
{
    Form_Load();
    ShowDialogue(kModule, showDialogue);
    Form_Unload();
}

void Form_Load()
{
    const WaitCursor wait;
    Trapped(kModule, "Form_Load", load);
}

void Form_Unload() { moduleProfiles::UnInitProfiles(); }

void cmdVideo_Click() { chooseColour("cmdVideo_Click", form.lblVideoColor); }
void cmdAudio_Click() { chooseColour("cmdAudio_Click", form.lblAudioColor); }
void cmdEffects_Click() { chooseColour("cmdEffects_Click", form.lblEffectColor); }
void cmdOverlays_Click() { chooseColour("cmdOverlays_Click", form.lblOverlayColor); }

void cmdDefault_Click()
{
    Trapped(kModule, "cmdDefault_Click", [] {
        form.lblVideoColor = 0xFFFF80;
        form.lblAudioColor = 0x80FFFF;
        form.lblEffectColor = 0x80FF80;
        form.lblOverlayColor = 0xC0E0FF;
        form.txtPath.Text = ModuleSettings::workingFolderDefault();
        form.chkPreview.Value = kSet;
        form.chkDoNotShowTutorial.Value = std::int16_t{0};
        form.cboLanguage.ListIndex = form.Languages.empty() ? -1 : 0;
        changed();
    });
}

void cmdBrowse_Click()
{
    Trapped(kModule, "cmdBrowse_Click", [] {
        const std::string folder =
            file_text::WithoutSeparator(ports.dialogs->pickFolder("Select a Folder", form.txtPath.Text.get()));
        if (!folder.empty()) {
            form.txtPath.Text = folder;
        }
    });
}

void cboVideoCompressorST_Click()
{
    Trapped(kModule, "cboVideoCompressorST_Click", [] {
        check(EngineAs<engine::ITWSave>()->SetVideoCompressor(chosenText(form.cboVideoCompressorST)));
        frmAdvancedSaveOptions::enableByCompressor(form.Values);
    });
}

void cmdDefaultSO_Click()
{
    Trapped(kModule, "cmdDefaultSO_Click", [] {
        constexpr std::int32_t kUsualRate = 15;
        constexpr std::int32_t kUsualQuality = 75;
        chooseText(form.cboVideoCompressorST, frmAdvancedSaveOptions::kUncompressed);
        chooseText(form.cboAudioCompressorST, frmAdvancedSaveOptions::kUncompressed);
        for (auto* const value : {&form.Values.FrameRate, &form.Values.KeyFrameRate, &form.Values.PFrameFrequency}) {
            value->sld.SetValue(kUsualRate);
        }
        form.Values.Quality.sld.SetValue(kUsualQuality);
        form.VideoDimension.chkLockAspectRatio.Value = kSet;
        dimension::choose(form.VideoDimension, "320 x 240");
        changed();
    });
}

void OnCboVideoSettingClick()
{
    Trapped(kModule, "OnCboVideoSettingClick", [] { settingClicked(form.Video); });
}

void OnCboAudioSettingClick()
{
    Trapped(kModule, "OnCboAudioSettingClick", [] { settingClicked(form.Audio); });
}

void cboVideoProfile_Click()
{
    Trapped(kModule, "cboVideoProfile_Click", [] { profileClicked(form.Video); });
}

void cboAudioProfile_Click()
{
    Trapped(kModule, "cboAudioProfile_Click", [] { profileClicked(form.Audio); });
}

void cmdVideoProperties_Click() { frmProfileProperties::ShowModal(chosenText(form.Video.cboProfile)); }
void cmdAudioProperties_Click() { frmProfileProperties::ShowModal(chosenText(form.Audio.cboProfile)); }

void cmdVideoDefault_Click() { form.Video.cboSetting.ListIndex = kUsualSetting; }
void cmdAudioDefault_Click() { form.Audio.cboSetting.ListIndex = kUsualSetting; }

void cmdOk_Click()
{
    Trapped(kModule, "cmdOk_Click", [] {
        if (apply()) {
            close();
        }
    });
}

void cmdApply_Click()
{
    Trapped(kModule, "cmdApply_Click", [] {
        if (apply()) {
            form.cmdApply.Enabled = false;
        }
    });
}

void cmdCancel_Click() { close(); }

void Command1_Click() { ShowHelp("2_2_Understanding_Preferences.htm"); }

} // namespace frmPreferences
