#include "preview/frame_steps.h"

#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWPreview.h"
#include "engine/ITWStreamInfo.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "preview/frmPreview_events.h"
#include "preview/moduleTWPreview.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>
#include <cmath>

namespace moduleTWPreview {

using engine::check;
using engine::EngineAs;
using engine::Milliseconds;

namespace {

constexpr const char* kModule = "moduleTWPreview";
constexpr std::int16_t kPlaying = 1;

/// 0 for a still, and for what cannot be asked.
double frameRateOf(engine::Handle stream)
{
    engine::Bool16 ok = engine::kFalse;
    double fps = 0;
    check(EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
    if (ok != engine::kFalse) {
        check(EngineAs<engine::ITWStreamInfo>()->GetFrameRate(fps));
    }
    return fps;
}

/// Rounded up: the first whole millisecond of the frame.
Milliseconds startOf(std::int64_t frame, double fps)
{
    constexpr double kNoise = 1e-6; // of the division
    return static_cast<Milliseconds>(std::ceil(static_cast<double>(frame) * 1000 / fps - kNoise));
}

std::int64_t frameAt(Milliseconds place, double fps)
{
    constexpr double kNoise = 1e-6;
    return static_cast<std::int64_t>(std::floor(place * fps / 1000 + kNoise));
}

} // namespace

double shownFrameRate()
{
    constexpr double kOfStills = 25;
    constexpr double kMost = 60;
    const auto engine = EngineAs<engine::ITWTimeline>();
    for (const engine::Handle track : {state::TrackCollection.Item(1), state::OverlayTrack}) {
        const std::int16_t count = items::Items(*engine, items::ItemKind::kSource, track).count();
        for (std::int16_t seq = 0; seq < count; ++seq) {
            engine::Handle stream = 0;
            check(engine->GetSourceStream(track, seq, stream));
            if (const double fps = frameRateOf(stream); fps >= 1) {
                return std::min(fps, kMost);
            }
        }
    }
    return kOfStills;
}

Milliseconds frameBeside(Milliseconds place, bool isBehind)
{
    const double fps = shownFrameRate();
    const std::int64_t frame = frameAt(place, fps);
    const std::int64_t wanted = std::max<std::int64_t>(isBehind ? frame + 1 : frame - 1, 0);
    return numbers::added(place, startOf(wanted, fps) - startOf(frame, fps));
}

void PauseAt(Milliseconds place)
{
    Trapped(kModule, "PauseAt", [&] {
        Slider& seekBar = forms::frmPreview.sldSeekBar;
        if (PreviewState == kPlaying) {
            OnCmdPauseClick(); // ahead of the seek: the next tick would take the slider along
        }
        seekBar.SetValue(place);
        const Milliseconds taken = seekBar.Value();
        moduleTimeline::SetSliderPosition(taken, true);
        engine::Bool16 ok = engine::kFalse;
        check(EngineAs<engine::ITWPreview>()->Seek(taken, ok));
    });
}

void StepFrames(int count)
{
    Trapped(kModule, "StepFrames", [&] {
        const Milliseconds duration = moduleTimeline::GetTimelineDuration();
        if (duration < 1) {
            return;
        }
        if (PreviewState == kPlaying) {
            frmPreview::cmdPause_Click(); // the slider comes to the picture that is seen
        }
        const double fps = shownFrameRate();
        const std::int64_t last = frameAt(duration - 1, fps);
        const std::int64_t frame = frameAt(state::SliderPosition, fps) + count;
        PauseAt(startOf(std::clamp<std::int64_t>(frame, 0, last), fps));
    });
}

} // namespace moduleTWPreview
