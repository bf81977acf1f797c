#include "shell/edit_commands.h"

#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/cut_place.h"
#include "editing/moduleEdit.h"
#include "timeline/moduleTimeline.h"

#include <cstdint>

namespace mdiTarnwick {

namespace {

enum class List : std::uint8_t { kUpdated, kLeft };

/// While another edit runs, nothing happens. True when it has taken effect.
bool run(bool (*command)(), List list = List::kUpdated)
{
    if (state::InSelectionUpdate) {
        return false;
    }
    const bool isDone = command();
    if (list == List::kUpdated) {
        UpdateTreeView();
    }
    EnableOrDisableMenuItems();
    return isDone;
}

void runUnlessEmpty(bool (*command)(), List list = List::kUpdated)
{
    if (moduleTimeline::IsTimelineEmpty()) {
        EnableOrDisableMenuItems();
    } else {
        run(command, list);
    }
}

} // namespace

void mnuEditCut_Click() { runUnlessEmpty(moduleEdit::EditCut); }

// Nothing has changed on the tracks, so the list stays.
void mnuEditCopy_Click() { runUnlessEmpty(moduleEdit::EditCopy, List::kLeft); }

void mnuEditPaste_Click()
{
    const editing::CutPlace cut;
    if (run(moduleEdit::EditPaste)) {
        cut.follow();
    }
}

void mnuEditClear_Click() { runUnlessEmpty(moduleEdit::EditDelete); }

void mnuEditCrop_Click()
{
    runUnlessEmpty([] { return moduleEdit::EditCrop(false); });
}

void mnuEditCropSources_Click()
{
    runUnlessEmpty([] { return moduleEdit::EditCrop(true); });
}

} // namespace mdiTarnwick
