#include "export/frmExportTimeline.h"

#include "core/file_text.h"
#include "core/forms/frmExportTimeline.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "editing/moduleTWState.h"
#include "engine/ITWSave.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/frmAdvancedSaveOptions.h"
#include "export/frmProgressBar.h"
#include "export/moduleProfiles.h"
#include "items/track_rows.h"
#include "media/media_files.h"
#include "media/working_folder.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <filesystem>

namespace frmExportTimeline {

using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWSave;
using items::RowKind;

namespace {

namespace fs = std::filesystem;

constexpr const char* kModule = "frmExportTimeline";
constexpr const char* kSaveOptions = "Save Options";
constexpr const char* kRateOfClips = "as the clips"; // no rate was asked for

forms::FrmExportTimeline& form = forms::frmExportTimeline;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

// --- Settings ------------------------------------------------------------------------------------------------------

std::string stored(std::string_view section, std::string_view key, std::string_view otherwise)
{
    const std::string text = ports.settings->get(state::AppSection, section, key).value_or(std::string());
    return text.find_first_not_of(' ') == std::string::npos ? std::string(otherwise) : text;
}

std::int32_t wholeNumber(std::string_view text, std::int32_t otherwise)
{
    try {
        return numbers::rounded<std::int32_t>(numbers::fromText(text));
    } catch (const engine::RuntimeError&) { // NOLINT: somebody has written into the store by hand
        return otherwise;
    }
}

void loadSettings()
{
    constexpr std::int32_t kUsualRate = 15;
    constexpr std::int32_t kUsualQuality = 75;
    const auto save = EngineAs<ITWSave>();
    check(save->ResetSave());
    const std::string video = stored(kSaveOptions, "Video Compressor", frmAdvancedSaveOptions::kUncompressed);
    check(save->SetVideoCompressor(video));
    frmAdvancedSaveOptions::SetVideoCompressor(video);
    const std::string audio = stored(kSaveOptions, "Audio Compressor", frmAdvancedSaveOptions::kUncompressed);
    check(save->SetAudioCompressor(audio));
    frmAdvancedSaveOptions::SetAudioCompressor(audio);
    check(save->SetVideoProfile(
        stored(kSaveOptions, "Video Profile", frmAdvancedSaveOptions::profileOfSetting(1, true))));
    // The section is spelled like this wherever the program is installed: what the options store elsewhere stays there.
    check(save->SetAudioProfile(
        stored("Save Optoins", "Audio Profile", frmAdvancedSaveOptions::profileOfSetting(1, false))));
    const auto number = [](const char* key, std::int32_t usual) {
        return wholeNumber(stored(kSaveOptions, key, ""), usual);
    };
    const std::int32_t fps = number("FPS", kUsualRate);
    check(save->SetFrameRate(fps));
    form.lblFPS = std::to_string(fps);
    check(save->SetPFrameFrequency(number("Frame Frequency", kUsualRate)));
    check(save->SetKeyFrameRate(number("Key Frame Rate", kUsualRate)));
    check(save->SetQuality(number("Quality", kUsualQuality)));
    // Who chose a frame for the movie expects to save that one; the preferences, once stored, stand over it.
    const std::string usual = dimension::textOf(state::ProjectWidth, state::ProjectHeight);
    const std::string size = stored(kSaveOptions, "Video Dimension", usual);
    constexpr std::int32_t kUsualWidth = 320;
    constexpr std::int32_t kUsualHeight = 240;
    const std::int32_t width = wholeNumber(size.substr(0, size.find(' ')), kUsualWidth);
    const std::int32_t height = wholeNumber(size.substr(size.rfind(' ') + 1), kUsualHeight);
    check(save->SetVideoSize(width, height));
    form.lblVideoDim = dimension::textOf(width, height);
    std::int16_t quality = 0;
    check(save->GetQuality(quality));
    frmAdvancedSaveOptions::SetCopyUnchanged(quality == kUsualQuality || quality < 0); // no other one is asked for
}

// --- The list of tracks --------------------------------------------------------------------------------------------

/// As the row's label says it on the timeline.
std::string captionOf(const items::TrackRow& row)
{
    const std::string kind = items::nameOf(row.kind);
    return row.kind == RowKind::kAudio ? kind + " " + std::to_string(row.index + 1) : kind;
}

/// What lies on it: sources, or effects on their lane.
std::int16_t countOn(const items::TrackRow& row)
{
    std::int16_t count = 0;
    const auto timeline = EngineAs<engine::ITWTimeline>();
    check(row.kind == RowKind::kEffect ? timeline->GetEffectCount(items::trackOf(row), count)
                                       : timeline->GetSourceCount(items::trackOf(row), count));
    return count;
}

void fillList()
{
    std::vector<forms::StreamRow> rows;
    form.SaveStreams.clear();
    for (const items::TrackRow& row : items::rows()) {
        if (!items::isMade(row) || countOn(row) == 0) {
            continue;
        }
        const Handle track = items::trackOf(row);
        const bool isLane = row.kind == RowKind::kEffect;
        if (!isLane) {
            form.SaveStreams.push_back(track);
        }
        const bool isOff = isLane ? moduleTWState::IsEffectDisabled(track) : moduleTWState::IsTrackDisabled(track);
        rows.push_back({captionOf(row), !isOff});
    }
    form.lstSaveStreams = std::move(rows);
}

bool isAnyRowChosen() { return std::ranges::any_of(form.lstSaveStreams.get(), &forms::StreamRow::Selected); }

// --- The file's name -----------------------------------------------------------------------------------------------

std::string trimmedName()
{
    const std::string& text = form.txtSaveFileName.Text.get();
    const auto first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// What is open in the program is no place for a movie: its media, and the project itself.
bool isInUse(const std::string& path)
{
    std::error_code ignored;
    return media::isListed(path) || path == state::ProjectFilePath
           || fs::equivalent(path, state::ProjectFilePath, ignored);
}

void changeExtension(std::string_view extension)
{
    form.txtSaveFileName.Text = file_text::ChangeExtension(form.txtSaveFileName.Text.get(), extension);
}

void runFormatHandler()
{
    if (form.optAVI) {
        optAVI_Click();
    } else {
        optWMF_Click();
    }
}

void showRange()
{
    form.SaveStart = timeline::startSlider().handle.Visible ? state::SelStartPosition : 0;
    form.SaveStop =
        timeline::endSlider().handle.Visible ? state::SelEndPosition : moduleTimeline::GetTimelineDuration();
    form.lblSaveRange = time_text::MilliSecondsToTimetypeAsString(form.SaveStart) + " - "
                        + time_text::MilliSecondsToTimetypeAsString(form.SaveStop);
}

void load()
{
    form.optAVI = true;
    LoadSettingsFromRegistry();
    FillSaveStreamList();
    showRange();
    form.AgreedName.clear();
    form.txtSaveFileName.Text.changed = txtSaveFileName_Change;
    form.txtSaveFileName.Text = media::freeNameInWorkingFolder("MyMovie", "avi");
    moduleProfiles::InitProfiles();
    moduleProfiles::EnumProfiles();
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
    {
        const WaitCursor wait;
        Trapped(kModule, "Form_Load", load);
    }
    optAVI_Click();
}

void Form_Unload() { moduleProfiles::UnInitProfiles(); }

void LoadSettingsFromRegistry() { Trapped(kModule, "LoadSettingsFromRegistry", loadSettings); }

void FillSaveStreamList()
{
    Trapped(kModule, "FillSaveStreamList", [] {
        fillList();
        if (!form.lstSaveStreams.get().empty()) {
            lstSaveStreams_Click();
        } else {
            form.cmdOK.Enabled = false;
            form.cmdAdvanced.Enabled = false;
        }
    });
}

bool IsVideoApplicable()
{
    return std::ranges::any_of(form.lstSaveStreams.get(), [](const forms::StreamRow& row) {
        return row.Selected && (row.Text == "Effect" || row.Text == "Overlay" || row.Text == "Video");
    });
}

void EnableOK()
{
    form.cmdAdvanced.Enabled = isAnyRowChosen();
    form.cmdOK.Enabled = isAnyRowChosen() && !trimmedName().empty();
}

void SetSaveCancelled(bool isCancelled) { form.SaveCancelled = isCancelled; }

void SetPreviewWhenDone(bool isWanted) { form.PreviewWhenDone = isWanted; }

void lstSaveStreams_Click()
{
    EnableOK();
    runFormatHandler();
}

void optAVI_Click()
{
    Trapped(kModule, "optAVI_Click", [] {
        form.optAVI = true;
        const auto save = EngineAs<ITWSave>();
        std::int16_t fps = 0;
        std::int16_t width = 0;
        std::int16_t height = 0;
        check(save->GetFrameRate(fps));
        check(save->GetVideoWidth(width));
        check(save->GetVideoHeight(height));
        form.lblFPS = fps < 1 ? std::string(kRateOfClips) : std::to_string(fps);
        form.lblVideoDim = dimension::textOf(width, height) + " pixels";
        changeExtension("avi");
    });
}

void optWMF_Click()
{
    Trapped(kModule, "optWMF_Click", [] {
        form.optAVI = false;
        const auto facts = moduleProfiles::FactsOf(frmAdvancedSaveOptions::presentProfile(true));
        form.lblFPS = facts.fps < 1 ? std::string("-") : std::to_string(facts.fps);
        form.lblVideoDim =
            facts.width < 1 ? std::string("-") : dimension::textOf(facts.width, facts.height) + " pixels";
        changeExtension(IsVideoApplicable() ? "wmv" : "wma");
    });
}

void txtSaveFileName_Change() { EnableOK(); }

void cmdBrowse_Click()
{
    constexpr std::int32_t kCancelled = 32755;
    Trapped(kModule, "cmdBrowse_Click",
            [] {
                const std::string extension = form.optAVI ? "avi" : IsVideoApplicable() ? "wmv" : "wma";
                const std::string name = extension == "avi" ? "AVI File" : extension == "wmv" ? "WMV File" : "WMA File";
                const fs::path present(SaveFileName());
                form.AgreedName = ports.dialogs->saveFile({.filters = {{name, {"*." + extension}}},
                                                           .folder = present.parent_path().string(),
                                                           .defaultExtension = extension,
                                                           .name = present.filename().string()});
                form.txtSaveFileName.Text = form.AgreedName;
            },
            {{kCancelled, [] {}}});
}

void cmdAdvanced_Click()
{
    frmAdvancedSaveOptions::ShowModal();
    runFormatHandler();
}

std::string SaveFileName() { return media::inWorkingFolder(trimmedName()); }

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] {
        const std::string name = SaveFileName();
        if (!frmProgressBar::DoesDiskAnswer(name)) {
            return;
        }
        if (isInUse(name)) {
            tellUser("Unable to save to file \"" + name
                     + "\" as it is being used by Quillmont. Please specify another filename.");
            return;
        }
        SetSaveCancelled(false);
        SetPreviewWhenDone(true);
        frmProgressBar::ShowModal();
        if (form.SaveCancelled) {
            return;
        }
        if (form.PreviewWhenDone && !ports.shell->openWithDesktop(name)) {
            const std::string text = "There is no program that opens " + name + ".";
            media::say(text);
            ReportError(kModule, "cmdOK_Click*", engine::RuntimeError(engine::error_number::kInvalidCall, text));
        }
        close();
    });
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click() { ShowHelp("3_5_1_Saving_Timeline.htm"); }

} // namespace frmExportTimeline
