#include "twcore/media/picture_kind.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace twcore {

namespace {

/// Decoders look for packed pictures where a remark of the stream ends so: "DivX503b1393p".
bool tellsPacked(std::string_view stream)
{
    static constexpr std::string_view kRemark("\0\0\1\xB2"
                                              "DivX",
                                              8);
    const auto at = stream.find(kRemark);
    if (at == std::string_view::npos) {
        return false;
    }
    const auto isPlain = [](unsigned char c) { return std::isalnum(c) != 0; };
    const auto end = std::find_if_not(stream.begin() + at + kRemark.size(), stream.end(), isPlain);
    return *(end - 1) == 'p';
}

std::string_view textOf(const std::uint8_t* data, int size)
{
    return {reinterpret_cast<const char*>(data), static_cast<std::size_t>(std::max(0, size))};
}

} // namespace

std::optional<bool> isKeyByHead(AVCodecID codec, const AVPacket& packet)
{
    constexpr int kHeadBytes = 11;
    if (packet.size < kHeadBytes) {
        return std::nullopt;
    }
    const std::uint8_t* const head = packet.data;
    switch (codec) {
    case AV_CODEC_ID_FFV1: // the first choice of the range coder, whose sides are alike
        return (head[0] << 8 | head[1]) >= 0x7F80;
    case AV_CODEC_ID_MSMPEG4V2:
    case AV_CODEC_ID_MSMPEG4V3:
    case AV_CODEC_ID_WMV1:
        return head[0] >> 6 == 0;
    case AV_CODEC_ID_WMV2:
        return head[0] >> 7 == 0;
    case AV_CODEC_ID_CINEPAK: { // the kind of the first strip
        constexpr int kWhole = 0x10, kLeaning = 0x11;
        const int strip = head[kHeadBytes - 1];
        return strip == kWhole || strip == kLeaning ? std::optional(strip == kWhole) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

PictureKindReader::PictureKindReader(const AVCodecParameters& parameters)
    : isMpeg4_(parameters.codec_id == AV_CODEC_ID_MPEG4),
      isNumbered_(parameters.codec_id == AV_CODEC_ID_H264 || parameters.codec_id == AV_CODEC_ID_HEVC)
{
    if (isMpeg4_) {
        isPacked_ = tellsPacked(textOf(parameters.extradata, parameters.extradata_size));
        return;
    }
    parser_.reset(av_parser_init(parameters.codec_id));
    context_.reset(avcodec_alloc_context3(avcodec_find_decoder(parameters.codec_id)));
    if (!parser_ || !context_ || avcodec_parameters_to_context(context_.get(), &parameters) < 0) {
        parser_.reset();
        return;
    }
    parser_->flags |= PARSER_FLAG_COMPLETE_FRAMES;
}

PictureKind PictureKindReader::read(const AVPacket& packet)
{
    return isMpeg4_ ? readMpeg4(packet) : parser_ ? readParsed(packet) : PictureKind{};
}

PictureKind PictureKindReader::readMpeg4(const AVPacket& packet)
{
    // A picture begins with 00 00 01 B6 and two bits of its kind: 0 intra, 1 predicted, 2 bidirectional, 3 sprite.
    // Some writers pack a bidirectional picture behind the predicted one in one packet, so that each one that follows
    // stands a packet early and an empty packet ends their row: the decoder brings each out with the packet behind.
    constexpr int kBidirectional = 2;
    int pictures = 0;
    int kind = 0;
    for (int i = 0; i + 4 < packet.size; ++i) {
        const auto* const at = packet.data + i;
        if (at[0] == 0 && at[1] == 0 && at[2] == 1 && at[3] == 0xB6) {
            kind = pictures == 0 ? at[4] >> 6 : kind;
            ++pictures;
            i += 4;
        }
    }
    const bool isEmpty = packet.size <= kEmptyPictureBytes && pictures <= 1 && kind != kBidirectional;
    const bool takesPacked = holdsPackedPicture_ && isEmpty; // whatever kind it names
    holdsPackedPicture_ = pictures > 1 || (holdsPackedPicture_ && kind == kBidirectional);
    isPacked_ = isPacked_ || holdsPackedPicture_ || tellsPacked(textOf(packet.data, packet.size));
    PictureKind result;
    result.isBidirectional = kind == kBidirectional || takesPacked;
    result.isKey = pictures > 0 ? std::optional(kind == 0 && !takesPacked) : std::nullopt;
    return result;
}

PictureKind PictureKindReader::readParsed(const AVPacket& packet)
{
    std::uint8_t* data = nullptr;
    int size = 0;
    parser_->pict_type = AV_PICTURE_TYPE_NONE;
    parser_->key_frame = -1;
    av_parser_parse2(parser_.get(), context_.get(), &data, &size, packet.data, packet.size, AV_NOPTS_VALUE,
                     AV_NOPTS_VALUE, 0);
    PictureKind kind;
    if (isNumbered_) {
        kind.orderNumber = parser_->output_picture_number;
        kind.startsGroup = (packet.flags & AV_PKT_FLAG_KEY) != 0 && parser_->output_picture_number <= 0;
    }
    kind.isBidirectional = parser_->pict_type == AV_PICTURE_TYPE_B;
    if (parser_->key_frame >= 0) {
        kind.isKey = parser_->key_frame == 1;
    } else if (parser_->pict_type != AV_PICTURE_TYPE_NONE) {
        kind.isKey = parser_->pict_type == AV_PICTURE_TYPE_I;
    }
    return kind;
}

} // namespace twcore
