#include "media/closing.h"

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/clipboard.h"
#include "engine/ITWMediaFiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/file_preview.h"
#include "media/frmMediaList_events.h"
#include "media/media_files.h"
#include "media/references.h"
#include "media/rows.h"
#include "timeline/moduleScaleRenderer.h"

namespace moduleTarnwick {

using engine::Bool16;
using engine::check;
using engine::Handle;
using engine::kFalse;

namespace {

constexpr const char* kModule = "moduleTarnwick";

/// What a walk over the selected rows has done so far.
struct Closing {
    bool fileClosed = false;
    bool referencesRemoved = false;
};

bool mayBeRemovedFromTimeline(Handle file)
{
    const std::string name = file_text::ExtractFileName(media::pathOf(file));
    return askUser("The file - \"" + name
                       + "\" is being used by the timeline. If you delete this file, all references to it in the "
                         "timeline will be permanently removed. Do you wish to proceed with the deletion?",
                   MessageButtons::kYesNo, MessageIcon::kInformation)
           == MessageAnswer::kYes;
}

/// False when the person keeps the file.
bool closeUnlessKept(Handle file, Closing& done)
{
    if (media::isFileInUse(file)) {
        if (!mayBeRemovedFromTimeline(file)) {
            return false;
        }
        done.referencesRemoved = true;
        media::removeSourcesOfFile(file);
    }
    Bool16 ok = kFalse;
    check(engine::Engine->CloseFile(file, ok));
    if (ok == kFalse) {
        tellUser("Unable to close file.");
    }
    CloseStreams(file);
    RemoveFromTWListView(file);
    done.fileClosed = true;
    return true;
}

void closeSelectedRows(Closing& done)
{
    const ListView& list = forms::frmMediaList.lvwMediaList;
    for (std::int32_t place = 1; place <= list.Count();) {
        // A closed row's place is taken by the next one.
        if (!list.Row(place).Selected || !closeUnlessKept(state::FileCollection.Item(place), done)) {
            ++place;
        }
    }
}

void showWhatClosingLeft(const Closing& done)
{
    state::markModified(); // also when all was kept: rather one question too many ahead of a loss
    if (done.referencesRemoved) {
        moduleScaleRenderer::AdjustScroll();
        moduleScaleRenderer::RenderScale();
        RenderAllBars();
        UpdatePreview();
        UpdateTreeView();
    }
    if (done.fileClosed) {
        frmMediaList::ClearFileInformation();
        media::closeFilePreview();
    }
    if (forms::frmMediaList.lvwMediaList.Count() == 0) {
        moduleEdit::ClearSourceClips();
        moduleEdit::ClearEffectClips();
        moduleEdit::ClearTransitionClips();
    }
}

} // namespace

void OnFileCloseClick()
{
    constexpr std::int32_t kRowPastTheEnd = 35600; // the normal end of a walk whose rows went meanwhile
    Closing done;
    Trapped(kModule, "OnFileCloseClick", [&] { closeSelectedRows(done); }, {{kRowPastTheEnd, [] {}}});
    Trapped(kModule, "OnFileCloseClick", [&] { showWhatClosingLeft(done); });
}

void CloseStreams(Handle file)
{
    Trapped(kModule, "CloseStreams", [&] {
        const auto files = engine::EngineAs<engine::ITWMediaFiles>();
        for (;;) {
            Handle stream = 0;
            check(engine::Engine->GetFirstStream(file, stream));
            if (stream == 0) {
                return;
            }
            Bool16 ok = kFalse;
            check(files->CloseStream(stream, ok));
            if (const std::int32_t place = state::StreamCollection.PlaceOf(stream); place > 0) {
                state::StreamCollection.Remove(place);
            }
            if (ok == kFalse) {
                return; // it would be the first one again
            }
        }
    });
}

void CloseAllMediaFiles()
{
    Trapped(kModule, "CloseAllMediaFiles", [] {
        const auto files = engine::EngineAs<engine::ITWMediaFiles>();
        // Every handle has its turn, and the list is empty afterwards, also when the engine fails at one of them.
        engine::Status firstFailure;
        const auto note = [&](const engine::Status& status) {
            if (status.failed() && !firstFailure.failed()) {
                firstFailure = status;
            }
        };
        Bool16 ok = kFalse;
        for (const Handle file : state::FileCollection) {
            note(engine::Engine->CloseFile(file, ok));
        }
        for (const Handle stream : state::StreamCollection) {
            note(files->CloseStream(stream, ok));
        }
        state::FileCollection.Clear();
        state::StreamCollection.Clear();
        forms::frmMediaList.lvwMediaList.Clear();
        forms::frmMediaList.txtFilter.Text = std::string(); // the next project's files are other ones
        check(firstFailure);
    });
}

} // namespace moduleTarnwick
