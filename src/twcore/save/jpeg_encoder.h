#pragma once

// Pictures into JPEG, for Motion JPEG: the library's vectorised transform with the quantiser tables that the field's
// Motion JPEG encoders use, so that a quantiser scale means the same steps as it does elsewhere. It rounds to the
// nearest step and codes with fixed tables, which is fast and a little better to look at, and makes files about a fifth
// larger.

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace twcore {

/// A picture with its colour halved both ways, full range. Lines may be longer than the picture is wide.
struct JpegPicture {
    const std::uint8_t* planes[3];
    int strides[3];
};

class JpegEncoder {
public:
    /// Quantiser scale 1 finest to 31 coarsest. Throws std::bad_alloc.
    JpegEncoder(int width, int height, int quantiser);
    ~JpegEncoder();

    /// The bytes are good until the next call. Throws std::runtime_error when the library fails.
    std::span<const std::uint8_t> encode(const JpegPicture& picture);

private:
    struct State;

    bool compress(const JpegPicture& picture);

    int width_;
    int height_;
    std::unique_ptr<State> state_;
    std::vector<std::uint8_t> padded_; // the picture with its edges carried on to whole blocks
};

} // namespace twcore
