#pragma once

// A finished picture as planes of bytes, to be worked on in place: brightness and two colour differences, or green,
// blue and red.

#include "twcore/media/ff.h"
#include "twcore/render/colour.h"

#include <array>
#include <cstdint>

namespace twcore {

struct Planes {
    std::array<std::uint8_t*, 3> data{};
    std::array<std::ptrdiff_t, 3> strides{};
    int width = 0;
    int height = 0;
    int shiftX = 0; // of the second and third plane
    int shiftY = 0;
    Colour colour;

    bool isRgb() const { return colour.matrix == Matrix::kRgb; }
    int planeWidth(int plane) const { return plane == 0 ? width : -(-width >> shiftX); }
    int planeHeight(int plane) const { return plane == 0 ? height : -(-height >> shiftY); }
    std::uint8_t* line(int plane, int y) const { return data[std::size_t(plane)] + y * strides[std::size_t(plane)]; }
    /// What black is in a plane.
    int black(int plane) const { return isRgb() ? 0 : plane > 0 ? 128 : colour.isFullRange ? 0 : 16; }
};

/// A frame that nobody else holds, of an 8-bit planar format of three planes.
Planes planesOf(AVFrame& frame, const Colour& colour);

} // namespace twcore
