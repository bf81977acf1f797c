#pragma once

// An overlay laid over a picture with its key colour transparent.
//
// What is within a small distance of the key colour is transparent wholly, so that compressed video keys too. Where
// the overlay meets its key colour, a pixel is a mixture of both: its share is told by how far its colour is on the way
// from the key to the farthest colour around it, and the key's part is taken out of it, so that no fringe is left. Away
// from the key colour everything is opaque.

#include "twcore/render/planes.h"

#include <array>
#include <cstdint>
#include <vector>

namespace twcore {

struct KeyRgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const KeyRgb&, const KeyRgb&) = default;
};

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
    void unmix(const Planes& overlay, const KeyRgb& key);
    void takePlanes(const Planes& overlay);
    void takeLuma(const Planes& overlay, const Colour& colour);
    void takeChroma(const Planes& overlay, const Colour& colour);

    /// Where a line is not wholly transparent, [first, last).
    struct Span {
        int first = 0;
        int last = 0;
    };

    int width_ = 0;
    int height_ = 0;
    int shiftX_ = 0;
    int shiftY_ = 0;
    bool isRgb_ = false;
    std::vector<std::uint8_t> distance_;
    std::vector<std::uint8_t> nearest_;  // smallest distance around each pixel
    std::vector<std::uint8_t> farthest_; // largest
    std::vector<std::uint8_t> share_;    // 0 transparent to 255 opaque
    std::vector<std::uint8_t> scratch_;
    std::vector<std::uint32_t> edges_;               // pixels that are neither
    std::vector<Span> spans_;                        // by line
    std::array<std::vector<std::uint8_t>, 3> value_; // of the target's kind; for halved colour only the first
    // For colour differences: what is kept of the picture below, and what is added to it.
    std::vector<float> keep_;
    std::array<std::vector<float>, 2> add_;
};

} // namespace twcore
