#pragma once

// A player over a plan: its sound, its pictures, and where it stands. Both players of the contract are one of these.
//
// Interface thread; every call returns at once. Play and stop may come twice; whatever happens, the position stays
// where it is, or is clamped when the plan has become shorter.

#include "twcore/play/audio_devices.h"
#include "twcore/play/picture_player.h"
#include "twcore/play/sound_player.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace twcore {

class Player {
public:
    /// `storeShare` of what the machine can spare for pictures that stand ready is this player's.
    explicit Player(double storeShare, AudioMaker makeAudio = openAudio)
        : storeShare_(storeShare), makeAudio_(std::move(makeAudio))
    {}

    void setSurface(std::int32_t number);
    /// Logical pixels; none: the whole surface.
    void setArea(std::optional<PictureRect> area);

    /// Takes a plan, not playing. Nothing is shown until `show`, `seek` or `play`.
    void load(PlanPtr plan);
    /// Goes on with another plan: playing on where it plays, showing what it shows. Loads when nothing is loaded.
    void swap(PlanPtr plan);
    void unload();
    /// Stands at the beginning when the next plan is loaded. Only while none is.
    void rewind() { at_ = sought_ = 0; }
    bool isLoaded() const { return plan_ != nullptr; }

    /// Shows the picture at the position.
    void show();
    void play();
    void stop();
    /// Clamped. Plays on from there when it plays, else shows the picture there.
    void seek(std::int64_t ms);
    /// Stops where it was sought last.
    void halt();

    /// 0 when nothing is loaded.
    std::int32_t durationMs() const { return plan_ ? plan_->durationMs : 0; }
    /// Milliseconds; exactly the length at the end.
    std::int32_t positionMs();
    /// -100 silent to 0 full.
    void setVolume(std::int32_t level);
    /// A thread of it has died, for want of memory: unload and load again.
    bool hasFailed() const;

private:
    void open();
    bool isPlaying() const;
    std::int64_t position();
    void standAt(std::int64_t sample);

    double storeShare_;
    AudioMaker makeAudio_;
    PlanPtr plan_;
    std::int64_t at_ = 0;     // samples; while playing the clock tells
    std::int64_t sought_ = 0; // where it was sought last
    bool isRunning_ = false;  // told to play, and not stopped since
    bool isShown_ = false;
    std::int32_t surface_ = 0;
    std::optional<PictureRect> area_;
    float gain_ = 1;

    std::optional<SoundPlayer> sound_; // made when the first plan comes
    std::optional<PicturePlayer> pictures_;
};

} // namespace twcore
