#include "shell/edit_commands.h"

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/cut_place.h"
#include "editing/moduleEdit.h"
#include "editing/sound_mates.h"
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

void say(const char* hint)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::string(hint);
    }
}

void trim(bool (*command)())
{
    const editing::CutPlace cut(editing::CutPlace::kAtSlider);
    if (run(command, List::kLeft)) {
        cut.follow();
    } else {
        say("Nothing is trimmed: the slider stands neither in a selected item nor in the gap beside one");
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

void mnuEditTrimStart_Click() { trim(moduleEdit::EditTrimStart); }

void mnuEditTrimEnd_Click() { trim(moduleEdit::EditTrimEnd); }

void mnuEditCloseGap_Click()
{
    if (!run(moduleEdit::EditDeleteAndCloseGap)) {
        say("Nothing is deleted: nothing lies there on an unlocked row");
    }
}

void mnuEditSelectWithSound_Click()
{
    if (!moduleEdit::SelectWithSound()) {
        say("Nothing more is selected: no other picture or sound of the same file lies at these times");
    }
    EnableOrDisableMenuItems();
}

} // namespace mdiTarnwick
