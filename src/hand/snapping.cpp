#include "hand/snapping.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cstdlib>

namespace hand {

using engine::Milliseconds;

SnapPlaces::SnapPlaces(What what, const timeline::SkipsItem& skips) : places_(timeline::cutTimes(skips))
{
    const std::vector<Milliseconds> markers = timeline::markerTimes();
    places_.insert(places_.end(), markers.begin(), markers.end());
    if (what == kAll) {
        places_.insert(places_.end(), {0, state::SliderPosition});
        if (timeline::isSelectionShown()) {
            places_.insert(places_.end(), {state::SelStartPosition, state::SelEndPosition});
        }
    }
    std::ranges::sort(places_);
}

std::optional<Milliseconds> SnapPlaces::near(Milliseconds pos) const
{
    constexpr std::int64_t kReach = 6; // pixels
    const auto distance = [pos](Milliseconds place) { return std::abs(std::int64_t{place} - pos); };
    const auto nearest = std::ranges::min_element(places_, {}, distance);
    if (nearest == places_.end() || distance(*nearest) > kReach * moduleScaleRenderer::PixelsToMs(1)) {
        return std::nullopt;
    }
    return *nearest;
}

bool isSnapping(int shift)
{
    constexpr int kShiftKey = 1;
    return forms::mdiTarnwick.mnuViewSnapping.Checked && (shift & kShiftKey) == 0;
}

void showSnapLine(std::optional<Milliseconds> pos)
{
    forms::FrmTimeline& form = forms::frmTimeline;
    if (pos) {
        const std::int32_t x = numbers::subtracted(moduleScaleRenderer::MsToPixels(*pos), timeline::viewLeft());
        form.picSnapLine.Left = numbers::added(form.lblHighlight.Left.get(), x);
        // A line left of the rows would stand over their names.
        form.picSnapLine.Visible = x >= 0 && x <= form.picScale.ScaleWidth;
    } else {
        form.picSnapLine.Visible = false;
    }
}

} // namespace hand
