#pragma once

// How much of each pixel of a keyed overlay is seen.
//
// A pixel within a small distance of the key colour is clear. Where the overlay meets its key, a pixel is a mixture of
// both: its share is told by how far its colour is on the way from the key to the farthest colour around it. Away from
// the key everything is opaque.

#include <cstdint>
#include <span>
#include <vector>

namespace twcore {

struct KeyRgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const KeyRgb&, const KeyRgb&) = default;
};

class KeyShares {
public:
    enum class Kind : std::uint8_t { kClear, kOpaque, kMixed };
    /// Pixels [first, last) of a line, alike; both even, but for the end of a line of an odd width.
    struct Run {
        int first = 0;
        int last = 0;
        Kind kind = Kind::kClear;
    };

    void resize(int width, int height);
    int width() const { return width_; }
    int height() const { return height_; }

    /// To be filled: the distance of each pixel from the key colour, 0 to 255, the largest of its red, green and blue.
    std::uint8_t* distances(int y);
    /// From the distances.
    void find();

    /// Whether the key is within reach: what has none around it is opaque, or clear, and no mixture.
    bool isNearKey(int x, int y);
    /// For what turns out to be no mixture.
    void makeOpaque(int x, int y)
    {
        share_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] = 255;
    }
    static constexpr int kAround = 2; // pixels to either side that a mixture reaches

    /// 0 clear to 255 opaque.
    const std::uint8_t* line(int y) const { return share_.data() + std::ptrdiff_t{y} * width_; }
    /// What is not clear in a line, from left to right.
    std::span<const Run> runs(int y) const;

private:
    void spreadLine(int y);
    void shareLine(int y);
    void addRun(int first, int last, Kind kind);

    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> distance_; // lines with a margin on both sides
    std::vector<std::uint8_t> lowest_;   // the last lines, smallest and largest along the line
    std::vector<std::uint8_t> highest_;
    std::vector<std::uint8_t> farthest_; // of the line in work
    std::vector<std::uint8_t> mixed_;    // of the line in work: 255 where a pixel may be a mixture
    std::vector<std::uint8_t> share_;
    std::vector<Run> runs_;
    std::vector<std::size_t> firstRun_; // by line, and one behind the last
};

} // namespace twcore
