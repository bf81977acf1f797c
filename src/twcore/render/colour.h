#pragma once

// What the numbers of a picture mean: the matrix between red, green, blue and brightness with two colour differences,
// and whether black and white are 0 and 255 (full) or 16 and 235 (limited).

#include "twcore/media/ff.h"

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
