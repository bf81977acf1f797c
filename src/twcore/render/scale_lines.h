#pragma once

// Rows of a picture mixed into a line, and a line made longer or shorter: both together scale a plane. Lines hold 64ths
// of a step of 8 bits in 16 bits, signed, so that what overshoots a sharp edge is kept until the end.

#include "twcore/media/orientation.h"
#include "twcore/render/scale_loops.h"
#include "twcore/render/scale_taps.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace twcore {

/// How rows are mixed into each line of a scaled picture.
class RowMixer {
public:
    /// From `from` rows to `to`, which tapsBetween() finds few enough. `depth` is 8, or up to 14 in 16 bits.
    RowMixer(int from, int to, int depth, Vectors vectors);

    /// The line `number` of the scaled picture. `rows` begins at its first row, `stride` is in bytes.
    void mix(const std::uint8_t* rows, std::ptrdiff_t stride, int number, std::int16_t* line, int width);

private:
    void splitWeights();

    Vectors vectors_;
    int from_;
    bool isSame_;
    int depth_;
    int lowBits_ = 0;
    ScaleTaps taps_;
    std::vector<std::int16_t> high_; // two weights of 8 bits each: 64ths
    std::vector<std::int16_t> low_;  // and what is left of each, in 1 << lowBits_ parts of a 64th
    std::vector<const std::uint8_t*> rows_;
};

/// How a line is made longer or shorter.
class LineScaler {
public:
    LineScaler(int from, int to, Vectors vectors);

    /// Where a line is written that is scaled next: `from` samples. The samples beside it are the scaler's.
    std::int16_t* input() { return input_.data() + margin_; }
    /// The scaled line. It may be up to 7 samples longer than it is asked for.
    void scale(std::int16_t* to);

private:
    Vectors vectors_;
    int from_;
    int margin_;
    LineWay way_ = LineWay::kAlone;
    std::size_t taps_;       // a whole number of the way's steps
    std::vector<int> first_; // by result, up to a whole number of eights
    std::vector<std::int16_t> weights_;
    std::vector<std::uint8_t> shuffles_; // sixteen for each four results
    std::vector<std::int16_t> input_;
};

/// One plane of a picture made larger or smaller, line by line.
class PlaneScaler {
public:
    /// `depth` as RowMixer has it.
    PlaneScaler(PictureSize from, PictureSize to, int depth, Vectors vectors);

    /// `result` has room for kLineGroup samples more than the line.
    void line(const std::uint8_t* plane, std::ptrdiff_t stride, int number, std::int16_t* result);
    const PictureSize& size() const { return to_; }
    /// Nothing is done but that bytes become lines.
    bool isCopy() const { return isCopy_; }

private:
    int fromWidth_;
    PictureSize to_;
    bool isCopy_;
    RowMixer rows_;
    std::optional<LineScaler> columns_; // none where lines keep their length
};

} // namespace twcore
