#pragma once

// Which samples of a line, or which lines of a picture, make one of a longer or shorter one, and how much each counts:
// a bicubic kernel, drawn wider where the picture is made smaller, so that what is left out is averaged and not
// skipped. Ends stand above ends: both pictures cover the same area.

#include <cstdint>
#include <vector>

namespace twcore {

/// More than these would be read for a result when a picture is made smaller than a thirtieth.
inline constexpr int kMostTaps = 128;

struct ScaleTaps {
    int count = 0;                     // samples for each result; even
    std::vector<int> first;            // of each result; outside of the line its edge counts again
    std::vector<std::int16_t> weights; // `count` for each result; they sum up to exactly 1 << bits
};

/// How many samples a result would be made of; above `kMostTaps` there are no taps.
int tapsBetween(int from, int to);
/// `from` and `to` are lengths, 1 or more. `bits` (1 to 14) is what weights have behind the point.
ScaleTaps scaleTaps(int from, int to, int bits);

} // namespace twcore
