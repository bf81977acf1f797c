#pragma once

// The five rows of the timeline as scripts name them, and where each is found in the program. Interface thread only;
// all but the names needs a timeline that stands.

#include "engine/types.h"
#include "items/track_rows.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace app {

/// In the order in which a timeline is printed. The last one lies on the first one's track.
enum class EditTrack : std::uint8_t { kVideo, kAudio1, kAudio2, kOverlay, kEffects };
inline constexpr std::array kEditTracks{EditTrack::kVideo, EditTrack::kAudio1, EditTrack::kAudio2, EditTrack::kOverlay,
                                        EditTrack::kEffects};

std::string_view nameOf(EditTrack track);
std::optional<EditTrack> trackNamed(std::string_view name);

const items::TrackRow& rowOf(EditTrack track);
engine::Handle handleOf(EditTrack track);
/// The place of its node below the root of the timeline list.
std::int32_t treePlaceOf(EditTrack track);
/// Sources lie on it, and of this kind.
bool takesPictures(EditTrack track);
bool takesSound(EditTrack track);

/// The events of its picture.
struct PictureEvents {
    void (*mouseDown)(std::int16_t index, int button, int shift, float x, float y);
    void (*mouseMove)(std::int16_t index, int button, int shift, float x, float y);
    void (*mouseUp)(std::int16_t index, int button, int shift, float x, float y);
};
PictureEvents eventsOf(EditTrack track);

} // namespace app
