#pragma once

// Changes of one source, of one overlay with its transition, or of one effect: each is made whole or not at all.
//
// The two lists of the overlay track are counted alike; every change keeps them so. An overlay without transition is
// opaque, and so are its pieces. All raise what their calls raise; nothing has changed then. Interface thread only.

#include "items/whole_item.h"

#include <memory>

namespace items {

class SourceEdit {
public:
    /// nameBytes is the buffer for names of transitions.
    SourceEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes);

    /// As it stands; of a source that is not there, without stream.
    const WholeSource& source() const { return source_; }

    // Each answers the engine's last flag.

    bool remove();
    bool trim(const SourceTimes& then);
    /// The right piece becomes seq + 1.
    bool split(const SourceTimes& left, const SourceTimes& right);

private:
    std::shared_ptr<engine::ITWTimeline> engine_;
    ItemPlace at_;
    WholeSource source_;
};

/// Removes overlay seq with its transition, or nothing. The engine's last flag; false when there is no such overlay.
bool removeOverlay(std::int16_t seq);

/// An effect of the track; its name is read through a buffer of nameBytes, and cut to it.
class EffectEdit {
public:
    EffectEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes);

    const std::string& name() const { return effect_.name; }

    /// As of `SourceEdit`.
    bool split(const ItemTimes& left, const ItemTimes& right);

private:
    std::shared_ptr<engine::ITWTimeline> engine_;
    ItemPlace at_;
    WholeEffect effect_;
};

} // namespace items
