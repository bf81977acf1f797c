#include "export/copied_frames.h"

#include "editing/moduleTWState.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWSave.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <cmath>

namespace exporting {

using engine::check;
using engine::EngineAs;

namespace {

/// Of the first that moves on the track; 0 when none does.
double rateOn(engine::Handle track)
{
    std::int16_t count = 0;
    check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
    double fps = 0;
    for (std::int16_t seq = 0; seq < count && fps <= 0; ++seq) {
        engine::Handle stream = 0;
        engine::Bool16 ok = engine::kFalse;
        check(EngineAs<engine::ITWTimeline>()->GetSourceStream(track, seq, stream));
        check(EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
        if (ok != engine::kFalse) {
            check(EngineAs<engine::ITWStreamInfo>()->GetFrameRate(fps));
        }
    }
    return fps;
}

/// What the engine takes where it is told no rate: the first moving pictures' own, else 25.
double rateOf(const std::vector<engine::Handle>& tracks)
{
    for (const engine::Handle track : tracks) {
        if (const double fps = moduleTWState::IsTrackDisabled(track) ? 0 : rateOn(track); fps > 0) {
            return fps;
        }
    }
    return 25;
}

std::string inGroups(std::int64_t number)
{
    constexpr std::size_t kGroup = 3;
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > kGroup;) {
        at -= kGroup;
        text.insert(at, ",");
    }
    return text;
}

} // namespace

std::int64_t framesOf(engine::Milliseconds length, const std::vector<engine::Handle>& tracks)
{
    constexpr double kRounding = 1e-6; // frames that a rate like 30000/1001 may be off
    std::int16_t set = -1;
    check(EngineAs<engine::ITWSave>()->GetFrameRate(set));
    const double fps = set > 0 ? set : rateOf(tracks);
    return static_cast<std::int64_t>(std::ceil(length * fps / 1000 - kRounding));
}

std::string copiedText(std::int64_t copied, std::int64_t all)
{
    return copied > 0 ? inGroups(copied) + " of " + inGroups(all) + " frames copied unchanged" : std::string();
}

} // namespace exporting
