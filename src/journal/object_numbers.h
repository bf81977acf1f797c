#pragma once

// What the two sides of `state_coding.h` agree on.

#include "journal/objects.h"

namespace journal {

inline constexpr ObjectNumber kMedia = 2;
inline constexpr ObjectNumber kOrigin = 3;
inline constexpr ObjectNumber kNote = 4; // why it was set aside

// The rows of an image.
inline constexpr std::size_t kSourceLanes = 3; // Video, Audio 1, Audio 2
inline constexpr std::size_t kOverlayLane = 3;
inline constexpr std::size_t kEffectLane = 4;
inline constexpr std::size_t kTransitionLane = 5;

inline constexpr std::size_t kSourceBytes = 22;

} // namespace journal
