#include "twcore/save/packet_rules.h"

#include "twcore/media/picture_kind.h"
#include "twcore/save/stream_description.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <stdexcept>
#include <string_view>

namespace twcore {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kCodeBytes = 4; // a start code with what it starts

/// Where the next start code stands, from a place on; the end when there is none.
std::size_t nextCode(Bytes bytes, std::size_t from)
{
    for (std::size_t at = from; at + kCodeBytes <= bytes.size(); ++at) {
        if (bytes[at + 2] > 1) {
            at += 2; // none begins with one of the three
        } else if (bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1) {
            return at;
        }
    }
    return bytes.size();
}

constexpr std::uint8_t kGroupOfPictures = 0xB3;
constexpr std::uint8_t kPicture = 0xB6;

/// Of a key frame in MPEG-4: all that is told ahead of the group.
Bytes mpeg4Header(Bytes packet)
{
    std::size_t at = nextCode(packet, 0);
    while (at < packet.size() && packet[at + 3] != kGroupOfPictures && packet[at + 3] != kPicture) {
        at = nextCode(packet, at + 3);
    }
    return packet.first(at);
}

enum Unit : std::uint8_t { kSlice = 1, kKeySlice = 5, kRemark = 6, kSequence = 7, kPictures = 8, kDelimiter = 9 };

/// Of a frame in H.264, what its units are and what its parameter sets say.
struct H264Frame {
    std::vector<std::uint8_t> header;
    bool hasSlice = false;
    bool hasKeySlice = false;
    bool hasOthers = false;

    explicit H264Frame(Bytes packet)
    {
        std::size_t at = nextCode(packet, 0);
        hasOthers = at > 1; // a leading zero, no more
        while (at < packet.size()) {
            const std::size_t next = nextCode(packet, at + 3);
            Bytes unit = packet.subspan(at + 3, next - at - 3);
            while (!unit.empty() && unit.back() == 0) {
                unit = unit.first(unit.size() - 1);
            }
            note(unit);
            at = next;
        }
    }

private:
    void note(Bytes unit)
    {
        const int kind = unit.empty() ? 0 : unit[0] & 31;
        hasSlice = hasSlice || kind == kSlice;
        hasKeySlice = hasKeySlice || kind == kKeySlice;
        if (kind == kSequence || kind == kPictures) {
            header.insert(header.end(), unit.begin(), unit.end());
        } else if (kind != kSlice && kind != kKeySlice && kind != kRemark && kind != kDelimiter) {
            hasOthers = true;
        }
    }
};

/// Of a frame in DV, what tells one kind of the same length from another: lines a second, how colour is halved, and
/// shape.
std::vector<std::uint8_t> dvMarks(Bytes packet)
{
    struct Mark {
        std::size_t at;
        std::uint8_t bits;
    };
    constexpr std::array kMarks{Mark{3, 0x80}, Mark{4, 0x07}, Mark{451, 0x1F}, Mark{453, 0x07}};
    std::vector<std::uint8_t> marks;
    marks.reserve(kMarks.size());
    for (const Mark& mark : kMarks) {
        marks.push_back(mark.at < packet.size() ? packet[mark.at] & mark.bits : 0);
    }
    return marks;
}

std::vector<std::uint8_t> headerOf(AVCodecID codec, Bytes packet)
{
    if (codec == AV_CODEC_ID_H264) {
        return H264Frame(packet).header;
    }
    if (codec == AV_CODEC_ID_MPEG4) {
        const Bytes header = mpeg4Header(packet);
        return {header.begin(), header.end()};
    }
    return codec == AV_CODEC_ID_DVVIDEO ? dvMarks(packet) : std::vector<std::uint8_t>();
}

/// What a picture in JPEG tells ahead of its scan. What steers a decoder beyond that picture is not taken: turned over,
/// in another range, in other pixels, or with tables of the picture before.
class JpegHead {
public:
    static constexpr std::uint8_t kScan = 0xDA;

    explicit JpegHead(PictureSize size) : size_(size) {}

    bool take(std::uint8_t kind, Bytes part)
    {
        constexpr std::uint8_t kFrame = 0xC0, kHuffmanTables = 0xC4, kQuantisers = 0xDB, kRestarts = 0xDD,
                               kMaker = 0xE0, kRemark = 0xFE;
        switch (kind) {
        case kFrame:
            frame_ = part;
            return isOurFrame();
        case kHuffmanTables:
            return takeTables(part);
        case kQuantisers:
            return takeQuantisers(part);
        case kRestarts:
            return true;
        case kMaker:
            return isPlainMaker(part);
        case kRemark:
            return text(part).starts_with("Lavc");
        default:
            return false;
        }
    }

