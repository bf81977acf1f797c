#pragma once

// Key pictures of H.264 bear a number that has to differ from that of the picture before, where that is a key picture
// as well, or a decoder may take both for one. Groups that were encoded each for itself, or are copied, all begin
// alike.
//
// Serves one thread.

#include "twcore/media/ff.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace twcore {

class KeyPictureNumbers {
public:
    /// Of the movie's pictures in their order: what is to be written instead of this one; nullptr when it is right, or
    /// cannot be read.
    PacketPtr apart(const AVPacket& packet);

private:
    using Bytes = std::span<const std::uint8_t>;
    /// What the stream tells of the heads of its slices.
    struct Sequence {
        unsigned frameNumberBits = 0; // 0: not known
        bool hasPlanes = false;       // of colour apart
        bool mayHaveFields = false;
    };
    struct Found {
        unsigned number;
        std::size_t bit; // of its code, in the unit without its escapes
    };
    static Sequence readSequence(Bytes unit);
    std::optional<Found> find(Bytes slice) const;

    Sequence sequence_;
    std::optional<unsigned> last_; // of the picture before, where it is a key picture
};

} // namespace twcore
