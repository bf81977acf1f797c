#include "twcore/render/scale_loops.h"

#include "twcore/render/vectors.h"

#include <algorithm>

#if defined(__x86_64__)
#include <immintrin.h>
#define TWCORE_AVX2 __attribute__((target("avx2")))
#endif

namespace twcore {

namespace {

int firstOf(std::int16_t pair) { return static_cast<std::int8_t>(pair & 0xFF); }
int secondOf(std::int16_t pair) { return static_cast<std::int8_t>((pair >> 8) & 0xFF); }

void mixBytesFrom(int x, const ByteMix& mix, std::int16_t* line, int width)
{
    for (; x < width; ++x) {
        int high = 0;
        int low = 1 << (mix.lowBits - 1);
        for (int k = 0; k < mix.pairs; ++k) {
            const int above = mix.rows[2 * k][x];
            const int below = mix.rows[2 * k + 1][x];
            high += above * firstOf(mix.high[k]) + below * secondOf(mix.high[k]);
            low += above * firstOf(mix.low[k]) + below * secondOf(mix.low[k]);
        }
        line[x] = static_cast<std::int16_t>(high + (low >> mix.lowBits));
    }
}

void mixWordsFrom(int x, const WordMix& mix, std::int16_t* line, int width)
{
    for (; x < width; ++x) {
        int sum = 0;
        for (int k = 0; k < mix.count; ++k) {
            const int value = reinterpret_cast<const std::uint16_t*>(mix.rows[k])[x] << mix.shift;
            sum += ((value * mix.weights[k] >> kWeightBits) + 1) >> 1;
        }
        line[x] = static_cast<std::int16_t>(sum);
    }
}

TWCORE_WIDE_VECTORS void shiftRow(const std::uint16_t* __restrict row, int shift, std::int16_t* __restrict line,
                                  int width)
{
    for (int x = 0; x < width; ++x) {
        line[x] = static_cast<std::int16_t>(row[x] << shift);
    }
}

TWCORE_WIDE_VECTORS void widen(const std::uint8_t* __restrict from, std::int16_t* __restrict line, int width)
{
    for (int x = 0; x < width; ++x) {
        line[x] = static_cast<std::int16_t>(from[x] << kLineBits);
    }
}

void narrowFrom(int x, const std::int16_t* line, std::uint8_t* to, int width)
{
    for (; x < width; ++x) {
        to[x] = static_cast<std::uint8_t>(std::clamp((line[x] + (1 << (kLineBits - 1))) >> kLineBits, 0, 255));
    }
}

void scalePlainly(const LineWork& work, std::int16_t* to)
{
    for (std::size_t x = 0; x < work.results; ++x) {
        int sum = 1 << (kWeightBits - 1);
        for (std::size_t k = 0; k < work.taps; ++k) {
            sum +=
                work.line[work.first[x] + static_cast<int>(k)] * work.weights[weightPlace(work.way, work.taps, x, k)];
        }
        to[x] = static_cast<std::int16_t>(sum >> kWeightBits);
    }
}

#if defined(__x86_64__)

/// Rows lie too far apart for the processor to see what comes next: without this, half of the time is waiting.
TWCORE_AVX2 void askFor(const NextRows& rows, int byte)
{
    _mm_prefetch(reinterpret_cast<const char*>(rows[0] + byte), _MM_HINT_T0);
    _mm_prefetch(reinterpret_cast<const char*>(rows[1] + byte), _MM_HINT_T0);
}

/// Where it ended: the last, which make no whole vector, are left.
TWCORE_AVX2 int mixBytesWide(const ByteMix& mix, std::int16_t* line, int width)
{
    constexpr int kStep = 32;
    const __m256i half = _mm256_set1_epi16(static_cast<short>(1 << (mix.lowBits - 1)));
    const __m128i shift = _mm_cvtsi32_si128(mix.lowBits);
    int x = 0;
    for (; x + kStep <= width; x += kStep) {
        askFor(mix.next, x);
        __m256i highs[2] = {_mm256_setzero_si256(), _mm256_setzero_si256()};
        __m256i lows[2] = {half, half};
        for (int k = 0; k < mix.pairs; ++k) {
            const __m256i above = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(mix.rows[2 * k] + x));
            const __m256i below = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(mix.rows[2 * k + 1] + x));
            const __m256i pairs[2] = {_mm256_unpacklo_epi8(above, below), _mm256_unpackhi_epi8(above, below)};
            const __m256i high = _mm256_set1_epi16(mix.high[k]);
            const __m256i low = _mm256_set1_epi16(mix.low[k]);
            for (int i = 0; i < 2; ++i) {
                highs[i] = _mm256_add_epi16(highs[i], _mm256_maddubs_epi16(pairs[i], high));
                lows[i] = _mm256_add_epi16(lows[i], _mm256_maddubs_epi16(pairs[i], low));
            }
        }
        const __m256i near = _mm256_add_epi16(highs[0], _mm256_sra_epi16(lows[0], shift));
        const __m256i far = _mm256_add_epi16(highs[1], _mm256_sra_epi16(lows[1], shift));
        auto* const to = reinterpret_cast<__m256i*>(line + x);
        _mm256_storeu_si256(to, _mm256_permute2x128_si256(near, far, 0x20));
        _mm256_storeu_si256(to + 1, _mm256_permute2x128_si256(near, far, 0x31));
    }
    return x;
}

