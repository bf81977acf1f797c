#include "shell/file_commands.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "export/frmExportTimeline.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"
#include "shell/frmPreferences.h"

namespace mdiTarnwick {

void mnuFileOpen_Click()
{
    if (state::BusyOpening) {
        return;
    }
    const media::OpeningSpan span;
    moduleTarnwick::OnFileOpenClick();
    state::markModified();
    EnableOrDisableMenuItems();
}

void mnuFileClose_Click()
{
    if (state::BusyOpening) {
        return;
    }
    const media::OpeningSpan span;
    moduleTarnwick::OnFileCloseClick();
    state::markModified();
    EnableOrDisableMenuItems();
}

void mnuFileRF_Click(std::size_t index)
{
    const auto& items = forms::mdiTarnwick.mnuFileRF;
    if (state::BusyOpening || index >= items.size() || !items[index].Enabled) {
        return;
    }
    const media::OpeningSpan span;
    const std::string path = items[index].Caption; // the menu may be made anew meanwhile
    const std::int32_t rowsBefore = forms::frmMediaList.lvwMediaList.Count();
    moduleTarnwick::OpenResentFile(path);
    if (forms::frmMediaList.lvwMediaList.Count() > rowsBefore) {
        state::markModified();
    }
    EnableOrDisableMenuItems();
}

void mnuFileExportTimeline_Click()
{
    if (!state::BusyOpening) {
        frmExportTimeline::ShowModal();
        EnableOrDisableMenuItems();
    }
}

void mnuToolsOptions_Click()
{
    if (!state::BusyOpening) {
        frmPreferences::ShowModal();
    }
}

} // namespace mdiTarnwick
