#include "editing/adding_files.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "engine/ITWMediaFiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "preview/frame_offer.h"
#include "preview/moduleTWPreview.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "volume/frmVolume.h"

namespace editing {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;

namespace {

void fitPreviewSlider()
{
    constexpr std::int32_t kEmptyMax = 10;
    Slider& slider = forms::frmPreview.sldSeekBar;
    if (moduleTimeline::IsTimelineEmpty()) {
        slider.SetMax(kEmptyMax);
        moduleTWPreview::OnCmdStopClick();
    } else if (const Milliseconds duration = moduleTimeline::GetTimelineDuration(); duration > slider.Min()) {
        slider.SetMax(duration);
    }
}

} // namespace

std::vector<Handle> selectedFiles()
{
    const ListView& list = forms::frmMediaList.lvwMediaList;
    std::vector<Handle> files;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        if (list.Row(place).Selected) {
            files.push_back(state::FileCollection.Item(place));
        }
    }
    return files;
}

std::vector<Handle> streamsOf(Handle file)
{
    const auto files = EngineAs<engine::ITWMediaFiles>();
    std::vector<Handle> streams;
    for (const Handle stream : state::StreamCollection) {
        Handle owner = 0;
        check(files->GetStreamFile(stream, owner));
        if (owner == file) {
            streams.push_back(stream);
        }
    }
    return streams;
}

bool isVideoStream(Handle stream)
{
    Bool16 isVideo = kFalse;
    check(EngineAs<engine::ITWMediaFiles>()->IsVideoStream(stream, isVideo));
    return isVideo != kFalse;
}

Handle targetTrack(ITWTimeline& engine, bool isVideo)
{
    for (const Handle track : state::TrackCollection) {
        Bool16 found = kFalse;
        check(engine.IsVideoTrack(track, found));
        if ((found != kFalse) == isVideo) {
            return track;
        }
    }
    return 0;
}

void showAllRows()
{
    moduleScaleRenderer::RenderAllBars();
    moduleTimeline::ShowOrHideTrackSelections();
    moduleTimeline::RenderAllSelections();
    moduleScaleRenderer::AdjustScroll();
}

void keepFrameOfFirst(bool isPictureAdded)
{
    if (isPictureAdded) {
        frmPreview::WithdrawFrameOffer();
    }
}

void showFilmGrown(bool isPictureAdded)
{
    showAllRows();
    fitPreviewSlider();
    moduleTimeline::UpdateTrackOptions();
    keepFrameOfFirst(isPictureAdded);
    UpdatePreview();
    moduleTimeline::SyncOverlayTransitions();
    frmVolume::SetVolume(frmVolume::GetVolume()); // a player that was made anew has its own
}

} // namespace editing
