// Pictures that carry their number and sound that carries its time.
//
// Every test picture bears a bar code of its frame number, every test sound is a function of time alone, so that a
// test which reads a saved movie back can say *which* frame and *which* moment it got, not merely that something came
// out. This room knows nothing of files and codecs: it draws into memory and reads from memory.
//
//     +--------------------------------+   The code is laid out in fractions of the picture, so scaling, a pixel
//     |  ~ ~ moving texture ~ ~ ~ ~ ~  |   aspect or a turn there and back does not hurt it. Black bars around the
//     |  +--------------------------+  |   picture are found and left out: the texture is never dark.
//     |  | reference  W B W B W W B B  |
//     |  | number     16 cells         |   A cell that is neither dark nor bright, or a check sum that does not
//     |  | check      16 cells         |   fit, makes the picture unreadable: it is never misread.
//     |  +--------------------------+  |
//     |  [colour patches, on request]  |
//     +--------------------------------+
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace testmedia {

enum class PixelLayout { gray8, rgb24 };

// A picture in memory, owned by the caller.
struct Canvas {
    std::uint8_t* data = nullptr;
    std::size_t strideBytes = 0;
    int widthPx = 0;
    int heightPx = 0;
    PixelLayout layout = PixelLayout::rgb24;
};

// Luma to read from, owned by the caller; full or limited range alike.
struct GrayView {
    const std::uint8_t* data = nullptr;
    std::size_t strideBytes = 0;
    int widthPx = 0;
    int heightPx = 0;
};

// Half-open rectangle in pixels.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

using Rgb = std::array<std::uint8_t, 3>;

// The texture as it stands at `moment` (in frames, fractions allowed) and over it the bar code of `number` (0..65535).
// From 160x120 up.
void drawBarcode(const Canvas& canvas, int number, double moment);
inline void drawBarcode(const Canvas& canvas, int number) { drawBarcode(canvas, number, number); }

// The number in the picture. nullopt: black, unreadable, or a mix of two numbers (from about 3:7 on).
std::optional<int> readBarcode(const GrayView& picture);

// No picture at all: nothing but (nearly) black.
bool isBlack(const GrayView& picture);

// The rectangle that is left when black bars are taken off; empty when all is black.
PixelRect findActiveArea(const GrayView& picture);

// Flat colours below the bar code, for tests of colour spaces and ranges.
inline constexpr std::array<Rgb, 8> kPatchColours{{{191, 191, 191},
                                                   {191, 191, 0},
                                                   {0, 191, 191},
                                                   {0, 191, 0},
                                                   {191, 0, 191},
                                                   {191, 0, 0},
                                                   {0, 0, 191},
                                                   {96, 64, 48}}};
void drawPatches(const Canvas& canvas);
// Where patch `index` is flat, edges taken off, in a picture area of this size.
PixelRect patchRect(int index, int widthPx, int heightPx);

// --- Sound ---
//
// Noise below 1.7 kHz fixes the moment (cross-correlation has one sharp peak); a quiet tone from 2.2 kHz up names the
// tenth of a second. Both are functions of absolute time, the same at every sample rate from 8 kHz on. Channels
// differ. Peak below 0.8.

inline constexpr int kDownmix = -1; // as a channel: the mean of channels 0 and 1
inline constexpr double kToneStepSeconds = 0.1;
inline constexpr int kToneSteps = 64; // then the staircase begins anew

double soundAtTime(double seconds, int channel);
float soundAt(std::int64_t sampleIndex, int rateHz, int channel);
double toneHz(double seconds, int channel);

// One channel of sound; `stride` is the number of channels when the samples are interleaved.
struct SoundView {
    const float* samples = nullptr;
    std::size_t count = 0; // samples of this channel
    int rateHz = 48000;
    std::size_t stride = 1;
};

struct SoundMatch {
    double seconds = 0; // media time of the first sample
    double score = 0;   // normalized correlation: 1 the very sound, below 0.3 something else or silence
};

// Where in the pattern this piece (50 ms or more; only the first half second counts) comes from, looking at starts in
// [fromSeconds, toSeconds]. Exact to far below a sample when the score is near 1.
SoundMatch locate(const SoundView& piece, int channel, double fromSeconds, double toSeconds);

// The highest level, of either sign; 0 is silence.
float loudest(const SoundView& piece);

// The strongest frequency in a band; the tone staircase lives in 2.2 to 3.5 kHz.
double dominantFrequency(const SoundView& piece, double lowHz = 2150, double highHz = 3550);

} // namespace testmedia
