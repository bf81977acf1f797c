#pragma once

// What kind of picture a packet holds, read from its head without decoding it: for formats that write no
// presentation times, so that the order of showing has to be worked out.

#include "twcore/media/ff.h"

#include <optional>

namespace twcore {

/// No more has an MPEG-4 packet whose picture came packed with the one before.
inline constexpr int kEmptyPictureBytes = 20;

struct PictureKind {
    bool isBidirectional = false;   // shown at once, ahead of the picture stored before it
    bool startsGroup = false;       // order numbers begin anew
    std::optional<bool> isKey;      // decoding may begin here; nullopt when the packet does not tell
    std::optional<int> orderNumber; // where the codec writes one: pictures of a group are shown by it
};

/// Whether decoding may begin at a packet of a codec that has no parser, by its first bits; nullopt where they do not
/// tell, and of other codecs. AVI files without a list call every packet a key frame.
std::optional<bool> isKeyByHead(AVCodecID codec, const AVPacket& packet);

class PictureKindReader {
public:
    explicit PictureKindReader(const AVCodecParameters& parameters);

    /// Kinds depend on the packets before: read every packet, in stored order.
    PictureKind read(const AVPacket& packet);
    /// Whether, as far as it was read, packets hold pictures that come out with the packets behind them.
    bool isPacked() const noexcept { return isPacked_; }

private:
    PictureKind readMpeg4(const AVPacket& packet);
    PictureKind readParsed(const AVPacket& packet);

    struct CloseParser {
        void operator()(AVCodecParserContext* parser) const noexcept { av_parser_close(parser); }
    };

    bool isMpeg4_;
    bool isNumbered_;
    bool isPacked_ = false;
    bool holdsPackedPicture_ = false;
    std::unique_ptr<AVCodecParserContext, CloseParser> parser_;
    CodecContextPtr context_;
};

} // namespace twcore
