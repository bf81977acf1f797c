#pragma once

// What a packet of MP4 or Matroska looks like in an AVI: what their headers tell of an H.264 or MPEG-4 stream stands in
// the packets of key frames there, and units of H.264 begin with codes instead of their lengths. Any thread.

#include "twcore/media/ff.h"

#include <cstdint>
#include <span>
#include <vector>

namespace twcore {

/// A packet of these bytes, with the times and marks of another.
PacketPtr packetLike(const AVPacket& like, std::span<const std::uint8_t> bytes);

class PacketShape {
public:
    /// As the header of the file tells the stream, or another such that it tells on the way.
    PacketShape(AVCodecID codec, std::span<const std::uint8_t> told);

    /// The packet, another one where it has to be; nullptr when it is damaged.
    PacketPtr inAvi(const AVPacket& packet) const;

private:
    using Bytes = std::span<const std::uint8_t>;
    void takeAvcHeader(Bytes told);
    bool takeUnits(Bytes packet, bool isKey, std::vector<std::uint8_t>& bytes) const;

    std::vector<std::uint8_t> header_; // of the stream, as it stands ahead of a key frame
    std::size_t lengthBytes_ = 0;      // of a unit's length; 0: it begins with a code
    bool isMpeg4_ = false;
};

} // namespace twcore
