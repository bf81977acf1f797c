#include "shell/command_tests.h"

#include "core/forms/frmMediaList.h"
#include "editing/moduleTWState.h"
#include "history/ModuleHistory.h"
#include "media/media_files.h"
#include "shell/mdiTarnwick_events.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace shell {

namespace {

/// What hangs on the items of the timeline. Most questions need not be asked of an empty one.
void askTimeline(CommandTests& tests)
{
    using namespace moduleTWState;
    tests.hasVideo = !IsVideoTrackEmpty();
    tests.hasEffects = !IsEffectTrackEmpty();
    tests.hasOverlays = !IsOverlayTrackEmpty();
    tests.isAudio1Selected = IsAudio1SourceSelected();
    tests.isAudio2Selected = IsAudio2SourceSelected();
    tests.isAudioSelected = tests.isAudio1Selected || tests.isAudio2Selected;
    tests.canRepeatAudio = tests.hasVideo && tests.isAudioSelected;
    tests.canEdit = IsEditingValid();
    tests.canCropSources = tests.canEdit && timeline::isSelectionShown();
    tests.canSetKeyColor = IsSetOverlayTransparencyValid();
    tests.canSetStretchMode = tests.canSetKeyColor || IsVideoSourceSelected();
    tests.canRestoreSize = IsRestoreSizeValid();
    tests.canTrim = IsTrimValid();
    tests.isSourceSelected = tests.isAudioSelected || IsVideoSourceSelected() || IsOverlaySourceSelected();
}

} // namespace

CommandTests currentTests()
{
    CommandTests tests;
    tests.hasRows = forms::frmMediaList.lvwMediaList.Count() > 0;
    tests.isRowSelected = media::isAnyRowSelected();
    tests.hasTimeline = !moduleTimeline::IsTimelineEmpty();
    if (tests.hasTimeline) {
        askTimeline(tests);
    }
    tests.hasSelection = timeline::isSelectionShown() || tests.canEdit;
    tests.canPaste = moduleTWState::IsClipboardFilled();
    tests.canUndo = ModuleHistory::CanUndo();
    tests.canRedo = ModuleHistory::CanRedo();
    tests.hasHelp = static_cast<bool>(mdiTarnwick::showHelp);
    tests.hasWhatsThis = static_cast<bool>(mdiTarnwick::enterWhatsThis);
    tests.hasAbout = static_cast<bool>(mdiTarnwick::showAbout);
    return tests;
}

} // namespace shell
