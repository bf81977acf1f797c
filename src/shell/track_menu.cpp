#include "shell/track_menu.h"

#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/change_track.h"
#include "editing/cut_place.h"
#include "editing/moduleTWState.h"
#include "editing/track_commands.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "history/timeline_images.h"
#include "items/row_items.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>

namespace mdiTarnwick {

using items::RowKind;

namespace {

constexpr const char* kModule = "mdiTarnwick";

/// The list and the player after a command that has emptied rows.
void showEmptied()
{
    UpdateTreeView();
    UpdatePreview();
    EnableOrDisableMenuItems();
}

bool isAnyRowLocked() { return std::ranges::any_of(items::rows(), &items::TrackRow::isLocked); }

bool isAnyEffectLocked() { return std::ranges::any_of(state::TrackCollection, moduleTWState::IsEffectLocked); }

/// Moves the selected sources between the audio rows, by their numbers from 0.
void moveAudio(const char* handler, std::int16_t from, std::int16_t to)
{
    Trapped(kModule, handler, [&] {
        const engine::Handle source = items::trackOf(items::row(RowKind::kAudio, from));
        const engine::Handle target = items::trackOf(items::row(RowKind::kAudio, to));
        const items::Items items(*engine::EngineAs<engine::ITWTimeline>(), items::ItemKind::kSource, source);
        const std::int32_t place = items.firstSelected() + 1;
        if (place == 0 || moduleTWState::IsTrackLocked(source) || moduleTWState::IsTrackLocked(target)) {
            return;
        }
        constexpr std::int32_t kTrackEnd = 0;
        ModuleTreeView::ChangeTrack(source, target, place, kTrackEnd);
        moduleTimeline::ShowOrHideTrackSelections();
        moduleTimeline::RenderAllSelections();
        showEmptied();
    });
}

} // namespace

void mnuToolsPackTimelineBars_Click()
{
    moduleTimeline::PackTracks();
    EnableOrDisableMenuItems();
}

void mnuEditRestoreSize_Click()
{
    moduleTimeline::RestoreSize();
    EnableOrDisableMenuItems();
}

void mnuToolsRepeatAudio_Click()
{
    moduleTimeline::RepeateAudio();
    EnableOrDisableMenuItems();
}

void mnuToolsSplitTimeline_Click()
{
    const editing::CutPlace cut(editing::CutPlace::kAtSlider);
    const bool isSplit = moduleTimeline::SplitTracks();
    EnableOrDisableMenuItems();
    if (isSplit) {
        cut.follow();
    }
}

void mnuEditClearEffect_Click()
{
    Trapped(kModule, "mnuEditClearEffect_Click", [] {
        if (isAnyEffectLocked()) {
            tellUser("Please unlock the Effect Track before attempting to clear it.");
            return;
        }
        moduleTimeline::EmptyEffectTrack();
        showEmptied();
    });
}

void mnuEditClearOverlay_Click()
{
    Trapped(kModule, "mnuEditClearOverlay_Click", [] {
        if (moduleTWState::IsTrackLocked(state::OverlayTrack)) {
            tellUser("Please unlock the Overlays Track before attempting to clear it.");
            return;
        }
        moduleTimeline::EmptyOverlayTrack();
        showEmptied();
    });
}

void mnuEditClearTimeline_Click()
{
    Trapped(kModule, "mnuEditClearTimeline_Click", [] {
        if (isAnyRowLocked()) {
            tellUser("One or more tracks in the timeline are locked. Please unlock these tracks before attempting to "
                     "clear the timeline.");
            return;
        }
        if (askUser("Are you sure you want to clear the timeline?", MessageButtons::kYesNo) != MessageAnswer::kYes) {
            return;
        }
        const auto empty = [] {
            ModuleHistory::EmptyTimeline();
            return history::Outcome::kChanged;
        };
        history::run("Clear", empty, [] {
            moduleTimeline::ShowOrHideTrackSelections();
            moduleTimeline::RenderAllSelections();
        });
        showEmptied();
    });
}

void mnuEditAddtoAudio1_Click() { moveAudio("mnuEditAddtoAudio1_Click", 1, 0); }

void mnuEditAddtoAudio2_Click() { moveAudio("mnuEditAddtoAudio2_Click", 0, 1); }

} // namespace mdiTarnwick
