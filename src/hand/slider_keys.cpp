#include "hand/slider_keys.h"

#include "core/forms/frmPreview.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "preview/frame_steps.h"
#include "timeline/cuts.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/view_times.h"

#include <algorithm>

namespace frmTimeline {

namespace {

/// With room at either side as far as the film goes: the arrow keys step from here and leave the view alone.
void goTo(engine::Milliseconds place)
{
    constexpr std::int32_t kRoom = 40; // pixels
    const engine::Milliseconds room = moduleScaleRenderer::PixelsToMs(kRoom);
    const Slider& seekBar = forms::frmPreview.sldSeekBar;
    const engine::Milliseconds taken = std::clamp(place, seekBar.Min(), std::max(seekBar.Min(), seekBar.Max()));
    const engine::Milliseconds end = std::max(taken, moduleTimeline::GetTimelineDuration());
    timeline::bringIntoView({std::max(0, taken - room), numbers::added(taken, std::min(room, end - taken))}, 2 * kRoom);
    moduleTWPreview::PauseAt(taken);
}

/// `times` gives the places to choose from.
void goToNeighbour(const char* routine, std::vector<engine::Milliseconds> (*times)(), bool isBehind)
{
    Trapped("frmTimeline", routine, [&] {
        if (const auto place = timeline::neighbour(times(), state::SliderPosition, isBehind)) {
            goTo(*place);
            if (times == timeline::markerTimes) {
                moduleBookmarks::selectAt(*place); // so that a key can remove it too
            }
        }
    });
}

} // namespace

void GoToStart()
{
    Trapped("frmTimeline", "GoToStart", [] { goTo(0); });
}

void GoToEnd()
{
    Trapped("frmTimeline", "GoToEnd", [] { goTo(moduleTimeline::GetTimelineDuration()); });
}

void GoToPreviousCut() { goToNeighbour("GoToPreviousCut", timeline::cutAndMarkerTimes, false); }

void GoToNextCut() { goToNeighbour("GoToNextCut", timeline::cutAndMarkerTimes, true); }

void GoToPreviousMarker() { goToNeighbour("GoToPreviousMarker", timeline::markerTimes, false); }

void GoToNextMarker() { goToNeighbour("GoToNextMarker", timeline::markerTimes, true); }

} // namespace frmTimeline
