#pragma once

// The inner loops of scaling, for processors with 256-bit vectors and for all others. Results are the same to the bit.

#include <array>
#include <cstddef>
#include <cstdint>

namespace twcore {

inline constexpr int kLineBits = 6;          // behind the point of a line's samples, which are steps of 8 bits
inline constexpr int kWeightBits = 14;       // behind the point of a weight
inline constexpr std::size_t kLineGroup = 8; // results that are worked on at once, and taps of one that stands alone

enum class Vectors { kNone, k256Bits };
/// What this processor has.
Vectors vectorsHere();

/// Rows that the next line will most likely need, which are asked for ahead of it.
using NextRows = std::array<const std::uint8_t*, 2>;

/// Rows of bytes, two by two, with their weights: 64ths, and what is left in `1 << lowBits` parts of one.
struct ByteMix {
    const std::uint8_t* const* rows;
    const std::int16_t* high; // two weights of 8 bits each
    const std::int16_t* low;  // no sum of them times 255 leaves 16 bits
    int pairs;
    int lowBits;
    NextRows next;
};
void mixBytes(Vectors vectors, const ByteMix& mix, std::int16_t* line, int width);

/// Rows of 16 bits.
struct WordMix {
    const std::uint8_t* const* rows;
    const std::int16_t* weights;
    int count;
    int shift; // so that values have 15 bits
    NextRows next;
};
void mixWords(Vectors vectors, const WordMix& mix, std::int16_t* line, int width);

/// How the samples of eight results are brought together: where each lies two samples behind the one before, and all
/// have the same kBesideTaps weights, they stand beside each other; where four lie within eight samples they are
/// shuffled; else each is summed up alone.
enum class LineWay { kBeside, kShuffled, kAlone };
inline constexpr std::size_t kBesideTaps = 8;

struct LineWork {
    LineWay way;
    const std::int16_t* line;
    const int* first;             // of each result
    const std::int16_t* weights;  // in their places
    const std::uint8_t* shuffles; // sixteen for each four results, where there are any
    std::size_t taps;             // even; where results stand alone a multiple of kLineGroup
    std::size_t results;          // a multiple of kLineGroup
};
/// Where the weight of a result's tap stands.
std::size_t weightPlace(LineWay way, std::size_t taps, std::size_t result, std::size_t tap);
void scaleLine(Vectors vectors, const LineWork& work, std::int16_t* to);

/// Rounded to whole steps, 0 to 255.
void lineToBytes(Vectors vectors, const std::int16_t* line, std::uint8_t* to, int width);
void bytesToLine(const std::uint8_t* from, std::int16_t* line, int width);
/// `shift` brings the words to a line's steps.
void wordsToLine(const std::uint16_t* from, int shift, std::int16_t* line, int width);

} // namespace twcore
