#include "shell/edit_commands.h"

#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/cut_place.h"
#include "editing/moduleEdit.h"
#include "history/ModuleHistory.h"
#include "timeline/moduleTimeline.h"

#include <string_view>

namespace mdiTarnwick {

namespace {

enum class List : std::uint8_t { kUpdated, kLeft };

/// The command with its entry of the history. While another one runs, nothing happens: it has an entry of its own open.
/// True when it has taken effect.
bool runWithHistory(std::string_view word, void (*command)(), List list = List::kUpdated)
{
    if (state::InSelectionUpdate) {
        return false;
    }
    ModuleHistory::RemoveDisabledEntries();
    ModuleHistory::AddOperationToHistory(word);
    const std::int16_t index = ModuleHistory::HistoryIndex;
    command();
    const bool isDone = ModuleHistory::HistoryIndex > index;
    ModuleHistory::StoreCurrentTLImage();
    state::ProjectModified = true;
    if (list == List::kUpdated) {
        UpdateTreeView();
    }
    EnableOrDisableMenuItems();
    return isDone;
}

void runUnlessEmpty(std::string_view word, void (*command)(), List list = List::kUpdated)
{
    if (moduleTimeline::IsTimelineEmpty()) {
        EnableOrDisableMenuItems();
    } else {
        runWithHistory(word, command, list);
    }
}

} // namespace

void mnuEditCut_Click() { runUnlessEmpty("Cut", moduleEdit::EditCut); }

// Nothing has changed on the tracks, so the list stays.
void mnuEditCopy_Click() { runUnlessEmpty("Copy", moduleEdit::EditCopy, List::kLeft); }

void mnuEditPaste_Click()
{
    const editing::CutPlace cut;
    if (runWithHistory("Paste", moduleEdit::EditPaste)) {
        cut.follow();
    }
}

void mnuEditClear_Click() { runUnlessEmpty("Delete", moduleEdit::EditDelete); }

void mnuEditCrop_Click()
{
    runUnlessEmpty("Crop", [] { moduleEdit::EditCrop(false); });
}

void mnuEditCropSources_Click()
{
    runUnlessEmpty("CropSources", [] { moduleEdit::EditCrop(true); });
}

} // namespace mdiTarnwick
