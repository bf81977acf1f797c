#pragma once

// The pictures of a plan on a surface: one at a time while nothing plays, in step with the clock while it does.
//
//     maker: decode, fit, convert -> [a few pictures ahead] -> presenter: waits for each one's moment, shows it
//
// The newest wish wins: a picture that is being made for an older one is given up when it takes long, but what is done
// is shown, so that a hand on a slider sees pictures pass. While playing, pictures that would come more than a frame
// late are passed over; the sound never waits for them.

#include "engine/surfaces.h"
#include "twcore/play/left_thread.h"
#include "twcore/play/sound_player.h"
#include "twcore/render/picture_place.h"
#include "twcore/render/plan.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace twcore {

/// Interface thread; every call returns at once. Places are samples of the timeline at kPlayRate.
class PicturePlayer {
public:
    /// `storeBytes` is what pictures that stand ready may take.
    PicturePlayer(std::shared_ptr<PlayClock> clock, std::size_t storeBytes);
    ~PicturePlayer();

    /// By its number in the registry of surfaces; the part of it in which pictures stand, in logical pixels. What is
    /// shown comes again.
    void setSurface(std::int32_t number);
    void setArea(std::optional<PictureRect> area);
    /// Shows the picture at a place; at or behind the end, the last one.
    void show(PlanPtr plan, std::int64_t at);
    /// Shows pictures by the clock, which has been told to play from there.
    void run(PlanPtr plan, std::int64_t from);
    /// Goes on with another plan, playing or not.
    void swap(PlanPtr plan, std::int64_t at);
    /// Ends running, with the picture of that place on the surface.
    void hold(std::int64_t at);
    /// Shows nothing any more: when this returns, the surface gets no more pictures.
    void clear();
    bool hasFailed() const;

private:
    struct Room;

    std::shared_ptr<Room> room_;
    std::optional<LeftThread> maker_;
    std::optional<LeftThread> presenter_;
};

} // namespace twcore
