// The values of the settings and the dialogue of the preferences.

#include "core/forms/frmPreferences.h"
#include "core/shared_state.h"
#include "core/show.h"
#include "core/trap.h"
#include "settings/ModuleSettings.h"

namespace ModuleSettings {

namespace {

constexpr std::string_view kModule = "ModuleSettings";
constexpr const char* kUncompressed = "Uncompressed";

forms::FrmPreferences& form = forms::frmPreferences;

void choose(ComboBox& list, const std::string& text, const char* otherwise)
{
    if (!chooseText(list, text)) {
        chooseText(list, otherwise);
    }
}

/// The profile, and which of the three it is, if any.
void choose(forms::PreferredProfile& profile, const std::string& name, const char* otherwise)
{
    choose(profile.cboProfile, name, otherwise);
    if (!chooseText(profile.cboSetting, chosenText(profile.cboProfile))) {
        profile.cboSetting.ListIndex = -1;
    }
}

/// A list that holds nothing, as without profiles, says nothing either.
void takeOver(std::string& value, const ComboBox& list)
{
    if (list.ListIndex >= 0) {
        value = chosenText(list);
    }
}

} // namespace

void SetColorValues()
{
    Trapped(kModule, "SetColorValues", [] {
        state::VideoBarFill = form.lblVideoColor;
        state::AudioBarFill = form.lblAudioColor;
        state::EffectBarFill = form.lblEffectColor;
        state::OverlayBarFill = form.lblOverlayColor;
        state::WorkingFolder = form.txtPath.Text;
    });
}

void GetColorValues()
{
    Trapped(kModule, "GetColorValues", [] {
        form.lblVideoColor = state::VideoBarFill;
        form.lblAudioColor = state::AudioBarFill;
        form.lblEffectColor = state::EffectBarFill;
        form.lblOverlayColor = state::OverlayBarFill;
        form.txtPath.Text = state::WorkingFolder;
    });
}

void SetSaveOptionValues()
{
    Trapped(kModule, "SetSaveOptionValues", [] {
        takeOver(VideoCompressorName, form.cboVideoCompressorST);
        takeOver(AudioCompressorName, form.cboAudioCompressorST);
        if (const auto size = dimension::sizeIn(form.VideoDimension)) {
            VideoDimensionText = dimension::textOf(size->first, size->second);
        }
        SaveFrameRate = form.Values.FrameRate.sld.Value();
        SaveQuality = form.Values.Quality.sld.Value();
        SaveKeyFrameRate = form.Values.KeyFrameRate.sld.Value();
        SaveFrameFrequency = form.Values.PFrameFrequency.sld.Value();
        PreviewAfterSave = form.chkPreview.Value;
        HideTutorial = form.chkDoNotShowTutorial.Value;
        takeOver(VideoProfileName, form.Video.cboProfile);
        takeOver(AudioProfileName, form.Audio.cboProfile);
    });
}

void GetSaveOptionValues()
{
    Trapped(kModule, "GetSaveOptionValues", [] {
        choose(form.cboVideoCompressorST, VideoCompressorName, kUncompressed);
        choose(form.cboAudioCompressorST, AudioCompressorName, kUncompressed);
        dimension::choose(form.VideoDimension, VideoDimensionText);
        form.Values.FrameRate.sld.SetValue(SaveFrameRate);
        form.Values.Quality.sld.SetValue(SaveQuality);
        form.Values.KeyFrameRate.sld.SetValue(SaveKeyFrameRate);
        form.Values.PFrameFrequency.sld.SetValue(SaveFrameFrequency);
        form.chkPreview.Value = PreviewAfterSave;
        form.chkDoNotShowTutorial.Value = HideTutorial;
        choose(form.Video, VideoProfileName, "Video for dial-up modems or LAN (28.8 to 100 Kbps)");
        choose(form.Audio, AudioProfileName, "Audio for CD-quality (96 Kbps stereo)");
    });
}

void LoadPreferences()
{
    Trapped(kModule, "LoadPreferences", [] {
        GetGeneralSettingsFromReg();
        GetSaveOptionsFromReg();
        GetColorValues();
        GetSaveOptionValues();
    });
}

void StorePreferences()
{
    Trapped(kModule, "StorePreferences", [] {
        StoreGeneralSettingsInReg();
        StoreSaveOptionsToReg();
        show::mark(); // the tutorial's window shows one of them too
    });
}

} // namespace ModuleSettings
