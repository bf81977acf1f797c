#pragma once

// The timeline compiled for playing and saving: immutable, shared between threads, pointing into nothing that an edit
// could change. Whoever renders holds the plan it began with to the end.
//
//     timeline:   A....... B....          plan, pictures:  |A     |A+O |O |B   |
//     overlay:          O....             (stretches in which the same sources are active)

#include "twcore/media/media_file.h"
#include "twcore/media/orientation.h"
#include "twcore/model/timeline_snapshot.h"
#include "twcore/render/effects.h"
#include "twcore/render/key_shares.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace twcore {

/// A source with what it plays. Timeline and media times in milliseconds, half open.
struct PlannedSource {
    MediaFilePtr media;
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    std::int32_t mediaStartMs = 0;
    std::int32_t mediaStopMs = 0;
    std::int16_t stretchMode = 0;
    std::optional<KeyRgb> key; // of an overlay; none: opaque

    /// Milliseconds of media a millisecond of timeline; 0 when the media range is empty or reversed.
    double speed() const;
    /// Media time in seconds at a timeline time in milliseconds.
    double mediaSecondsAt(double timelineMs) const;
};

/// An effect over its stretch. Milliseconds, half open.
struct PlannedEffect {
    EffectKind kind = EffectKind::kNone;
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    // Fade: where its level is 0 and where 1; between them it goes evenly. From the left edge of picture it rises, to
    // the right edge it falls, over a cut it dips.
    std::vector<std::pair<std::int32_t, double>> levels;

    EffectMoment momentAt(double timelineMs) const;
};

/// A stretch of the picture in which the same sources and the same effect are active, the lowest source first.
/// Milliseconds, half open.
struct PictureStretch {
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    std::vector<const PlannedSource*> layers;
    const PlannedEffect* effect = nullptr;
};

struct Plan {
    PictureSize frame;           // the project's, in which pictures are laid out
    AVRational frameRate{25, 1}; // the first picture source's
    std::int32_t durationMs = 0; // of the longest track
    bool hasPictureTrack = false;
    bool hasSoundTrack = false;
    std::vector<std::vector<PlannedSource>> pictureTracks; // lowest first
    std::vector<std::vector<PlannedSource>> soundTracks;
    std::vector<PlannedEffect> effects;    // in the order of time
    std::vector<PictureStretch> stretches; // from 0 to durationMs, without holes
};

using PlanPtr = std::shared_ptr<const Plan>;

/// The source behind one on its track, when it follows without a gap and plays a later part of the same medium; else
/// nullptr.
const PlannedSource* laterPartBehind(const Plan& plan, const PlannedSource& source);

/// What a stream handle stands for: its file, and whether it is the file's picture.
struct StreamTarget {
    MediaFilePtr media;
    bool isPicture = false;
};

/// Compiles the given tracks of a timeline; disabled ones take no part. `targetOf` answers an empty target for a
/// stream that cannot be played, which is then black and silent. Effects are those of the lowest picture track.
PlanPtr compilePlan(const TimelineSnapshot& timeline, const std::vector<engine::Handle>& tracks, bool withEffects,
                    const std::function<StreamTarget(engine::Handle)>& targetOf);

} // namespace twcore
