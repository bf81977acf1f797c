#include "twcore/save/packet_shape.h"

#include <algorithm>
#include <array>

namespace twcore {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::array<std::uint8_t, 4> kCode{0, 0, 0, 1};
constexpr std::uint8_t kSequence = 7; // a unit of H.264

/// Cuts a number of so many bytes off the beginning; beyond any size when they are not there.
std::size_t takeNumber(Bytes& bytes, std::size_t byteCount)
{
    std::size_t number = bytes.size() < byteCount ? SIZE_MAX : 0;
    for (std::size_t i = 0; i < byteCount && i < bytes.size(); ++i) {
        number = number == SIZE_MAX ? number : number << 8 | bytes[i];
    }
    bytes = bytes.subspan(std::min(byteCount, bytes.size()));
    return number;
}

void addUnit(std::vector<std::uint8_t>& to, Bytes unit)
{
    to.insert(to.end(), kCode.begin(), kCode.end());
    to.insert(to.end(), unit.begin(), unit.end());
}

} // namespace

PacketPtr packetLike(const AVPacket& like, Bytes bytes)
{
    auto packet = makePacket();
    if (av_new_packet(packet.get(), static_cast<int>(bytes.size())) < 0
        || av_packet_copy_props(packet.get(), &like) < 0) {
        throw std::bad_alloc();
    }
    std::ranges::copy(bytes, packet->data);
    return packet;
}

PacketShape::PacketShape(AVCodecID codec, Bytes told) : isMpeg4_(codec == AV_CODEC_ID_MPEG4)
{
    if (isMpeg4_) {
        header_.assign(told.begin(), told.end());
    } else if (codec == AV_CODEC_ID_H264 && told.size() > 6 && told[0] == 1) {
        takeAvcHeader(told);
    }
}

/// As ISO/IEC 14496-15 gives it; one that is cut short is taken as far as it goes.
void PacketShape::takeAvcHeader(Bytes told)
{
    lengthBytes_ = (told[4] & 3u) + 1;
    told = told.subspan(5);
    for (const std::size_t countBits : {0x1F, 0xFF}) { // of sequences, of pictures
        for (std::size_t left = told.empty() ? 0 : takeNumber(told, 1) & countBits; left > 0; --left) {
            const std::size_t size = takeNumber(told, 2);
            if (size > told.size()) {
                return;
            }
            addUnit(header_, told.first(size));
            told = told.subspan(size);
        }
    }
}

bool PacketShape::takeUnits(Bytes packet, bool isKey, std::vector<std::uint8_t>& bytes) const
{
    bool tellsItself = false;
    while (!packet.empty()) {
        const std::size_t size = takeNumber(packet, lengthBytes_);
        if (size == 0 || size > packet.size()) {
            return false;
        }
        tellsItself = tellsItself || (packet[0] & 31) == kSequence;
        addUnit(bytes, packet.first(size));
        packet = packet.subspan(size);
    }
    if (isKey && !tellsItself) {
        bytes.insert(bytes.begin(), header_.begin(), header_.end());
    }
    return true;
}

PacketPtr PacketShape::inAvi(const AVPacket& packet) const
{
    const Bytes whole(packet.data, static_cast<std::size_t>(packet.size));
    const bool isKey = (packet.flags & AV_PKT_FLAG_KEY) != 0;
    std::vector<std::uint8_t> bytes;
    if (lengthBytes_ > 0) {
        return takeUnits(whole, isKey, bytes) ? packetLike(packet, bytes) : nullptr;
    }
    constexpr std::uint8_t kPicture = 0xB6, kGroupOfPictures = 0xB3;
    const bool tellsItself = whole.size() > 3 && whole[3] != kPicture && whole[3] != kGroupOfPictures;
    if (isMpeg4_ && isKey && !tellsItself) {
        bytes = header_;
        bytes.insert(bytes.end(), whole.begin(), whole.end());
        return packetLike(packet, bytes);
    }
    PacketPtr same(av_packet_clone(&packet));
    if (!same) {
        throw std::bad_alloc();
    }
    return same;
}

} // namespace twcore
