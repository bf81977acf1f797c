#pragma once

// What the numbers of a picture mean: the matrix between red, green, blue and brightness with two colour differences,
// and whether black and white are 0 and 255 (full) or 16 and 235 (limited).

#include "twcore/media/ff.h"

#include <array>
#include <cstdint>

namespace twcore {

enum class Matrix { kRgb, kBt601, kBt709, kBt2020 };

struct Colour {
    Matrix matrix = Matrix::kBt601;
    bool isFullRange = false;

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// Shares of red and blue in brightness; green has the rest.
struct LumaWeights {
    double red;
    double blue;
};
LumaWeights lumaWeightsOf(Matrix matrix);

/// What is meant where a file does not tell: pictures wider than 1024 or higher than 576 pixels are 709, others 601,
/// and so is all full range. Who writes a movie that cannot tell its colour keeps to it.
Matrix untoldMatrix(int width, int height, bool isFullRange);

/// What the frame says of itself; what it does not say is as above.
Colour colourOf(const AVFrame& frame);

/// The way from one colour's numbers to another's, neither of them RGB, line by line. Lines are those of scaling: steps
/// of 8 bits with kLineBits behind the point. Results are rounded to bytes.
class Recolouring {
public:
    Recolouring(const Colour& from, const Colour& to);

    struct ChromaLine {
        const std::int16_t* blue;
        const std::int16_t* red;
    };
    /// What each colour difference adds to the brightness of the pixels over it, `1 << shiftX` of them.
    void parts(const ChromaLine& line, int width, int shiftX, int* parts) const;
    void chroma(const ChromaLine& line, std::uint8_t* blue, std::uint8_t* red, int width) const;
    void luma(const std::int16_t* line, const int* parts, std::uint8_t* to, int width) const;

    /// Whole numbers, each with bits behind the point.
    struct Map {
        std::array<std::array<int, 3>, 3> factor;
        std::array<int, 3> offset;
    };

private:
    Map map_;
};

/// Rewrites a rectangle of an 8-bit planar picture in place from one colour to another. Neither is RGB. Chroma is
/// subsampled by 1 << shiftX, 1 << shiftY; the rectangle is aligned to that.
struct PlanarRect {
    std::uint8_t* planes[3];
    int strides[3];
    int width;
    int height;
    int shiftX;
    int shiftY;
};
void recolour(const PlanarRect& picture, const Colour& from, const Colour& to);

} // namespace twcore
