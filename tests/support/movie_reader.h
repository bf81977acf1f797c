// Reads a whole movie from end to end, for tests that check what was saved.
//
// It stands on the media libraries directly and shares no line with the product's own reading, so that a fault there
// cannot hide itself here. One straight decode from the first packet to the last: no seeking, no index, no guessing of
// missing pictures. Not for the product.
#pragma once

#include "support/patterns.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace testmedia {

struct MovieFrame {
    double seconds = 0; // presentation time; where the file gives none, a frame after the one before
    int widthPx = 0;    // as shown: a turn by the display matrix is already done
    int heightPx = 0;
    std::optional<int> number; // its bar code
    bool black = false;
    bool keyFrame = false;
    bool interlaced = false;
    bool topFieldFirst = false;
    std::vector<std::uint8_t> rgb; // converted as the file's colour tags say, three bytes a pixel, if asked for

    // Mean colour of a rectangle; needs `rgb`.
    std::array<double, 3> meanColour(const PixelRect& rect) const;
};

struct Movie {
    // The container.
    std::string format; // as the library names it, such as "avi" or "mov,mp4,m4a,3gp,3g2,mj2"
    double durationSeconds = 0;

    // The picture; an empty codec says that there is none.
    std::string videoCodec;
    std::string colourSpace; // "bt709", "smpte170m", "unknown"...
    std::string colourRange; // "tv", "pc", "unknown"
    int codedWidthPx = 0;
    int codedHeightPx = 0;
    int aspectNumerator = 1; // of a pixel; 1:1 when the file gives none
    int aspectDenominator = 1;
    int rotationDegrees = 0;        // clockwise, to show it upright: 0, 90, 180, 270
    double frameRate = 0;           // average as the container tells it
    std::vector<MovieFrame> frames; // in the order in which they are shown

    // The sound; an empty codec says that there is none.
    std::string soundCodec;
    int rateHz = 0;
    int channels = 0;
    long soundBitRate = 0;
    double soundStartSeconds = 0; // presentation time of the first sample in `sound`
    double largestGapSeconds = 0; // between presentation times and the samples counted so far
    std::vector<float> sound;     // interleaved, -1..1

    int decodeErrors = 0;

    std::size_t soundCount() const { return channels > 0 ? sound.size() / static_cast<std::size_t>(channels) : 0; }
    double soundSeconds() const { return rateHz > 0 ? static_cast<double>(soundCount()) / rateHz : 0; }
    // A piece of one channel, by presentation time, cut off at the ends of the sound.
    SoundView soundView(int channel, double fromSeconds, double lengthSeconds) const;
    // The pattern's moment that is heard at presentation time `atSeconds`, less `atSeconds`: 0 when nothing is shifted.
    // Looked for within +-searchSeconds; nullopt when it is not found for sure.
    std::optional<double> soundShift(int channel, double atSeconds, double searchSeconds = 0.5,
                                     double lengthSeconds = 0.2) const;
    // The bar codes in order, -1 for a black picture, -2 for one that cannot be read.
    std::vector<int> numbers() const;
};

struct ReadOptions {
    bool keepRgb = false;
};

// Throws std::runtime_error when the file cannot be opened or has neither picture nor sound. Faults while decoding are
// counted, not thrown.
Movie readMovie(const std::filesystem::path& file, const ReadOptions& options = {});

} // namespace testmedia
