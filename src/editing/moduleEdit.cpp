#include "editing/moduleEdit.h"

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/bare_tracks.h"
#include "editing/clipboard.h"
#include "editing/edit_trap.h"
#include "editing/paste.h"
#include "editing/selection_edges.h"
#include "editing/selection_walk.h"
#include "editing/whole_items.h"
#include "history/ModuleHistory.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace moduleEdit {

namespace {

constexpr std::int16_t kHourglass = 11;
constexpr std::int16_t kDefaultPointer = 0;

/// A command over the range, and over whole items.
struct Command {
    const char* routine;
    EditMode mode;
    bool (*sources)();
    bool (*effects)();
    bool (*overlays)();

    bool fillsClipboard() const { return mode == EditMode::kCut || mode == EditMode::kCopy; }
};

void clearClipboard()
{
    ClearSourceClips();
    ClearEffectClips();
    ClearTransitionClips();
}

/// The overlays alone say whether it came to something; that is meant.
bool editWholeItems(const Command& command)
{
    command.sources();
    command.effects();
    return command.overlays();
}

void draw()
{
    moduleScaleRenderer::RenderScale();
    moduleScaleRenderer::RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
}

void count()
{
    ++ModuleHistory::HistoryIndex;
    ModuleHistory::RearrangeHistoryCollection();
}

/// operation() answers whether it came to something; then all that shows it follows, and changed() with it.
template <class Operation, class Changed>
void run(const char* routine, Operation operation, Changed changed)
{
    if (state::InSelectionUpdate) {
        return;
    }
    state::InSelectionUpdate = true;
    forms::mdiTarnwick.MousePointer = kHourglass;
    editing::hasTrapped = false;
    editing::trapped(routine, [&] {
        if (operation()) {
            draw();
            changed();
            count();
            RefreshActions();
        } else if (editing::hasTrapped) {
            count(); // what was done until then can be undone
        }
    });
    state::InSelectionUpdate = false;
    forms::mdiTarnwick.MousePointer = kDefaultPointer;
}

void edit(const Command& command)
{
    run(
        command.routine,
        [&] {
            if (command.fillsClipboard()) {
                clearClipboard();
            }
            const bool isDone = timeline::isSelectionShown() ? EditSelection(command.mode) : editWholeItems(command);
            if (isDone && command.mode != EditMode::kCopy) {
                moduleTimeline::EmptyEffectsOfBareTracks();
            }
            return isDone;
        },
        [&] {
            if (command.mode != EditMode::kCopy) {
                UpdatePreview();
            }
        });
}

bool paste()
{
    moduleTimeline::ClearMFSTSubSelections();
    // One slider is enough here, unlike for all other commands; that is meant.
    const bool isOverSelection = !timeline::isSelectionHidden();
    if (isOverSelection) {
        EditSelection(EditMode::kDelete);
    }
    const engine::Milliseconds position =
        isOverSelection ? editing::selectionEdges().start : moduleTimeline::GetSliderPosition();
    EditPasteSource(position, isOverSelection);
    EditPasteEffect(position, isOverSelection);
    const bool isDone = EditPasteOverlay(position, isOverSelection);
    BringBackFiles(); // a file that was closed meanwhile is open again
    return isDone;
}

} // namespace

void EditCut() { edit({"EditCut", EditMode::kCut, EditCutSource, EditCutEffect, EditCutOverlay}); }

void EditCopy() { edit({"EditCopy", EditMode::kCopy, EditCopySource, EditCopyEffect, EditCopyOverlay}); }

void EditDelete() { edit({"EditDelete", EditMode::kDelete, EditDeleteSource, EditDeleteEffect, EditDeleteOverlay}); }

void EditCrop(bool cropSourcesOnly)
{
    CropSourcesOnly = cropSourcesOnly;
    edit({"EditCrop", EditMode::kCrop, EditCropSource, EditCropEffect, EditCropOverlay});
}

void EditPaste() { run("EditPaste", paste, UpdatePreview); }

} // namespace moduleEdit