TWCORE_AVX2 int mixWordsWide(const WordMix& mix, std::int16_t* line, int width)
{
    constexpr int kStep = 16;
    const __m128i shift = _mm_cvtsi32_si128(mix.shift);
    int x = 0;
    for (; x + kStep <= width; x += kStep) {
        askFor(mix.next, 2 * x);
        __m256i sum = _mm256_setzero_si256();
        for (int k = 0; k < mix.count; ++k) {
            const auto* const row = reinterpret_cast<const std::uint16_t*>(mix.rows[k]) + x;
            const __m256i value = _mm256_sll_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(row)), shift);
            sum = _mm256_add_epi16(sum, _mm256_mulhrs_epi16(value, _mm256_set1_epi16(mix.weights[k])));
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(line + x), sum);
    }
    return x;
}

TWCORE_AVX2 __m256i load(const std::int16_t* from)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

TWCORE_AVX2 int narrowWide(const std::int16_t* line, std::uint8_t* to, int width)
{
    constexpr int kStep = 32;
    const __m256i half = _mm256_set1_epi16(1 << (kLineBits - 1));
    int x = 0;
    for (; x + kStep <= width; x += kStep) {
        const __m256i near = _mm256_srai_epi16(_mm256_add_epi16(load(line + x), half), kLineBits);
        const __m256i far = _mm256_srai_epi16(_mm256_add_epi16(load(line + x + kStep / 2), half), kLineBits);
        const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(near, far), 0xD8);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + x), bytes);
    }
    return x;
}

TWCORE_AVX2 __m256i loadTwo(const std::int16_t* low, const std::int16_t* high)
{
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(low));
    return _mm256_inserti128_si256(_mm256_castsi128_si256(first),
                                   _mm_loadu_si128(reinterpret_cast<const __m128i*>(high)), 1);
}

TWCORE_AVX2 void storeRounded(__m256i sum, std::int16_t* to)
{
    sum = _mm256_srai_epi32(_mm256_add_epi32(sum, _mm256_set1_epi32(1 << (kWeightBits - 1))), kWeightBits);
    const __m128i packed = _mm_packs_epi32(_mm256_castsi256_si128(sum), _mm256_extracti128_si256(sum, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), packed);
}

/// Two taps of eight results at once.
TWCORE_AVX2 void scaleBeside(const LineWork& work, std::int16_t* to)
{
    __m256i weights[kBesideTaps / 2];
    for (std::size_t k = 0; k < kBesideTaps; k += 2) {
        weights[k / 2] = load(work.weights + k * kLineGroup);
    }
    const std::int16_t* from = work.line + work.first[0];
    for (std::size_t x = 0; x < work.results; x += kLineGroup, from += 2 * kLineGroup) {
        __m256i sum = _mm256_madd_epi16(load(from), weights[0]);
        for (std::size_t k = 2; k < kBesideTaps; k += 2) {
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(load(from + k), weights[k / 2]));
        }
        storeRounded(sum, to + x);
    }
}

