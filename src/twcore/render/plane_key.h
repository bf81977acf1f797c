#pragma once

// An overlay of brightness and colour differences laid over a picture of the same kind with its key colour transparent.
//
// What `OverlayKey` does to red, green and blue, without the way there and back, for film that is keyed frame by frame.
// A mixture of the overlay and its key is linear in every kind of colour: with a share s of the overlay's own colour,
// value = s * own + (1 - s) * key, so that s * own + (1 - s) * below = value + (1 - s) * (below - key).

#include "twcore/render/key_shares.h"
#include "twcore/render/planes.h"

#include <array>
#include <cstdint>
#include <vector>

namespace twcore {

struct KeyNumbers;

class PlaneKey {
public:
    /// `frame` is 8-bit planar, brightness and colour differences of `colour`. It is kept.
    void prepare(SharedFrame frame, const Colour& colour, const KeyRgb& key);
    /// Lays it over `target`, of the same kind, with its upper left corner at (left, top), both even; what lies outside
    /// is cut off.
    void lay(const Planes& target, int left, int top) const;

private:
    void findDistances(const KeyNumbers& numbers);
    void findParts(int row, const KeyNumbers& numbers);
    void layLuma(const Planes& target, int left, int top, int width, int height) const;
    void layChroma(const Planes& target, int left, int top, int width, int height) const;
    void meanShares(int row, int first, int count, std::uint8_t* shares) const;

    SharedFrame frame_;
    Planes planes_; // of the frame; only read
    KeyShares shares_;
    std::array<int, 3> key_{}; // in the frame's values
    // Of the line in work: what the colour differences add to red, green and blue, by sample and by pixel.
    std::array<std::vector<std::int16_t>, 3> sampled_;
    std::array<std::vector<std::int16_t>, 3> spread_;
};

} // namespace twcore
