#include "editing/cut_place.h"

#include "core/forms/frmPreview.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "preview/moduleTWPreview.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace editing {

CutPlace::CutPlace(Where where)
{
    if (where == kAtSlider || timeline::isSelectionHidden()) {
        place_ = moduleTimeline::GetSliderPosition();
    }
}

void CutPlace::follow() const
{
    if (!place_ || *place_ == state::SliderPosition) {
        return;
    }
    Trapped("moduleTimeline", "CutPlace", [this] {
        constexpr std::int16_t kPlaying = 1;
        moduleTimeline::SetSliderPosition(*place_, false);
        if (moduleTWPreview::PreviewState != kPlaying) {
            engine::Bool16 ok = engine::kFalse;
            engine::check(engine::EngineAs<engine::ITWPreview>()->Seek(*place_, ok));
            Slider& seekBar = forms::frmPreview.sldSeekBar;
            if (*place_ >= seekBar.Min() && *place_ <= seekBar.Max()) {
                seekBar.SetValue(*place_);
            }
        }
    });
}

} // namespace editing
