#pragma once

// The whole timeline: its tracks by handle, the frame's size and whether effects are drawn. It is the only store of
// the edit, owned by the engine and touched on the interface thread only; other threads get snapshots.

#include "engine/types.h"
#include "twcore/model/handle_counter.h"
#include "twcore/model/stream_catalogue.h"
#include "twcore/model/timeline_snapshot.h"
#include "twcore/model/track.h"

#include <cstdint>
#include <map>

namespace twcore {

class Timeline {
public:
    /// Both outlive the timeline.
    Timeline(StreamCatalogue& streams, HandleCounter& handles) noexcept : streams_(streams), handles_(handles) {}

    /// 0 when there is no handle left.
    engine::Handle createTrack(bool isVideo);
    /// Null when there is none. Good for the timeline's life.
    Track* find(engine::Handle track) noexcept;

    StreamCatalogue& streams() noexcept { return streams_; }

    /// Not taken when either is below 1.
    void setFrameSize(std::int16_t width, std::int16_t height) noexcept;
    std::int16_t frameWidth() const noexcept { return frameWidth_; }
    std::int16_t frameHeight() const noexcept { return frameHeight_; }
    void setEffectsEnabled(bool enabled) noexcept { effectsEnabled_ = enabled; }

    /// Settles every track, for good: never to be taken in the middle of an edit.
    TimelineSnapshot snapshot();
    /// What `snapshot` would answer, without settling anything.
    TimelineSnapshot peek() const { return Timeline(*this).snapshot(); }

    /// Replaces what lies on a track, as a project is loaded. False when there is no such track; throws std::bad_alloc
    /// with the track unchanged.
    bool restore(engine::Handle track, const TrackContents& contents);

private:
    Timeline(const Timeline&) = default;

    StreamCatalogue& streams_;
    HandleCounter& handles_;
    std::map<engine::Handle, Track> tracks_; // handles rise, so this is also the order of making
    std::int16_t frameWidth_ = 320;
    std::int16_t frameHeight_ = 240;
    bool effectsEnabled_ = true;
};

} // namespace twcore
