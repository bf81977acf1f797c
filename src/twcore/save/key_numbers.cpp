#include "twcore/save/key_numbers.h"

#include "twcore/save/packet_shape.h"

#include <algorithm>
#include <array>
#include <utility>

namespace twcore {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t kKeySlice = 5, kSequence = 7;

/// The bits of a unit, as ITU-T H.264 codes its numbers. Behind the end all are 0, and `isOver`.
class Bits {
public:
    explicit Bits(Bytes bytes) : bytes_(bytes) {}

    unsigned take(unsigned count)
    {
        unsigned value = 0;
        for (; count > 0; --count, ++at_) {
            value = value << 1 | (isOver() ? 0u : bytes_[at_ / 8] >> (7 - at_ % 8) & 1u);
        }
        return value;
    }
    unsigned takeNumber()
    {
        unsigned zeros = 0;
        while (zeros < 31 && !isOver() && take(1) == 0) {
            ++zeros;
        }
        return (1u << zeros) - 1 + take(zeros);
    }
    std::size_t at() const { return at_; }
    bool isOver() const { return at_ >= bytes_.size() * 8; }

private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

/// Without the bytes that keep a unit from looking like the beginning of another, and with them again.
std::vector<std::uint8_t> unescaped(Bytes unit)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(unit.size() + 1);
    int zeros = 0;
    for (const std::uint8_t byte : unit) {
        const bool isEscape = zeros >= 2 && byte == 3;
        zeros = byte == 0 ? zeros + 1 : 0;
        if (!isEscape) {
            bytes.push_back(byte);
        }
    }
    return bytes;
}

void addEscaped(std::vector<std::uint8_t>& to, Bytes unit)
{
    int zeros = 0;
    for (const std::uint8_t byte : unit) {
        if (zeros >= 2 && byte <= 3) {
            to.push_back(3);
            zeros = 0;
        }
        to.push_back(byte);
        zeros = byte == 0 ? zeros + 1 : 0;
    }
    if (zeros > 0) {
        to.push_back(3);
    }
}

/// Where the next unit's code begins, from a place on; the end when there is none.
std::size_t nextCode(Bytes bytes, std::size_t from)
{
    constexpr std::array<std::uint8_t, 3> kCode{0, 0, 1};
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(from, bytes.size()));
    return static_cast<std::size_t>(std::search(begin, bytes.end(), kCode.begin(), kCode.end()) - bytes.begin());
}

/// Another number in a code of the same length, or eight bits longer, so that nothing behind it moves within its byte.
void changeNumber(std::vector<std::uint8_t>& slice, unsigned number, std::size_t bit)
{
    if (number > 0) {
        std::size_t length = 1;
        for (unsigned code = number + 1; code > 1; code >>= 1) {
            length += 2;
        }
        const std::size_t last = bit + length - 1;
        slice[last / 8] = static_cast<std::uint8_t>(slice[last / 8] ^ 0x80u >> last % 8);
        return;
    }
    constexpr unsigned kFifteen = 0x10; // in nine bits
    const auto at = slice.begin() + static_cast<std::ptrdiff_t>(bit / 8);
    const unsigned behind = 0x7Fu >> bit % 8; // bits that stand behind the code in its byte
    const unsigned ahead = *at & ~(behind << 1 | 1u);
    const unsigned both = ahead << 8 | kFifteen << (7 - bit % 8) | (*at & behind);
    *at = static_cast<std::uint8_t>(both);
    slice.insert(at, static_cast<std::uint8_t>(both >> 8));
}

} // namespace

KeyPictureNumbers::Sequence KeyPictureNumbers::readSequence(Bytes unit)
{
    constexpr std::array kTellMore{100u, 110u, 122u, 244u, 44u}; // profiles
    const auto bytes = unescaped(unit.subspan(1));
    Bits bits(bytes);
    Sequence sequence;
    const unsigned profile = bits.take(8);
    bits.take(16); // limits
    bits.takeNumber();
    if (std::ranges::find(kTellMore, profile) != kTellMore.end()) {
        constexpr unsigned kWholeColour = 3;
        sequence.hasPlanes = bits.takeNumber() == kWholeColour && bits.take(1) == 1;
        bits.takeNumber(); // depths
        bits.takeNumber();
        if (bits.take(2) % 2 != 0) {
            return {}; // quantisers of its own
        }
    }
    const unsigned frameNumberBits = bits.takeNumber() + 4;
    const unsigned order = bits.takeNumber();
    if (order == 0) {
        bits.takeNumber();
    } else if (order == 1) {
        return {};
    }
    bits.takeNumber(); // pictures that are kept
    bits.take(1);
    bits.takeNumber(); // size
    bits.takeNumber();
    sequence.mayHaveFields = bits.take(1) == 0;
    sequence.frameNumberBits = bits.isOver() || frameNumberBits > 16 ? 0 : frameNumberBits;
    return sequence;
}

std::optional<KeyPictureNumbers::Found> KeyPictureNumbers::find(Bytes slice) const
{
    if (sequence_.frameNumberBits == 0) {
        return std::nullopt;
    }
    Bits bits(slice);
    bits.take(8);
    bits.takeNumber(); // its first block
    bits.takeNumber(); // kind
    bits.takeNumber(); // parameters
    bits.take(sequence_.hasPlanes ? 2 : 0);
    bits.take(sequence_.frameNumberBits);
    if (sequence_.mayHaveFields && bits.take(1) == 1) {
        bits.take(1);
    }
    const std::size_t bit = bits.at();
    const unsigned number = bits.takeNumber();
    return bits.isOver() ? std::nullopt : std::optional(Found{number, bit});
}

PacketPtr KeyPictureNumbers::apart(const AVPacket& packet)
{
    const auto before = std::exchange(last_, std::nullopt);
    if ((packet.flags & AV_PKT_FLAG_KEY) == 0) {
        return nullptr;
    }
    constexpr std::size_t kHead = 64; // more than goes ahead of the number
    const Bytes whole(packet.data, static_cast<std::size_t>(packet.size));
    std::vector<std::uint8_t> changed;
    std::size_t copied = 0; // of the whole
    for (std::size_t at = nextCode(whole, 0) + 3; at < whole.size();) {
        const std::size_t next = nextCode(whole, at);
        Bytes unit = whole.subspan(at, next - at);
        while (!unit.empty() && unit.back() == 0) {
            unit = unit.first(unit.size() - 1); // the beginning of the next code
        }
        const int kind = unit.empty() ? 0 : unit[0] & 31;
        if (kind == kSequence) {
            sequence_ = readSequence(unit);
        } else if (const auto found =
                       kind == kKeySlice ? find(unescaped(unit.first(std::min(kHead, unit.size())))) : std::nullopt) {
            last_ = found->number;
            if (before == found->number) {
                auto slice = unescaped(unit);
                changeNumber(slice, found->number, found->bit);
                last_ = find(slice)->number;
                changed.insert(changed.end(), packet.data + copied, packet.data + at);
                addEscaped(changed, slice);
                copied = at + unit.size();
            }
        }
        at = next + 3;
    }
    if (copied == 0) {
        return nullptr;
    }
    changed.insert(changed.end(), packet.data + copied, packet.data + packet.size);
    return packetLike(packet, changed);
}

} // namespace twcore
