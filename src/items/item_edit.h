#pragma once

// Changes of one source, of one overlay with its transition, or of one effect: each is made whole or not at all.
//
// The two lists of the overlay track are counted alike; every change keeps them so. An overlay without transition is
// opaque, and so are its pieces. All raise what their calls raise; nothing has changed then. Interface thread only.

#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "items/source_times.h"

#include <memory>
#include <optional>
#include <string>

namespace items {

class PutBack;

/// A transition as it is read before an edit.
struct OverlayKey {
    std::string name;
    std::int16_t red = 0; // 0 to 255 each
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

class SourceEdit {
public:
    /// nameBytes is the buffer for names of transitions.
    SourceEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes);

    engine::Handle stream() const { return stream_; }
    std::int16_t mode() const { return mode_; }
    /// Nothing for an overlay without transition, and on any other track.
    const std::optional<OverlayKey>& key() const { return key_; }

    // Each answers the engine's last flag. `now` is how the source stands.

    bool remove(const SourceTimes& now);
    bool trim(const SourceTimes& now, const SourceTimes& then);
    /// The right piece becomes seq + 1.
    bool split(const SourceTimes& now, const SourceTimes& left, const SourceTimes& right);

private:
    bool insertSource(std::int16_t seq, const SourceTimes& times, PutBack& putBack);
    void insertKey(std::int16_t seq, const SourceTimes& times, PutBack& putBack);
    bool removeSource(std::int16_t seq, const SourceTimes& now, PutBack& putBack);

    std::shared_ptr<engine::ITWTimeline> engine_;
    engine::Handle track_;
    std::int16_t seq_;
    engine::Handle stream_ = 0;
    std::int16_t mode_ = 0;
    std::optional<OverlayKey> key_;
};

/// Removes overlay seq with its transition, or nothing. The engine's last flag; false when there is no such overlay.
bool removeOverlay(engine::ITWTimeline& engine, std::int16_t seq);

/// An effect of the track; its name is read through a buffer of nameBytes, and cut to it.
class EffectEdit {
public:
    EffectEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes);

    const std::string& name() const { return name_; }

    /// As of `SourceEdit`.
    bool split(const ItemTimes& now, const ItemTimes& left, const ItemTimes& right);

private:
    bool insert(const ItemTimes& times);

    std::shared_ptr<engine::ITWTimeline> engine_;
    engine::Handle track_;
    std::int16_t seq_;
    std::string name_;
};

} // namespace items
