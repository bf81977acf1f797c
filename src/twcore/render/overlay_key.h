#pragma once

// An overlay of red, green and blue laid over a picture with its key colour transparent.
//
// `KeyShares` says how much of a pixel is seen. Where that is a part, the key's part is taken out of the pixel, so that
// no fringe is left.

#include "twcore/render/key_shares.h"
#include "twcore/render/planes.h"

#include <array>
#include <cstdint>
#include <vector>

namespace twcore {

/// An overlay made ready to be laid over pictures of one kind. One that stands still is prepared once.
class OverlayKey {
public:
    /// `overlay` is green, blue and red, full size, and is changed: the key's part is taken out of it. Without a key it
    /// is opaque. `like` tells the kind of picture it is going to be laid over.
    void prepare(const Planes& overlay, const KeyRgb& key, const Planes& like);
    /// Lays it over `target` with its upper left corner at (left, top), both even; what lies outside is cut off.
    void lay(const Planes& target, int left, int top) const;

    /// Both.
    void blend(const Planes& overlay, const KeyRgb& key, const Planes& target, int left, int top);

private:
    void findShares(const Planes& overlay, const KeyRgb& key);
    void keepFlatColours(const Planes& overlay);
    void unmix(const Planes& overlay, const KeyRgb& key);
    void takePlanes(const Planes& overlay);
    void takeLuma(const Planes& overlay, const Colour& colour);
    void takeChroma(const Planes& overlay, const Colour& colour);

    /// Where a line is not wholly transparent, [first, last).
    struct Span {
        int first = 0;
        int last = 0;
    };
    Span spanOf(int y) const;

    KeyShares shares_;
    int width_ = 0;
    int shiftX_ = 0;
    int shiftY_ = 0;
    bool isRgb_ = false;
    std::array<std::vector<std::uint8_t>, 3> value_; // of the target's kind; for halved colour only the first
    // For colour differences: what is kept of the picture below, and what is added to it.
    std::vector<float> keep_;
    std::array<std::vector<float>, 2> add_;
};

} // namespace twcore
