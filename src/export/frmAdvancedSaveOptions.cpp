#include "export/frmAdvancedSaveOptions.h"

#include "core/forms/frmAdvancedSaveOptions.h"
#include "core/forms/frmExportTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/frmExportTimeline.h"
#include "export/frmProfileProperties.h"
#include "export/moduleProfiles.h"

namespace frmAdvancedSaveOptions {

using engine::check;
using engine::EngineAs;
using engine::ITWSave;

namespace {

constexpr const char* kModule = "frmAdvancedSaveOptions";
constexpr std::int32_t kOther = 3; // the setting that leaves the profile to the person

forms::FrmAdvancedSaveOptions& form = forms::frmAdvancedSaveOptions;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void selectCompressor(ComboBox& box, const std::string& name, void (*clicked)())
{
    box.ListIndex.changed = nullptr;
    if (!chooseText(box, name)) {
        chooseText(box, kUncompressed);
    }
    box.ListIndex.changed = clicked;
    clicked();
}

/// Ticked, and on the slider, where a value is set.
void show(forms::CompressionValue& value, std::int16_t set)
{
    constexpr std::int16_t kNone = -1;
    value.chk.Value = static_cast<std::int16_t>(set != kNone ? 1 : 0);
    if (set != kNone) {
        value.sld.SetValue(set);
    }
    enableValue(value);
}

void showValues()
{
    const auto save = EngineAs<ITWSave>();
    std::int16_t value = 0;
    check(save->GetFrameRate(value));
    show(form.Values.FrameRate, value);
    check(save->GetKeyFrameRate(value));
    show(form.Values.KeyFrameRate, value);
    check(save->GetQuality(value));
    show(form.Values.Quality, value);
    check(save->GetPFrameFrequency(value));
    show(form.Values.PFrameFrequency, value);
}

/// Behind the values, whose showing is no moving of the slider.
void showCopyUnchanged()
{
    form.chkCopyUnchanged.Value = static_cast<std::int16_t>(form.CopyUnchanged ? 1 : 0);
    form.chkCopyUnchanged.Enabled = forms::frmExportTimeline.optAVI.get(); // the other format is all encoded
    auto& moved = form.Values.Quality.sld.changed;
    moved = [before = moved] {
        before();
        form.chkCopyUnchanged.Value = std::int16_t{0};
    };
}

void showSize()
{
    std::int16_t width = 0;
    std::int16_t height = 0;
    check(EngineAs<ITWSave>()->GetVideoWidth(width));
    check(EngineAs<ITWSave>()->GetVideoHeight(height));
    dimension::choose(form.VideoDimension, dimension::textOf(width, height));
}

void loadProfiles()
{
    form.Profile.cboSetting.ListIndex.changed = nullptr;
    form.Profile.cboProfile.ListIndex.changed = nullptr;
    FillWMFSetting(form.Profile.cboSetting);
    FillWMFProfiles(form.Profile.cboProfile, form.Profile.cboSetting, frmExportTimeline::IsVideoApplicable());
    form.Profile.cboSetting.ListIndex.changed = cboSetting_Click;
    form.Profile.cboProfile.ListIndex.changed = cboProfile_Click;
    cboProfile_Click();
    cboSetting_Click();
}

void load()
{
    startValues(form.Values, [] {});
    FillVideoCompressors(form.cboVideoCompressor);
    FillAudioCompressors(form.cboAudioCompressor);
    FillVideoDimensions(form.VideoDimension);
    form.VideoDimension.chkLockAspectRatio.Value = std::int16_t{1};
    selectCompressor(form.cboVideoCompressor, form.VideoCompressorName, cboVideoCompressor_Click);
    selectCompressor(form.cboAudioCompressor, form.AudioCompressorName, cboAudioCompressor_Click);
    loadProfiles();
    showValues();
    showCopyUnchanged();
    form.tbs = std::string(forms::frmExportTimeline.optAVI ? "AVI_OPTIONS" : "WMF_OPTIONS");
    form.txtTitle.Text = form.Title;
    form.txtAuthor.Text = form.Author;
    form.txtRating.Text = form.Rating;
    form.txtCopyright.Text = form.Copyright;
    form.txtDescription.Text = form.Description;
    showSize();
}

void FillProfileProperties()
{
    const auto facts = moduleProfiles::FactsOf(chosenText(form.Profile.cboProfile));
    form.txtDimension = facts.width < 1 ? std::string("- ") : dimension::textOf(facts.width, facts.height) + " pixels";
    form.txtFrameRate = facts.fps < 1 ? std::string("- ") : std::to_string(facts.fps) + " frames per second";
    form.txtFrequency = moduleProfiles::inThousands(facts.hertz) + " KHz";
}

/// The number on the label of a box that is ticked, else -1.
std::int32_t setValue(const forms::CompressionValue& value)
{
    return value.chk.Value != 0 ? numbers::rounded<std::int32_t>(numbers::fromText(value.lbl.get())) : -1;
}

void storeInEngine()
{
    const auto save = EngineAs<ITWSave>();
    check(save->SetFrameRate(setValue(form.Values.FrameRate)));
    check(save->SetKeyFrameRate(setValue(form.Values.KeyFrameRate)));
    check(save->SetQuality(setValue(form.Values.Quality)));
    check(save->SetPFrameFrequency(setValue(form.Values.PFrameFrequency)));
    if (const auto size = dimension::sizeIn(form.VideoDimension)) {
        check(save->SetVideoSize(size->first, size->second));
    }
    SetCopyUnchanged(form.chkCopyUnchanged.Value != 0);
    const std::string profile = chosenText(form.Profile.cboProfile);
    if (!profile.empty()) {
        check(moduleProfiles::HasVideo(profile) ? save->SetVideoProfile(profile) : save->SetAudioProfile(profile));
    }
}

std::string trimmed(const TextBox& box)
{
    const std::string& text = box.Text.get();
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
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

void SetVideoCompressor(std::string_view name) { form.VideoCompressorName = name; }
void SetAudioCompressor(std::string_view name) { form.AudioCompressorName = name; }

void SetCopyUnchanged(bool isWanted)
{
    check(EngineAs<ITWSave>()->SetCopyUnchanged(engine::toBool16(isWanted)));
    form.CopyUnchanged = isWanted;
}

const std::string& GetTitle() { return form.Title; }
const std::string& GetAuthor() { return form.Author; }
const std::string& GetRating() { return form.Rating; }
const std::string& GetCopyright() { return form.Copyright; }
const std::string& GetDescription() { return form.Description; }

void cboVideoCompressor_Click()
{
    Trapped(kModule, "cboVideoCompressor_Click", [] {
        check(EngineAs<ITWSave>()->SetVideoCompressor(chosenText(form.cboVideoCompressor)));
        enableByCompressor(form.Values);
        auto& values = form.Values;
        for (auto* const value : {&values.FrameRate, &values.KeyFrameRate, &values.PFrameFrequency, &values.Quality}) {
            enableValue(*value);
        }
    });
}

void cboAudioCompressor_Click()
{
    Trapped(kModule, "cboAudioCompressor_Click",
            [] { check(EngineAs<ITWSave>()->SetAudioCompressor(chosenText(form.cboAudioCompressor))); });
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
        if (isChosenBySetting) {
            const bool isVideo = moduleProfiles::HasVideo(chosenText(profiles));
            if (!chooseText(profiles, profileOfSetting(setting, isVideo))) {
                profiles.ListIndex = 0;
            }
        }
    });
}

void cboProfile_Click()
{
    Trapped(kModule, "cboProfile_Click", [] {
        FillProfileProperties();
        form.Profile.txtProfile.Text = chosenText(form.Profile.cboProfile);
    });
}

void cmdProperties_Click()
{
    Trapped(kModule, "cmdProperties_Click",
            [] { frmProfileProperties::ShowModal(chosenText(form.Profile.cboProfile)); });
}

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] {
        storeInEngine();
        form.VideoCompressorName = chosenText(form.cboVideoCompressor);
        form.AudioCompressorName = chosenText(form.cboAudioCompressor);
        form.Title = trimmed(form.txtTitle);
        form.Author = trimmed(form.txtAuthor);
        form.Rating = trimmed(form.txtRating);
        form.Copyright = trimmed(form.txtCopyright);
        form.Description = trimmed(form.txtDescription);
        close();
    });
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click()
{
    ShowHelp(form.tbs.get() == "AVI_OPTIONS" ? "3_5_2_Advanced_Save_Options.htm"
                                             : "3_5_2a_Advanced_Save_Options_WMF.htm");
}

} // namespace frmAdvancedSaveOptions
