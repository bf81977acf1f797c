#pragma once

// The timeline as plain values: what plans are compiled from and projects are stored from and loaded into. A snapshot
// points into nothing, so that any thread may keep one. Its times are settled: in order, apart, from 0 upwards.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace twcore {

/// Timeline and media times in milliseconds, half open. A media range that is empty, reversed or outside the stream is
/// black and silent there.
struct SourceItem {
    engine::Handle stream = 0;
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    std::int32_t mediaStartMs = 0;
    std::int32_t mediaStopMs = 0;
    std::int16_t stretchMode = 0;
    bool selected = false;
};

struct EffectItem {
    std::string name;
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    bool selected = false;
};

struct TransitionItem {
    std::string name;
    std::int32_t startMs = 0;
    std::int32_t stopMs = 0;
    bool selected = false;
    std::int16_t red = 0; // 0 to 255, as the other two
    std::int16_t green = 0;
    std::int16_t blue = 0;
    std::vector<std::pair<std::string, std::int32_t>> parameters;
};

/// Each list in the order of its sequence numbers.
struct TrackContents {
    std::vector<SourceItem> sources;
    std::vector<EffectItem> effects;
    std::vector<TransitionItem> transitions;
};

struct TrackSnapshot : TrackContents {
    engine::Handle handle = 0;
    bool isVideo = false;
    bool disabled = false;
    bool linked = false;
};

struct TimelineSnapshot {
    std::int16_t frameWidth = 0;
    std::int16_t frameHeight = 0;
    bool effectsEnabled = true;
    std::vector<TrackSnapshot> tracks; // in the order of their making
};

} // namespace twcore
