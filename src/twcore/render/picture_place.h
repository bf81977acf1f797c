#pragma once

// Where a picture stands in the movie's frame, and which part of it, by the source's stretch mode.
//
//     0 stretch            1 crop at own size       2 whole, with bars       3 filling, proportions kept
//     +-----------+        +-----------+            +--+-----+--+            +-----------+
//     |squeezed or|        |  the part |            |  |     |  |            | cut off at|
//     |drawn out  |        |  inside   |            |  |     |  |            | two sides |
//     +-----------+        +-----------+            +--+-----+--+            +-----------+

#include "twcore/media/orientation.h"

#include <cstdint>

namespace twcore {

/// Pixels of the movie's frame.
struct PictureRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const PictureRect&, const PictureRect&) = default;
};

struct PicturePlace {
    PictureRect target;
    // The part of the picture as displayed that fills the target, each from 0 to 1.
    double cropLeft = 0;
    double cropTop = 0;
    double cropWidth = 1;
    double cropHeight = 1;

    bool showsAll() const { return cropWidth >= 1 && cropHeight >= 1; }
    friend bool operator==(const PicturePlace&, const PicturePlace&) = default;
};

namespace stretch_mode {
inline constexpr std::int16_t kStretch = 0;
inline constexpr std::int16_t kCrop = 1;
inline constexpr std::int16_t kPreserve = 2;
inline constexpr std::int16_t kFill = 3;
} // namespace stretch_mode

/// Laid out in the project's frame, then brought to the movie's size. An unknown mode is whole with bars. Edges are
/// even, as subsampled colour needs it.
PicturePlace placed(std::int16_t stretchMode, PictureSize picture, PictureSize projectFrame, PictureSize movie);

} // namespace twcore