    /// Whether the scan has what it is decoded by.
    bool hasAllOf(Bytes scan) const
    {
        if (frame_.empty() || scan.size() != 10 || scan[0] != 3 || scan[7] != 0 || scan[8] != 63 || scan[9] != 0) {
            return false;
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const unsigned dc = scan[2 + 2 * i] >> 4u, ac = 16u + (scan[2 + 2 * i] & 15u);
            const unsigned quantiser = frame_[8 + 3 * i] & 15u;
            if ((tables_ >> dc & tables_ >> ac & quantisers_ >> quantiser & 1u) == 0) {
                return false;
            }
        }
        return true;
    }

private:
    bool isOurFrame() const
    {
        return frame_.size() == 15 && frame_[0] == 8 && (frame_[1] << 8 | frame_[2]) == size_.height
               && (frame_[3] << 8 | frame_[4]) == size_.width && frame_[5] == 3 && frame_[7] == 0x22
               && frame_[10] == 0x11 && frame_[13] == 0x11;
    }

    bool takeTables(Bytes part)
    {
        constexpr std::size_t kLengths = 17;
        while (part.size() >= kLengths && (part[0] & 0xECu) == 0) {
            tables_ |= 1u << part[0];
            const auto bytes = std::accumulate(part.begin() + 1, part.begin() + kLengths, kLengths);
            part = part.subspan(std::min(bytes, part.size()));
        }
        return part.empty();
    }

    bool takeQuantisers(Bytes part)
    {
        constexpr std::size_t kBytes = 65;
        while (part.size() >= kBytes && part[0] < 4) { // of eight bits
            quantisers_ |= 1u << part[0];
            part = part.subspan(kBytes);
        }
        return part.empty();
    }

    static std::string_view text(Bytes part) { return {reinterpret_cast<const char*>(part.data()), part.size()}; }

    /// In square pixels; whole pictures, not fields.
    static bool isPlainMaker(Bytes part)
    {
        return (text(part).starts_with(std::string_view("JFIF\0", 5)) && part.size() >= 12
                && (part[8] << 8 | part[9]) == (part[10] << 8 | part[11]))
               || (text(part).starts_with("AVI1") && part.size() > 4 && part[4] == 0);
    }

    PictureSize size_;
    Bytes frame_;
    std::uint32_t tables_ = 0; // the ones that are there: by number, those of the details from 16 on
    std::uint32_t quantisers_ = 0;
};

Bytes bytesOf(const AVPacket& packet) { return {packet.data, static_cast<std::size_t>(packet.size)}; }

} // namespace

PacketRules::PacketRules(const VideoEncoding& encoding)
    : size_(encoding.size), areGroups_(encoding.unit() == VideoEncoding::Unit::kGroup)
{
    std::string why;
    const auto encoder = VideoEncoder::open(encoding, 1, why);
    if (!encoder) {
        throw std::runtime_error(why);
    }
    std::vector<PacketPtr> packets;
    encoder->encode(PictureFitter(encoding.pictureFormat()).black().get(), 0, packets);
    encoder->encode(nullptr, 0, packets);
    const auto told = described(*encoder);
    codec_ = told->codec_id;
    bitsPerPixel_ = told->bits_per_coded_sample;
    if (told->extradata_size > 0) {
        extra_.assign(told->extradata, told->extradata + told->extradata_size);
    }
    if (!packets.empty()) {
        header_ = headerOf(codec_, bytesOf(*packets.front()));
        const bool isConstant = codec_ == AV_CODEC_ID_RAWVIDEO || codec_ == AV_CODEC_ID_DVVIDEO;
        byteCount_ = isConstant ? static_cast<std::size_t>(packets.front()->size) : 0;
    }
}

