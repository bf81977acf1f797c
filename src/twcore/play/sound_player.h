#pragma once

// The sound of a plan, heard: mixed ahead on a thread of its own, handed to the device through a ring, and counted, so
// that it is also the clock of playing.
//
//     SoundMixer -> [ring, a third of a second] -> device
//
// The newest wish wins. While nothing plays, the first samples at the wished place are mixed ahead of time, so that
// playing begins at once. A plan that is swapped while playing is heard from the next samples that the device has not
// begun to take: nothing stops. When the mix is late there is silence, and the clock waits with it: no sound is lost.

#include "twcore/play/audio_sink.h"
#include "twcore/play/left_thread.h"
#include "twcore/render/plan.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace twcore {

/// Where playing stands. Any thread.
class PlayClock {
public:
    virtual ~PlayClock() = default;
    /// The sample of the timeline, at kPlayRate, that is heard now; at the end, the plan's length. Never goes back
    /// while playing.
    virtual std::int64_t position() = 0;
    /// False once the end has been heard.
    virtual bool isPlaying() = 0;
};

/// Interface thread; every call returns at once.
class SoundPlayer {
public:
    explicit SoundPlayer(AudioMaker makeAudio);
    ~SoundPlayer();

    /// Plays nothing and stands at a sample. Without a plan nothing stays open.
    void stand(PlanPtr plan, std::int64_t at);
    void play(PlanPtr plan, std::int64_t from);
    /// Goes on with another plan, playing or not.
    void swap(PlanPtr plan);
    /// 0 silent to 1 full, heard at once.
    void setGain(float gain);

    std::shared_ptr<PlayClock> clock() const;
    /// Its thread has died, for want of memory.
    bool hasFailed() const;

private:
    struct Room;

    std::shared_ptr<Room> room_;
    std::optional<LeftThread> thread_;
};

} // namespace twcore
