#include "twcore/render/screen_pixels.h"

#include "twcore/render/vectors.h"

#include <algorithm>
#include <cmath>

#if defined(__x86_64__)
#include <immintrin.h>
#define TWCORE_AVX2 __attribute__((target("avx2")))
#endif

namespace twcore {

namespace {

constexpr int kFactorBits = 13;
constexpr int kValueBits = 7;                              // of what is multiplied
constexpr int kResultBits = kValueBits + kFactorBits - 15; // the upper half of a product, rounded
constexpr int kMixedBits = 2;                              // three parts of a line and one of its neighbour
constexpr int kChromaShift = kValueBits - 2 * kMixedBits;

/// A line of pixels: brightness, both colour differences in quarters of a step and with their neighbours, pixels.
struct Line {
    const std::uint8_t* luma;
    const std::int16_t* blue;
    const std::int16_t* red;
    std::uint8_t* pixels;
    int width;
};

TWCORE_WIDE_VECTORS void mixChroma(const std::uint8_t* __restrict near, const std::uint8_t* __restrict far,
                                   std::int16_t* __restrict to, int count)
{
    constexpr int kMiddle = 128 << kMixedBits;
    for (int x = 0; x < count; ++x) {
        to[x] = static_cast<std::int16_t>(3 * near[x] + far[x] - kMiddle);
    }
}

int product(int value, int factor) { return (value * factor + (1 << 14)) >> 15; }

std::uint8_t toByte(int value)
{
    return static_cast<std::uint8_t>(std::clamp((value + (1 << (kResultBits - 1))) >> kResultBits, 0, 255));
}

void paintFrom(int x, const ScreenPixels::Factors& f, const Line& line)
{
    for (; x < line.width; ++x) {
        const int near = x / 2;
        const int far = near + (x % 2 == 0 ? -1 : 1);
        const int blue = (3 * line.blue[near] + line.blue[far]) * (1 << kChromaShift);
        const int red = (3 * line.red[near] + line.red[far]) * (1 << kChromaShift);
        const int luma = product((line.luma[x] - f.black) * (1 << kValueBits), f.luma);
        std::uint8_t* const pixel = line.pixels + std::ptrdiff_t{4} * x;
        pixel[0] = toByte(luma + product(blue, f.blueOfBlue));
        pixel[1] = toByte(luma + product(blue, f.greenOfBlue) + product(red, f.greenOfRed));
        pixel[2] = toByte(luma + product(red, f.redOfRed));
        pixel[3] = 255;
    }
}

#if defined(__x86_64__)

/// Sixteen samples of a colour difference over 32 pixels, those of each half of a vector together.
struct Spread {
    __m256i near;
    __m256i far;
};

TWCORE_AVX2 __m256i load(const std::int16_t* from)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

TWCORE_AVX2 Spread spread(const std::int16_t* samples)
{
    const __m256i own = load(samples);
    const __m256i most = _mm256_add_epi16(own, _mm256_add_epi16(own, own));
    const __m256i left = _mm256_slli_epi16(_mm256_add_epi16(most, load(samples - 1)), kChromaShift);
    const __m256i right = _mm256_slli_epi16(_mm256_add_epi16(most, load(samples + 1)), kChromaShift);
    return {_mm256_unpacklo_epi16(left, right), _mm256_unpackhi_epi16(left, right)};
}

TWCORE_AVX2 __m256i times(__m256i value, std::int16_t factor)
{
    return _mm256_mulhrs_epi16(value, _mm256_set1_epi16(factor));
}

TWCORE_AVX2 __m256i steps(__m256i value) { return _mm256_srai_epi16(value, kResultBits); }

/// Blue, green and red of the pixels of one half of each vector, with kResultBits taken off.
struct Triple {
    __m256i blue;
    __m256i green;
    __m256i red;
};

TWCORE_AVX2 Triple triple(const ScreenPixels::Factors& f, __m256i luma, __m256i blue, __m256i red)
{
    const __m256i half = _mm256_set1_epi16(1 << (kResultBits - 1));
    luma = _mm256_slli_epi16(_mm256_sub_epi16(luma, _mm256_set1_epi16(f.black)), kValueBits);
    luma = _mm256_add_epi16(times(luma, f.luma), half);
    const __m256i green = _mm256_add_epi16(times(blue, f.greenOfBlue), times(red, f.greenOfRed));
    return {steps(_mm256_add_epi16(luma, times(blue, f.blueOfBlue))), steps(_mm256_add_epi16(luma, green)),
            steps(_mm256_add_epi16(luma, times(red, f.redOfRed)))};
}

/// Where it ended.
TWCORE_AVX2 int paintWide(const ScreenPixels::Factors& f, const Line& line)
{
    constexpr int kStep = 32;
    const __m256i none = _mm256_setzero_si256();
    const __m256i full = _mm256_set1_epi8(-1);
    int x = 0;
    for (; x + kStep <= line.width; x += kStep) {
        const __m256i luma = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(line.luma + x));
        const Spread blues = spread(line.blue + x / 2);
        const Spread reds = spread(line.red + x / 2);
        const Triple near = triple(f, _mm256_unpacklo_epi8(luma, none), blues.near, reds.near);
        const Triple far = triple(f, _mm256_unpackhi_epi8(luma, none), blues.far, reds.far);
        const __m256i blue = _mm256_packus_epi16(near.blue, far.blue);
        const __m256i green = _mm256_packus_epi16(near.green, far.green);
        const __m256i red = _mm256_packus_epi16(near.red, far.red);
        const __m256i twos[2] = {_mm256_unpacklo_epi8(blue, green), _mm256_unpackhi_epi8(blue, green)};
        const __m256i rest[2] = {_mm256_unpacklo_epi8(red, full), _mm256_unpackhi_epi8(red, full)};
        auto* const to = reinterpret_cast<__m256i*>(line.pixels + std::ptrdiff_t{4} * x);
        for (int i = 0; i < 2; ++i) {
            const __m256i first = _mm256_unpacklo_epi16(twos[i], rest[i]);
            const __m256i second = _mm256_unpackhi_epi16(twos[i], rest[i]);
            _mm256_storeu_si256(to + i, _mm256_permute2x128_si256(first, second, 0x20));
            _mm256_storeu_si256(to + i + 2, _mm256_permute2x128_si256(first, second, 0x31));
        }
    }
    return x;
}

#else

int paintWide(const ScreenPixels::Factors&, const Line&) { return 0; }

#endif

std::int16_t fixed(double factor) { return static_cast<std::int16_t>(std::lround(factor * (1 << kFactorBits))); }

} // namespace