TWCORE_AVX2 void scaleShuffled(const LineWork& work, std::int16_t* to)
{
    const std::int16_t* weights = work.weights;
    for (std::size_t x = 0; x < work.results; x += kLineGroup) {
        __m256i sum = _mm256_setzero_si256();
        const __m256i shuffle = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(work.shuffles + 4 * x));
        const std::int16_t* const low = work.line + work.first[x];
        const std::int16_t* const high = work.line + work.first[x + kLineGroup / 2];
        for (std::size_t k = 0; k < work.taps; k += 2, weights += 2 * kLineGroup) {
            const __m256i pairs = _mm256_shuffle_epi8(loadTwo(low + k, high + k), shuffle);
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(pairs, load(weights)));
        }
        storeRounded(sum, to + x);
    }
}

/// Eight taps of two results at once.
TWCORE_AVX2 void scaleAlone(const LineWork& work, std::int16_t* to)
{
    const std::int16_t* weights = work.weights;
    for (std::size_t x = 0; x < work.results; x += kLineGroup) {
        __m256i sums[4] = {};
        for (std::size_t k = 0; k < work.taps; k += kLineGroup) {
            for (std::size_t i = 0; i < 4; ++i, weights += 2 * kLineGroup) {
                const __m256i values =
                    loadTwo(work.line + work.first[x + i] + k, work.line + work.first[x + i + 4] + k);
                sums[i] = _mm256_add_epi32(sums[i], _mm256_madd_epi16(values, load(weights)));
            }
        }
        storeRounded(_mm256_hadd_epi32(_mm256_hadd_epi32(sums[0], sums[1]), _mm256_hadd_epi32(sums[2], sums[3])),
                     to + x);
    }
}

#endif

} // namespace

#if defined(__x86_64__)

Vectors vectorsHere()
{
    static const bool has = __builtin_cpu_supports("avx2") > 0;
    return has ? Vectors::k256Bits : Vectors::kNone;
}

void mixBytes(Vectors vectors, const ByteMix& mix, std::int16_t* line, int width)
{
    mixBytesFrom(vectors == Vectors::k256Bits ? mixBytesWide(mix, line, width) : 0, mix, line, width);
}

void mixWords(Vectors vectors, const WordMix& mix, std::int16_t* line, int width)
{
    mixWordsFrom(vectors == Vectors::k256Bits ? mixWordsWide(mix, line, width) : 0, mix, line, width);
}

void scaleLine(Vectors vectors, const LineWork& work, std::int16_t* to)
{
    if (vectors == Vectors::kNone) {
        scalePlainly(work, to);
    } else if (work.way == LineWay::kBeside) {
        scaleBeside(work, to);
    } else if (work.way == LineWay::kShuffled) {
        scaleShuffled(work, to);
    } else {
        scaleAlone(work, to);
    }
}

void lineToBytes(Vectors vectors, const std::int16_t* line, std::uint8_t* to, int width)
{
    narrowFrom(vectors == Vectors::k256Bits ? narrowWide(line, to, width) : 0, line, to, width);
}

#else

Vectors vectorsHere() { return Vectors::kNone; }
void mixBytes(Vectors, const ByteMix& mix, std::int16_t* line, int width) { mixBytesFrom(0, mix, line, width); }
void mixWords(Vectors, const WordMix& mix, std::int16_t* line, int width) { mixWordsFrom(0, mix, line, width); }
void scaleLine(Vectors, const LineWork& work, std::int16_t* to) { scalePlainly(work, to); }
void lineToBytes(Vectors, const std::int16_t* line, std::uint8_t* to, int width) { narrowFrom(0, line, to, width); }

#endif

std::size_t weightPlace(LineWay way, std::size_t taps, std::size_t result, std::size_t tap)
{
    const std::size_t group = result / kLineGroup * kLineGroup * taps;
    if (way == LineWay::kAlone) {
        const std::size_t order = result % 4 * 2 + result % kLineGroup / 4; // 0, 4, 1, 5, 2, 6, 3 and 7
        return group + tap / kLineGroup * kLineGroup * kLineGroup + order * kLineGroup + tap % kLineGroup;
    }
    return group + tap / 2 * 2 * kLineGroup + result % kLineGroup * 2 + tap % 2;
}

void bytesToLine(const std::uint8_t* from, std::int16_t* line, int width) { widen(from, line, width); }

void wordsToLine(const std::uint16_t* from, int shift, std::int16_t* line, int width)
{
    shiftRow(from, shift, line, width);
}

} // namespace twcore
