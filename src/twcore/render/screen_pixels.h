#pragma once

// Pictures of 4:2:0 as pixels of a screen: blue, green, red and a byte that is full, each rounded once. Colour stands
// in the middle of its four pixels and goes evenly from one to the next.

#include "twcore/render/colour.h"
#include "twcore/render/scale_loops.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace twcore {

/// Of one picture: width and height in pixels, strides in bytes.
struct ScreenWork {
    const std::uint8_t* planes[3];
    int strides[3];
    int width;
    int height;
    std::uint8_t* pixels;
    std::ptrdiff_t stride;
};

/// Serves one thread.
class ScreenPixels {
public:
    /// `colour` is not RGB.
    explicit ScreenPixels(const Colour& colour, Vectors vectors = vectorsHere());

    void paint(const ScreenWork& work);

    /// Whole numbers with 13 bits behind the point, and what brightness begins at.
    struct Factors {
        std::int16_t black;
        std::int16_t luma;
        std::int16_t redOfRed;
        std::int16_t greenOfBlue;
        std::int16_t greenOfRed;
        std::int16_t blueOfBlue;
    };

private:
    Factors factors_;
    Vectors vectors_;
    std::vector<std::int16_t> chroma_[2]; // a line of each colour difference, with a sample more at either end
};

} // namespace twcore