ScreenPixels::ScreenPixels(const Colour& colour, Vectors vectors) : vectors_(vectors)
{
    const auto [red, blue] = lumaWeightsOf(colour.matrix);
    const double green = 1 - red - blue;
    const double luma = colour.isFullRange ? 1 : 255.0 / 219;
    const double chroma = colour.isFullRange ? 1 : 255.0 / 224;
    factors_.black = colour.isFullRange ? 0 : 16;
    factors_.luma = fixed(luma);
    factors_.redOfRed = fixed(chroma * 2 * (1 - red));
    factors_.greenOfBlue = fixed(chroma * -2 * blue * (1 - blue) / green);
    factors_.greenOfRed = fixed(chroma * -2 * red * (1 - red) / green);
    factors_.blueOfBlue = fixed(chroma * 2 * (1 - blue));
}

void ScreenPixels::paint(const ScreenWork& work)
{
    const int chromaWidth = (work.width + 1) / 2;
    const int chromaHeight = (work.height + 1) / 2;
    for (auto& line : chroma_) {
        line.resize(static_cast<std::size_t>(chromaWidth) + 2);
    }
    for (int y = 0; y < work.height; ++y) {
        const int near = y / 2;
        const int far = std::clamp(near + (y % 2 == 0 ? -1 : 1), 0, chromaHeight - 1);
        for (int i = 0; i < 2; ++i) {
            const std::uint8_t* const plane = work.planes[i + 1];
            const std::ptrdiff_t stride = work.strides[i + 1];
            auto& line = chroma_[i];
            mixChroma(plane + near * stride, plane + far * stride, line.data() + 1, chromaWidth);
            line.front() = line[1];
            line.back() = line[line.size() - 2];
        }
        const Line line{work.planes[0] + std::ptrdiff_t{y} * work.strides[0], chroma_[0].data() + 1,
                        chroma_[1].data() + 1, work.pixels + y * work.stride, work.width};
        paintFrom(vectors_ == Vectors::k256Bits ? paintWide(factors_, line) : 0, factors_, line);
    }
}

} // namespace twcore