bool PacketRules::take(const AVStream& stream) const
{
    constexpr std::array kKinds{AV_CODEC_ID_MJPEG,   AV_CODEC_ID_DVVIDEO,  AV_CODEC_ID_HUFFYUV, AV_CODEC_ID_FFV1,
                                AV_CODEC_ID_UTVIDEO, AV_CODEC_ID_RAWVIDEO, AV_CODEC_ID_MPEG4,   AV_CODEC_ID_H264};
    const AVCodecParameters& told = *stream.codecpar;
    if (told.codec_id != codec_ || std::ranges::find(kKinds, codec_) == kKinds.end() || told.width != size_.width
        || told.height != size_.height) {
        return false;
    }
    const Bytes extra(told.extradata, static_cast<std::size_t>(std::max(0, told.extradata_size)));
    switch (codec_) {
    case AV_CODEC_ID_MPEG4: // decoders have ways of their own with what other encoders name theirs
        return !header_.empty()
               && (told.codec_tag == 0 || told.codec_tag == MKTAG('F', 'M', 'P', '4')
                   || told.codec_tag == MKTAG('m', 'p', '4', 'v'));
    case AV_CODEC_ID_H264: // told in the packets
        return !header_.empty();
    case AV_CODEC_ID_RAWVIDEO: {
        static constexpr std::string_view kLastLineFirst = "BottomUp";
        return told.codec_tag == 0 && told.bits_per_coded_sample == bitsPerPixel_
               && std::string_view(reinterpret_cast<const char*>(extra.data()), extra.size())
                      .starts_with(kLastLineFirst);
    }
    case AV_CODEC_ID_MJPEG:
    case AV_CODEC_ID_DVVIDEO:
        return true;
    default:
        return std::ranges::equal(extra, extra_) && (bitsPerPixel_ == 0 || told.bits_per_coded_sample == bitsPerPixel_);
    }
}

bool PacketRules::take(const AVPacket& packet, bool isKey) const
{
    constexpr int kDoubtful = AV_PKT_FLAG_CORRUPT | AV_PKT_FLAG_DISCARD;
    return packet.size > 0 && (packet.flags & kDoubtful) == 0
           && av_packet_get_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, nullptr) == nullptr
           && (byteCount_ == 0 || static_cast<std::size_t>(packet.size) == byteCount_)
           && isKeyByHead(codec_, packet).value_or(isKey) == isKey && takeByKind(bytesOf(packet), isKey);
}

bool PacketRules::takeByKind(Bytes packet, bool isKey) const
{
    switch (codec_) {
    case AV_CODEC_ID_MJPEG:
        return isOurJpeg(packet);
    case AV_CODEC_ID_MPEG4:
        return isOurMpeg4(packet, isKey);
    case AV_CODEC_ID_H264:
        return isOurH264(packet, isKey);
    case AV_CODEC_ID_DVVIDEO:
        return dvMarks(packet) == header_;
    default:
        return true;
    }
}

/// A whole picture in one scan, with its own tables, of this size, with its colour halved both ways.
bool PacketRules::isOurJpeg(Bytes packet) const
{
    constexpr std::uint8_t kStart = 0xD8, kEnd = 0xD9;
    while (!packet.empty() && packet.back() == 0) {
        packet = packet.first(packet.size() - 1); // filled up to even
    }
    if (packet.size() < 4 || packet[0] != 0xFF || packet[1] != kStart || packet[packet.size() - 2] != 0xFF
        || packet.back() != kEnd) {
        return false;
    }
    JpegHead head(size_);
    for (std::size_t at = 2; at + 4 <= packet.size() && packet[at] == 0xFF;) {
        const std::uint8_t kind = packet[at + 1];
        const std::size_t length = static_cast<std::size_t>(packet[at + 2] << 8 | packet[at + 3]);
        if (length < 2 || at + 2 + length > packet.size()) {
            return false;
        }
        const Bytes part = packet.subspan(at + 4, length - 2);
        if (kind == JpegHead::kScan) {
            return head.hasAllOf(part);
        }
        if (!head.take(kind, part)) {
            return false;
        }
        at += 2 + length;
    }
    return false;
}

/// One picture, whole or leaning on the one before; a key frame says the same of the stream as ours.
bool PacketRules::isOurMpeg4(Bytes packet, bool isKey) const
{
    const Bytes header = mpeg4Header(packet);
    if (isKey ? !std::ranges::equal(header, header_) : !header.empty()) {
        return false;
    }
    int pictures = 0;
    for (std::size_t at = nextCode(packet, 0); at < packet.size(); at = nextCode(packet, at + 3)) {
        const std::uint8_t kind = packet[at + 3];
        if (kind == kPicture) {
            constexpr int kWhole = 0, kLeaning = 1;
            const bool isOurs =
                at + kCodeBytes < packet.size() && packet[at + kCodeBytes] >> 6 == (isKey ? kWhole : kLeaning);
            pictures += isOurs ? 1 : 2;
        } else if (at >= header.size() && kind != kGroupOfPictures) {
            return false;
        }
    }
    return pictures == 1;
}

bool PacketRules::isOurH264(Bytes packet, bool isKey) const
{
    const H264Frame frame(packet);
    return !frame.hasOthers && frame.hasKeySlice == isKey && frame.hasSlice == !isKey
           && (isKey ? frame.header == header_ : frame.header.empty());
}

} // namespace twcore
