#pragma once

// What cut and copy have taken from the timeline, for any number of pastes.
//
// Records of one track lie behind each other as one run, counted by `Seq` from 0; a gap inside the run is a record too:
//
//     overlay   [ A 1000 ]  500  [ B 2000 ]      Seq 0 A, length 1000     Seq 1 gap of 500     Seq 2 B, length 2000
//
// so that a run begins at the index of its last record less that record's `Seq`. The clipboard outlives projects and is
// not saved; whoever closes the last media file or the project clears it. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace moduleEdit {

/// A piece of a video, audio or overlay track, or a gap. Times are ms.
struct SourceClip {
    engine::Handle Track = 0;
    engine::Handle Stream = 0; // 0 marks a gap
    engine::Milliseconds MediaStart = 0;
    engine::Milliseconds MediaStop = 0; // of a gap: its length
    std::int16_t Seq = 0;
    engine::Milliseconds Length = 0; // on the timeline; -1 of a gap
    std::int16_t StretchMode = 0;

    bool isGap() const { return Stream == 0; }
    engine::Milliseconds gap() const { return MediaStop; }
};

/// A piece of an effect, or a gap.
struct EffectClip {
    engine::Handle Track = 0; // the video track that bears it
    std::string Name;         // "0" marks a gap
    engine::Milliseconds Length = 0;
    std::int16_t Seq = 0;

    bool isGap() const { return Name == "0"; }
    engine::Milliseconds gap() const { return Length; }
};

/// A piece of an overlay's transition with its key, or a gap. Without a name the overlay had none.
struct TransitionClip {
    engine::Handle Track = 0;
    std::string Name; // "0" marks a gap
    engine::Milliseconds Length = 0;
    std::int16_t KeyRed = 0; // 0 to 255, as the other two
    std::int16_t KeyGreen = 0;
    std::int16_t KeyBlue = 0;
    std::int16_t Seq = 0;

    bool isGap() const { return Name == "0"; }
    engine::Milliseconds gap() const { return Length; }
};

inline std::vector<SourceClip> SourceClips;
inline std::vector<EffectClip> EffectClips;
inline std::vector<TransitionClip> TransitionClips;

void AddSourceClip(SourceClip clip);
void AddEffectClip(EffectClip clip);
void AddTransitionClip(TransitionClip clip);

void ClearSourceClips();
void ClearEffectClips();
void ClearTransitionClips();

/// The index of the track's last record, -1 if it has none.
std::int32_t LastSourceClip(engine::Handle track);
std::int32_t LastEffectClip(engine::Handle track);
std::int32_t LastTransitionClip(engine::Handle track);

/// Of the longest run, ms.
engine::Milliseconds ClipboardLength();

bool HasSourceClip(engine::Handle track);
bool HasEffectClip(engine::Handle track);

} // namespace moduleEdit
