#include "export/frmProgressBar.h"

#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmProgressBar.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "disk/whole_file.h"
#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/copied_frames.h"
#include "export/frmAdvancedSaveOptions.h"
#include "export/frmExportTimeline.h"
#include "export/kept_file.h"
#include "export/save_estimate.h"
#include "media/media_files.h"
#include "timeline/slider_places.h"

#include <filesystem>
#include <optional>

namespace frmProgressBar {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWSave;
using engine::kFalse;

namespace {

constexpr const char* kModule = "frmProgressBar";
constexpr const char* kCancel = "&Cancel";
constexpr const char* kDone = "&Done";
constexpr std::int64_t kLeastFreeBytes = 5'242'880;
constexpr std::int32_t kLongestWaitMs = 5000; // for a disk that may have gone to sleep
constexpr std::int32_t kMomentMs = 20;        // within a tick

forms::FrmProgressBar& form = forms::frmProgressBar;

/// Of the save that runs.
struct Running {
    std::string path;
    std::shared_ptr<void> awake;
    exporting::SaveEstimate estimate;
    std::int64_t frames = 0; // of the whole movie
};
std::optional<Running> running;

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

void stop()
{
    Bool16 ok = kFalse;
    check(EngineAs<ITWSave>()->StopSave(ok));
    check(EngineAs<ITWSave>()->CloseSave());
}

// --- Preparing -----------------------------------------------------------------------------------------------------

/// Answers the tracks: one for each chosen row. Rows of effects have none of their own, and the last of them decides.
std::vector<engine::Handle> addTracks()
{
    const auto save = EngineAs<ITWSave>();
    std::vector<engine::Handle> added;
    std::size_t next = 0;
    for (const forms::StreamRow& row : forms::frmExportTimeline.lstSaveStreams.get()) {
        if (row.Text == "Effect") {
            check(save->SetSaveEffects(engine::toBool16(row.Selected)));
            continue;
        }
        if (row.Selected) {
            Bool16 ok = kFalse;
            added.push_back(forms::frmExportTimeline.SaveStreams.at(next));
            check(save->AddSaveTrack(added.back(), ok));
        }
        ++next;
    }
    return added;
}

/// The selection counts when it has both its ends, whatever the dialogue's label shows.
void setRange()
{
    const auto save = EngineAs<ITWSave>();
    const bool isRange = timeline::startSlider().handle.Visible && timeline::endSlider().handle.Visible;
    check(save->SetSaveWholeTimeline(engine::toBool16(!isRange)));
    if (isRange) {
        check(save->SetSaveRange(state::SelStartPosition, state::SelEndPosition));
    }
}

/// The engine's answer, with why it refuses, where it says so. Raises its failures.
struct Prepared {
    bool isReady = false;
    std::string why;
};

Prepared prepareFormat(const std::string& path)
{
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = kFalse;
    const bool isAvi = forms::frmExportTimeline.optAVI;
    if (!isAvi) {
        check(save->SetWindowsMediaVideoSize(state::ProjectWidth, state::ProjectHeight));
    }
    const engine::Status status = isAvi ? save->PrepareAviFile(path, ok) : save->PrepareWindowsMediaFile(path, ok);
    check(status);
    return {ok != kFalse, status.text()};
}

/// What the log and the status bar say beside the box.
void note(const std::string& text)
{
    media::say(text);
    ReportError(kModule, "Form_Load*", engine::RuntimeError(engine::error_number::kInvalidCall, text));
}

void tellRefusal(const std::string& why)
{
    const std::string kind = forms::frmExportTimeline.optAVI ? "compressor" : "profile";
    if (!why.empty()) {
        note(why);
    }
    tellUser("Error Saving Timeline. Please select a different " + kind + " and try again.");
}

/// Unless the person has agreed that this very file is lost, it is kept.
std::unique_ptr<exporting::KeptFile> oldFile(const std::string& path)
{
    exporting::askForPlace(path);
    const bool isAgreed = path == forms::frmExportTimeline.AgreedName;
    return isAgreed ? nullptr : std::make_unique<exporting::KeptFile>(path);
}

bool start(const std::string& path)
{
    const auto tracks = addTracks();
    setRange();
    auto kept = oldFile(path);
    const Prepared prepared = prepareFormat(path);
    if (!prepared.isReady) {
        tellRefusal(prepared.why);
        return false;
    }
    Bool16 ok = kFalse;
    check(EngineAs<ITWSave>()->StartSave(ok));
    if (kept) {
        kept->letGo();
    }
    check(EngineAs<ITWSave>()->GetSaveDuration(form.SaveLength));
    running = {path, ports.machine->keepAwake("Saving a movie"),
               exporting::SaveEstimate(form.SaveLength, ports.events->ticks()),
               exporting::framesOf(form.SaveLength, tracks)};
    form.tmSave.Enabled = true;
    return true;
}

/// What the engine or the disk says is for the person, and no fault of the program's that anybody should report.
bool startTold(const std::string& path)
{
    try {
        return start(path);
    } catch (const disk::Refused& refused) {
        note(refused.what());
        tellUser(refused.what());
    } catch (const engine::RuntimeError& error) {
        note(error.what());
        tellUser(error.what());
    }
    return false;
}

void resetControls()
{
    constexpr std::int32_t kTickMs = 100;
    form.tmSave.Interval = kTickMs;
    form.tmSave.tick = tmSave_Timer;
    form.tmSave.Enabled = false;
    form.pbr.SetMin(0);
    form.pbr.SetMax(100);
    form.pbr.SetValue(0);
    form.cmdCancel = std::string(kCancel);
    form.chkPreviewWhenDone.Value.changed = nullptr;
    form.chkPreviewWhenDone.Value = std::int16_t{1};
    form.chkPreviewWhenDone.Value.changed = chkPreviewWhenDone_Click;
    for (auto* const label : {&form.lblFramesSaved, &form.lblComplete, &form.lblTimeLeft, &form.lblSpeed, &form.lblSize,
                              &form.lblFramesCopied, &form.lblFailure}) {
        *label = std::string();
    }
    form.SaveLength = 0;
    form.SavedSoFar = 0;
}

// --- Running -------------------------------------------------------------------------------------------------------

void forgetEstimate()
{
    for (auto* const label : {&form.lblTimeLeft, &form.lblSpeed, &form.lblSize}) {
        *label = std::string();
    }
}

void showCopied()
{
    std::int32_t copied = 0;
    check(EngineAs<ITWSave>()->GetFramesCopied(copied));
    form.lblFramesCopied = exporting::copiedText(copied, running->frames);
}

void end(const char* text)
{
    form.cmdCancel = std::string(kDone);
    form.tmSave.Enabled = false;
    form.lblFramesSaved = std::string(text);
    form.lblComplete = std::string();
    forgetEstimate();
    running->awake.reset();
    showCopied();
}

/// In the window, in the status bar and in the log.
void tellFailure(const std::string& text)
{
    form.lblFailure = text;
    forgetEstimate(); // it will not come to that
    running->awake.reset();
    note(text);
}

void describe(const std::string& path)
{
    namespace texts = frmAdvancedSaveOptions;
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = kFalse;
    check(save->OpenMetadata(path, ok));
    if (ok == kFalse) {
        return;
    }
    const auto set = [&](engine::Status (ITWSave::*setter)(engine::Text), const std::string& text) {
        if (!text.empty()) {
            check((save.get()->*setter)(text));
        }
    };
    set(&ITWSave::SetTitle, texts::GetTitle());
    set(&ITWSave::SetAuthor, texts::GetAuthor());
    set(&ITWSave::SetRating, texts::GetRating());
    set(&ITWSave::SetDescription, texts::GetDescription());
    set(&ITWSave::SetCopyright, texts::GetCopyright());
    check(save->SaveMetadata());
}

void complete()
{
    stop();
    end("Save Complete");
    form.pbr.SetValue(100);
    try {
        describe(running->path);
    } catch (const engine::RuntimeError& error) { // a movie without its texts is a movie
        tellFailure(std::string(error.what()) + " The movie is kept without its title and the other texts.");
    }
}

void abortForDisk()
{
    stop();
    end("Save Aborted");
    tellUser("Insufficient disk space.", MessageIcon::kCritical);
}

std::int32_t percent(double part, double whole)
{
    if (whole == 0) {
        throw engine::RuntimeError(engine::error_number::kDivisionByZero, "Division by zero");
    }
    return numbers::rounded<std::int32_t>(part / whole * 100);
}

/// Its failure is told once; from then on it is another state than complete.
std::int32_t stateOfSave()
{
    std::int32_t now = 0;
    try {
        check(EngineAs<ITWSave>()->GetSaveState(now));
    } catch (const engine::RuntimeError& error) {
        tellFailure(error.what());
        running->awake.reset(); // the window may stand all night
        now = engine::save_state::kFailed;
    }
    return now;
}

void showProgress(std::int64_t fileBytes)
{
    form.lblFramesSaved = "Saved: " + time_text::MilliSecondsToTimetypeAsString2(form.SavedSoFar) + " of "
                          + time_text::MilliSecondsToTimetypeAsString2(form.SaveLength);
    // The text reads the bar ahead of its move, so it is a tick behind.
    form.lblComplete = std::to_string(percent(form.pbr.Value(), form.pbr.Max())) + "% complete";
    form.pbr.SetValue(percent(form.SavedSoFar, form.SaveLength));
    showCopied();
    if (form.lblFailure.get().empty()) {
        running->estimate.note(form.SavedSoFar, fileBytes, ports.events->ticks());
        form.lblTimeLeft = running->estimate.timeLeft();
        form.lblSpeed = running->estimate.speed();
        form.lblSize = running->estimate.size();
    }
}

void tick()
{
    check(EngineAs<ITWSave>()->GetSavePosition(form.SavedSoFar));
    if (stateOfSave() == engine::save_state::kComplete) {
        complete();
        return;
    }
    const VolumeNews volume = ports.machine->askVolume(running->path, kMomentMs);
    if (volume.hasAnswered && volume.freeBytes.value_or(0) <= kLeastFreeBytes) {
        abortForDisk();
        return;
    }
    showProgress(volume.fileBytes);
}

} // namespace

bool DoesDiskAnswer(const std::string& path)
{
    const WaitCursor wait;
    const bool answers = ports.machine->askVolume(path, kLongestWaitMs).hasAnswered;
    if (!answers) {
        const std::string text = "The folder of \"" + path + "\" does not answer. Choose another one.";
        note(text);
        tellUser(text);
    }
    return answers;
}

void ShowModal()
{
    if (!Form_Load()) {
        frmExportTimeline::SetSaveCancelled(true);
        return;
    }
    ShowDialogue(kModule, showDialogue);
    running.reset();
}

bool Form_Load()
{
    const WaitCursor wait;
    resetControls();
    bool runs = false;
    Trapped(kModule, "Form_Load", [&] {
        runs = startTold(frmExportTimeline::SaveFileName());
        if (!runs) {
            check(EngineAs<ITWSave>()->CloseSave());
        }
    });
    return runs;
}

void tmSave_Timer()
{
    if (running) {
        Trapped(kModule, "tmSave_Timer*", tick);
    }
}

void chkPreviewWhenDone_Click() { frmExportTimeline::SetPreviewWhenDone(form.chkPreviewWhenDone.Value != 0); }

void cmdCancel_Click()
{
    Trapped(kModule, "cmdCancel_Click", [] {
        form.tmSave.Enabled = false;
        const bool isDone = form.cmdCancel.get() == kDone;
        frmExportTimeline::SetSaveCancelled(!isDone);
        stop();
        constexpr std::int32_t kLongestEndMs = 2000;
        Bool16 ok = kFalse;
        if (isDone) { // what opens the movie finds it closed
            check(EngineAs<ITWSave>()->WaitForStopped(kLongestEndMs, ok));
        }
    });
    close();
}

} // namespace frmProgressBar
