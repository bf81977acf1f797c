#include "app/edit_start.h"

#include "core/forms/frmAdvancedSaveOptions.h"
#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmKeyColor.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmProgressBar.h"
#include "core/forms/frmStretchMode.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/start_up.h"
#include "editing/clipboard.h"
#include "engine/engine_access.h"
#include "hand/frmTimeline_events.h"
#include "history/ModuleHistory.h"
#include "media/frmMediaList_events.h"
#include "media/moduleTarnwick.h"
#include "preview/frmPreview_events.h"
#include "shell/frmTools_events.h"
#include "shell/mdiTarnwick_events.h"
#include "timeline/moduleScaleRenderer.h"
#include "twcore/tarnwick_timeline.h"
#include "volume/frmVolume.h"

#include <memory>
#include <stdexcept>

namespace app {

namespace {

template <class Form>
void renew(Form& form)
{
    std::destroy_at(&form);
    std::construct_at(&form);
}

/// An earlier run of this process may have left its traces.
void renewState()
{
    state::reset();
    renew(forms::frmTimeline);
    renew(forms::frmMediaList);
    renew(forms::frmExportTimeline);
    renew(forms::frmAdvancedSaveOptions);
    renew(forms::frmProgressBar);
    renew(forms::frmKeyColor);
    renew(forms::frmStretchMode);
    renew(forms::frmPreview);
    renew(forms::frmTools);
    renew(forms::mdiTarnwick);
    renew(forms::frmVolume);
    ModuleHistory::EmptyHistory();
    moduleEdit::ClearSourceClips();
    moduleEdit::ClearEffectClips();
    moduleEdit::ClearTransitionClips();
}

/// The sizes that a screen would tell.
void sizeTimeline()
{
    auto& form = forms::frmTimeline;
    form.lblHighlight.Left = 150;
    for (PictureBox* const picture : {&form.picScale, &form.picVideo[0], &form.picEffect[0], &form.picOverlay[0],
                                      &form.picAudio[0], &form.picAudio[1]}) {
        picture->ScaleWidth = 1000;
        picture->ScaleHeight = 30;
    }
}

void loadPanels()
{
    mdiTarnwick::Form_Initialize();
    frmMediaList::Load();
    sizeTimeline();
    frmTimeline::Load();
    frmPreview::Load();
    frmTools::Form_Load();
    mdiTarnwick::Form_Load();
    frmTimeline::Form_Resize();
    while (state::ZoomFactor > 1) {
        moduleScaleRenderer::ZoomIn();
    }
}

} // namespace

void startEditing()
{
    renewState();
    twcore::registerTarnwickTimeline();
    bool isUp = false;
    StartProgram({.anotherInstanceRuns = [] { return false; },
                  .showSplash = [] {},
                  .init = moduleTarnwick::Init,
                  .loadMainWindow = loadPanels,
                  .showMainWindow = [&] { isUp = true; },
                  .unloadSplash = [] {},
                  .endProcess = [] {}});
    if (!isUp) {
        throw std::runtime_error("the program does not start");
    }
}

void endEditing()
{
    frmPreview::Unload();
    frmMediaList::Unload();
    ModuleHistory::EmptyHistory();
    engine::Engine.reset();
}

} // namespace app
