#include "twcore/model/timeline.h"

namespace twcore {

engine::Handle Timeline::createTrack(bool isVideo)
{
    const engine::Handle handle = handles_.next();
    if (handle != 0) {
        tracks_.emplace(handle, Track(isVideo));
    }
    return handle;
}

Track* Timeline::find(engine::Handle track) noexcept
{
    const auto found = tracks_.find(track);
    return found == tracks_.end() ? nullptr : &found->second;
}

void Timeline::setFrameSize(std::int16_t width, std::int16_t height) noexcept
{
    if (width < 1 || height < 1) {
        return;
    }
    frameWidth_ = width;
    frameHeight_ = height;
}

TimelineSnapshot Timeline::snapshot()
{
    TimelineSnapshot copy{frameWidth_, frameHeight_, effectsEnabled_, {}};
    copy.tracks.reserve(tracks_.size());
    for (auto& [handle, track] : tracks_) {
        copy.tracks.push_back(track.snapshot(handle));
    }
    return copy;
}

bool Timeline::restore(engine::Handle track, const TrackContents& contents)
{
    Track* found = find(track);
    if (found == nullptr) {
        return false;
    }
    found->restore(contents);
    return true;
}

} // namespace twcore
