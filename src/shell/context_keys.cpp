#include "shell/context_keys.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "hand/row_pointer.h"

#include <cstdint>

namespace shell {

namespace {

/// A control of the timeline: what `PopUpEditContext` is asked for, and the lock that forbids it.
struct Place {
    std::string_view control;
    std::int16_t context;
    std::int16_t index;
    const CheckBox* lock;
};

} // namespace

void popUpFor(std::string_view control)
{
    const auto& f = forms::frmTimeline;
    const Place places[] = {{"picScale", 0, 0, nullptr},
                            {"picTimelineBase", 0, 0, nullptr},
                            {"picVideo0", 1, 0, &f.chkLockVideo[0]},
                            {"picEffect0", 2, -1, &f.chkLockEffect[0]},
                            {"picOverlay0", 3, 0, &f.chkLockOverlay[0]},
                            {"picAudio0", 2, 0, &f.chkLockAudio[0]},
                            {"picAudio1", 2, 1, &f.chkLockAudio[1]}};
    if (control.starts_with("lvwMediaList")) {
        if (forms::mdiTarnwick.PopupMenu) {
            forms::mdiTarnwick.PopupMenu(forms::PopUp::kMediaListContext);
        }
        return;
    }
    for (const Place& place : places) {
        if (place.control == control && (place.lock == nullptr || place.lock->Value == 0)) {
            frmTimeline::PopUpEditContext(place.context, place.index);
        }
    }
}

} // namespace shell
