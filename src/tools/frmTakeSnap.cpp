#include "tools/frmTakeSnap.h"

#include "core/file_text.h"
#include "core/forms/frmTakeSnap.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "core/wait_cursor.h"
#include "disk/run_folder.h"
#include "editing/moduleTWState.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWPreview.h"
#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "media/media_files.h"
#include "media/working_folder.h"
#include "preview/moduleTWPreview.h"
#include "timeline/moduleTimeline.h"
#include "timeline/sliders.h"

#include <filesystem>
#include <memory>

namespace frmTakeSnap {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWSave;
using engine::kFalse;
using engine::Milliseconds;

namespace {

constexpr const char* kModule = "frmTakeSnap";
constexpr const char* kNoName = "Snap"; // of a still whose source has no name to give

forms::FrmTakeSnap& form = forms::frmTakeSnap;
std::unique_ptr<disk::RunFolder> folder; // holds the rendered moment

/// The piece ahead of the last dot.
std::string baseName(const std::string& file)
{
    const std::size_t last = file.rfind('.');
    if (last == std::string::npos || last == 0) {
        return kNoName;
    }
    const std::size_t before = file.rfind('.', last - 1);
    const std::size_t from = before == std::string::npos ? 0 : before + 1;
    return last > from ? file.substr(from, last - from) : kNoName;
}

/// Named after the source of the first video row at that time.
std::string baseNameAt(Milliseconds pos)
{
    const Handle track = state::TrackCollection.Item(1);
    const std::int16_t seq = moduleTimeline::GetSequenceNumberFromPos(track, pos);
    if (seq < 0) {
        return kNoName;
    }
    Handle stream = 0;
    Handle file = 0;
    check(EngineAs<engine::ITWTimeline>()->GetSourceStream(track, seq, stream));
    check(EngineAs<engine::ITWMediaFiles>()->GetStreamFile(stream, file));
    return baseName(std::filesystem::path(media::pathOf(file)).filename().string());
}

void addTrack(ITWSave& save, Handle track)
{
    std::int16_t count = 0;
    check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
    Bool16 ok = kFalse;
    if (count > 0 && !moduleTWState::IsTrackDisabled(track)) {
        check(save.AddSaveTrack(track, ok));
    }
}

/// A moment of the timeline as the movie will have it.
void renderMoment(ITWSave& save)
{
    constexpr Milliseconds kMoment = 100;
    const Handle video = state::TrackCollection.Item(1);
    const Milliseconds now = moduleTimeline::GetSliderPosition();
    Bool16 ok = kFalse;
    check(save.ResetSave());
    addTrack(save, video);
    addTrack(save, state::OverlayTrack);
    check(save.SetSaveEffects(engine::toBool16(!moduleTWState::IsEffectDisabled(video))));
    check(save.SetSaveWholeTimeline(kFalse));
    check(save.SetSaveRange(now, now + kMoment));
    form.SnapBaseName = baseNameAt(now);
    check(save.SetVideoSize(form.SnapWidth, form.SnapHeight));
    check(engine::Engine->DeleteFile(form.SnapTempFile, ok));
    check(save.PrepareAviFile(form.SnapTempFile, ok));
    check(save.RunSaveToEnd());
}

/// What cannot be rendered leaves no file, and so an empty picture.
void SaveTimelineSection()
{
    constexpr const char* kRoutine = "SaveTimelineSection*";
    const auto save = EngineAs<ITWSave>();
    Bool16 ok = kFalse;
    form.SnapBaseName = kNoName;
    form.SnapWidth = state::ProjectWidth;
    form.SnapHeight = state::ProjectHeight;
    Trapped(kModule, kRoutine, [&] { renderMoment(*save); });
    Trapped(kModule, kRoutine, [&] { check(save->StopSave(ok)); });
    Trapped(kModule, kRoutine, [&] { check(save->CloseSave()); });
}

/// The engine scales, so that the size counts when the still is drawn.
void draw()
{
    form.picWorkspace.canvas.resize(form.SnapWidth, form.SnapHeight);
    check(EngineAs<engine::ITWPreview>()->DrawSnapFrame(form.SnapTempFile, 0, form.picWorkspace.hDC(), form.SnapWidth,
                                                        form.SnapHeight));
    form.picWorkspace.Refresh();
}

void ResizeSnap()
{
    Trapped(kModule, "ResizeSnap", [] {
        const auto size = dimension::sizeIn(form.Dimension);
        const bool isNew = size && (size->first != form.SnapWidth || size->second != form.SnapHeight);
        if (isNew && size->first > 0 && size->second > 0) {
            form.SnapWidth = size->first;
            form.SnapHeight = size->second;
            draw();
        }
    });
}

void fillDimension()
{
    constexpr std::int32_t kLimit = 2000;
    DimensionBoxes& boxes = form.Dimension;
    // A box must not draw the still anew while the other one shows the side of the last.
    boxes.txtWidth.Text.changed = boxes.txtHeight.Text.changed = nullptr;
    boxes.txtWidth.Text = std::to_string(form.SnapWidth); // a frame may be larger than what can be typed
    boxes.txtHeight.Text = std::to_string(form.SnapHeight);
    boxes.chkLockAspectRatio.Value = std::int16_t{0};
    dimension::reset(boxes, {}, 0, ResizeSnap);
    boxes.AspectRatio = form.SnapAspect;
    boxes.CustomWidth = form.SnapWidth;
    boxes.CustomHeight = form.SnapHeight;
    boxes.txtWidth.Enabled = boxes.txtHeight.Enabled = boxes.chkLockAspectRatio.Enabled = true;
    boxes.Limit = kLimit;
}

void enableOK() { form.cmdOK.Enabled = !form.txtSaveTo.Text.get().empty(); }

/// Errors of the disk are for the person, and no fault of ours.
bool makeFolder()
{
    try {
        folder = std::make_unique<disk::RunFolder>(ports.shell->runtimeFolder(), ".quillmont-snap-");
        return true;
    } catch (const disk::Refused& refused) {
        tellUser(refused.what());
        return false;
    }
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
    Trapped(kModule, "Form_Load", [] {
        const WaitCursor wait;
        form.SnapTempFile = makeFolder() ? folder->path() + "/QMT_Snap.avi" : "";
        Trapped(kModule, "SaveTimelineSection", SaveTimelineSection);
        form.SnapAspect = static_cast<double>(form.SnapWidth) / form.SnapHeight;
        draw();
        fillDimension();
        form.txtSaveTo.Text.changed = enableOK;
        form.txtSaveTo.Text = media::freeNameInWorkingFolder(form.SnapBaseName, "bmp");
        enableOK();
        UpdatePreview(); // the save has disturbed the player
    });
}

void Form_Unload()
{
    folder.reset();
    form.picWorkspace.canvas.resize(0, 0);
}

void cmdBrowse_Click()
{
    constexpr std::int32_t kCancelled = 32755;
    Trapped(kModule, "cmdBrowse_Click",
            [] {
                const std::filesystem::path present(media::inWorkingFolder(form.txtSaveTo.Text));
                form.txtSaveTo.Text = ports.dialogs->saveFile({.filters = {{"Bitmap File", {"*.bmp"}}},
                                                               .folder = present.parent_path().string(),
                                                               .defaultExtension = "bmp",
                                                               .name = present.filename().string()});
            },
            {{kCancelled, [] {}}});
}

void cmdOK_Click()
{
    Trapped(kModule, "cmdOK_Click", [] {
        const std::string path = media::inWorkingFolder(form.txtSaveTo.Text);
        Bool16 ok = kFalse;
        check(EngineAs<engine::ITWPreview>()->SaveSnapFrame(form.picWorkspace.hDC(), path, form.SnapWidth,
                                                            form.SnapHeight, ok));
        if (ok == kFalse) {
            tellUser("Unable to save \"" + path + "\". Please choose another folder or name.");
            return;
        }
        media::say("Saved " + std::filesystem::path(path).filename().string() + ".");
        cmdCancel_Click();
    });
}

void cmdCancel_Click()
{
    Bool16 ok = kFalse;
    Trapped(kModule, "cmdCancel_Click", [&] { check(engine::Engine->DeleteFile(form.SnapTempFile, ok)); });
    if (closeDialogue) {
        closeDialogue();
    }
}

void cmdHelp_Click() { ShowHelp("3_7_11_Taking_Snap.htm"); }

} // namespace frmTakeSnap
