#pragma once

// An overlay laid over a picture with its key colour transparent.
//
// What is within a small distance of the key colour is transparent wholly, so that compressed video keys too. Where
// the overlay meets its key colour, a pixel is a mixture of both: its share is told by how far its colour is on the way
// from the key to the farthest colour around it, and the key's part is taken out of it, so that no fringe is left. Away
// from the key colour everything is opaque.

#include "twcore/render/planes.h"

#include <cstdint>
#include <vector>

namespace twcore {

struct KeyRgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const KeyRgb&, const KeyRgb&) = default;
};

class OverlayKey {
public:
    /// `overlay` is green, blue and red, full size. Blends it into `target` with its upper left corner at (left, top),
    /// both even; what lies outside is cut off.
    void blend(const Planes& overlay, const KeyRgb& key, const Planes& target, int left, int top);

private:
    void findShares(const Planes& overlay, const KeyRgb& key);
    void unmix(const Planes& overlay, const KeyRgb& key);

    int width_ = 0;
    std::vector<std::uint8_t> distance_;
    std::vector<std::uint8_t> nearest_;  // smallest distance around each pixel
    std::vector<std::uint8_t> farthest_; // largest
    std::vector<std::uint8_t> share_;    // 0 transparent to 255 opaque
    std::vector<std::uint8_t> scratch_;
};

} // namespace twcore
