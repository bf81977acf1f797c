#include "twcore/render/picture_place.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

int evenRound(double value) { return static_cast<int>(std::lround(value / 2)) * 2; }

/// One axis: how much of the frame is filled, and which part of the picture is seen.
struct Axis {
    int start = 0;
    int length = 0;
    double cropStart = 0;
    double cropLength = 1;
};

/// `ideal` is the picture's length in pixels of the movie, which may be longer than the movie's.
Axis centred(double ideal, int movie)
{
    // A bar or a cut of a pixel or two is rounding.
    constexpr double kNearly = 2.5;
    if (ideal > movie + kNearly) {
        const double part = movie / ideal;
        return {0, movie, (1 - part) / 2, part};
    }
    if (movie - ideal < kNearly) {
        return {0, movie, 0, 1};
    }
    const int length = std::max(2, evenRound(ideal));
    return {(movie - length) / 4 * 2, length, 0, 1};
}

} // namespace

PicturePlace placed(std::int16_t stretchMode, PictureSize picture, PictureSize projectFrame, PictureSize movie)
{
    const double fitX = static_cast<double>(projectFrame.width) / picture.width;
    const double fitY = static_cast<double>(projectFrame.height) / picture.height;
    double scaleX = std::min(fitX, fitY);
    double scaleY = scaleX;
    switch (stretchMode) {
    case stretch_mode::kStretch:
        scaleX = fitX;
        scaleY = fitY;
        break;
    case stretch_mode::kCrop:
        scaleX = scaleY = 1;
        break;
    case stretch_mode::kFill:
        scaleX = scaleY = std::max(fitX, fitY);
        break;
    default:
        break;
    }
    const Axis x = centred(picture.width * scaleX * movie.width / projectFrame.width, movie.width);
    const Axis y = centred(picture.height * scaleY * movie.height / projectFrame.height, movie.height);
    return {{x.start, y.start, x.length, y.length}, x.cropStart, y.cropStart, x.cropLength, y.cropLength};
}

} // namespace twcore
