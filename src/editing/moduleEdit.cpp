#include "editing/moduleEdit.h"

#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/bare_tracks.h"
#include "editing/clipboard.h"
#include "editing/close_gap.h"
#include "editing/paste.h"
#include "editing/selection_edges.h"
#include "editing/selection_walk.h"
#include "editing/trim.h"
#include "editing/whole_items.h"
#include "history/command.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"
#include "timeline/view_times.h"

namespace moduleEdit {

using history::Outcome;

namespace {

constexpr std::int16_t kHourglass = 11;
constexpr std::int16_t kDefaultPointer = 0;

/// A command over the range, and over whole items.
struct Command {
    const char* routine;
    std::string_view word;
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

/// The overlays alone say whether it came to something.
Outcome editWholeItems(const Command& command)
{
    command.sources();
    command.effects();
    return command.overlays() ? Outcome::kChanged : Outcome::kCutShort;
}

/// Whether the last change was one says whether it came to something.
Outcome outcomeOf(const editing::Answer& answer)
{
    if (answer.flag) {
        return Outcome::kChanged;
    }
    return answer.isWhole ? Outcome::kNothing : Outcome::kCutShort;
}

void draw()
{
    moduleScaleRenderer::RenderScale();
    moduleScaleRenderer::RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
}

/// Two edits never run at once: one may let events run.
template <class Operation, class Show>
bool run(const char* routine, std::string_view word, Operation operation, Show show)
{
    if (state::InSelectionUpdate) {
        return false;
    }
    state::InSelectionUpdate = true;
    forms::mdiTarnwick.MousePointer = kHourglass;
    const bool isInForce = history::runTrapped("moduleEdit", routine, word, operation, [&] {
        draw();
        show();
        RefreshActions();
    });
    state::InSelectionUpdate = false;
    forms::mdiTarnwick.MousePointer = kDefaultPointer;
    return isInForce;
}

bool edit(const Command& command)
{
    const auto operation = [&] {
        if (command.fillsClipboard()) {
            clearClipboard();
        }
        const Outcome outcome =
            timeline::isSelectionShown() ? outcomeOf(EditSelection(command.mode)) : editWholeItems(command);
        if (outcome == Outcome::kChanged && command.mode != EditMode::kCopy) {
            moduleTimeline::EmptyEffectsOfBareTracks();
        }
        return outcome;
    };
    const auto show = [&] {
        if (command.mode != EditMode::kCopy) {
            UpdatePreview();
        }
    };
    return run(command.routine, command.word, operation, show);
}

/// position: where it went, ms.
Outcome paste(engine::Milliseconds& position)
{
    moduleTimeline::ClearMFSTSubSelections();
    // One slider is enough here, where all other commands want both. They come and go together, so that it matters only
    // when an error has left one: then what was marked is still what the paste replaces.
    const bool isOverSelection = !timeline::isSelectionHidden();
    bool isWhole = !isOverSelection || EditSelection(EditMode::kReplace).isWhole;
    position = isOverSelection ? editing::selectionEdges().start : moduleTimeline::GetSliderPosition();
    for (const auto pasteKind : {EditPasteSource, EditPasteEffect, EditPasteOverlay}) {
        isWhole = isWhole && pasteKind(position, isOverSelection);
    }
    BringBackFiles(); // a file that was closed meanwhile is open again
    return isWhole ? Outcome::kChanged : Outcome::kCutShort;
}

} // namespace

bool EditCut() { return edit({"EditCut", "Cut", EditMode::kCut, EditCutSource, EditCutEffect, EditCutOverlay}); }

bool EditCopy() { return edit({"EditCopy", "Copy", EditMode::kCopy, EditCopySource, EditCopyEffect, EditCopyOverlay}); }

bool EditDelete()
{
    return edit({"EditDelete", "Delete", EditMode::kDelete, EditDeleteSource, EditDeleteEffect, EditDeleteOverlay});
}

bool EditCrop(bool cropSourcesOnly)
{
    CropSourcesOnly = cropSourcesOnly;
    const char* const word = cropSourcesOnly ? "CropSources" : "Crop";
    return edit({"EditCrop", word, EditMode::kCrop, EditCropSource, EditCropEffect, EditCropOverlay});
}

bool EditDeleteAndCloseGap()
{
    return run("EditDeleteAndCloseGap", "Close Gap", editing::deleteAndCloseGap, UpdatePreview);
}

bool EditTrimStart()
{
    return run(
        "EditTrimStart", "Trim", [] { return editing::trimToSlider(editing::ItemEnd::kStart); }, UpdatePreview);
}

bool EditTrimEnd()
{
    return run(
        "EditTrimEnd", "Trim", [] { return editing::trimToSlider(editing::ItemEnd::kStop); }, UpdatePreview);
}

bool EditPaste()
{
    engine::Milliseconds position = 0;
    const auto show = [&] {
        UpdatePreview();
        timeline::followEdit({position, numbers::added(position, ClipboardLength())});
    };
    return run(
        "EditPaste", "Paste", [&] { return paste(position); }, show);
}

} // namespace moduleEdit
