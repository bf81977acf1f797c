#include "shell/tools_commands.h"

#include "capture/frmCapture.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "tools/frmAddText.h"
#include "tools/frmStretchMode.h"
#include "tools/frmTakeSnap.h"
#include "tools/overlay_transparency.h"

namespace mdiTarnwick {

namespace {

void run(void (*tool)())
{
    if (!state::BusyOpening && !state::InSelectionUpdate) {
        tool();
        EnableOrDisableMenuItems();
    }
}

} // namespace

void mnuEditStretchMode_Click() { run(frmStretchMode::ShowModal); }

void mnuEditSetOverlayTransparency_Click() { run(moduleTimeline::OnEditSetOverlayTransparencyClick); }

void mnuToolsAddText_Click() { run(frmAddText::ShowModal); }

void mnuToolsCapture_Click() { run(frmCapture::ShowModal); }

void mnuToolsTrimMode_Click()
{
    auto& window = forms::mdiTarnwick;
    window.mnuToolsTrimMode.Checked = !window.mnuToolsTrimMode.Checked;
    if (!state::BusyOpening) { // the progress of an opening is not written over
        window.sbr.Panel(1) =
            window.mnuToolsTrimMode.Checked ? "Trim mode: drag either end of a bar to trim it" : "Trim mode is off";
    }
}

void mnuToolsTakeSnap_Click() { run(frmTakeSnap::ShowModal); }

} // namespace mdiTarnwick
