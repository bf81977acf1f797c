#pragma once

// Which packets of a medium may stand in a movie as they are: those that whatever plays the movie decodes with what its
// encoder has told, to the picture that it would have been. Any doubt means no. Any thread may ask.

#include "twcore/media/media_file.h"
#include "twcore/save/video_encoder.h"

#include <cstdint>
#include <span>
#include <vector>

namespace twcore {

class PacketRules {
public:
    /// Of a movie whose pictures or groups are encoded for themselves. Encodes a picture, to see what the encoder tells
    /// of its stream. Throws std::runtime_error when it refuses.
    explicit PacketRules(const VideoEncoding& encoding);

    /// What of an open file is known without opening it once more.
    bool mayTake(const PictureFacts& facts) const { return facts.codec == codec_; }
    /// Whether the stream is of the movie's kind, as far as its file tells without a packet.
    bool take(const AVStream& stream) const;
    /// Whether a packet of such a stream may stand in the movie: where `isKey`, as the first of a group.
    bool take(const AVPacket& packet, bool isKey) const;

    /// Frames from one to the next may only be copied as far as a group goes.
    bool areGroups() const noexcept { return areGroups_; }

private:
    using Bytes = std::span<const std::uint8_t>;
    bool takeByKind(Bytes packet, bool isKey) const;
    bool isOurJpeg(Bytes packet) const;
    bool isOurMpeg4(Bytes packet, bool isKey) const;
    bool isOurH264(Bytes packet, bool isKey) const;

    AVCodecID codec_ = AV_CODEC_ID_NONE;
    PictureSize size_;
    int bitsPerPixel_ = 0;
    bool areGroups_ = false;
    std::size_t byteCount_ = 0; // of every packet; 0: they differ
    std::vector<std::uint8_t> extra_;
    std::vector<std::uint8_t> header_; // that stands in the packets of key frames; of DV its marks
};

} // namespace twcore
