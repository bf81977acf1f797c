#include "app/edit_media.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace app {

namespace {

constexpr std::uint32_t kSide = 16;                        // pixels of the picture, each way
constexpr std::uint32_t kPictureBytes = kSide * kSide * 3; // 24 bits a pixel
constexpr std::uint32_t kSamplesPerSecond = 1000;          // of 8 bits: one a millisecond

void put32(std::string& bytes, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

void put16(std::string& bytes, std::uint32_t value)
{
    bytes.append({static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)});
}

template <class... Values>
std::string numbers32(Values... values)
{
    std::string bytes;
    (put32(bytes, static_cast<std::uint32_t>(values)), ...);
    return bytes;
}

std::string chunk(std::string_view name, const std::string& body)
{
    return std::string(name) + numbers32(body.size()) + body + std::string(body.size() % 2, '\0');
}

std::string list(std::string_view name, const std::string& body) { return chunk("LIST", std::string(name) + body); }

/// From sample `from` on.
std::string tone(std::uint32_t from, std::uint32_t count)
{
    std::string samples;
    for (std::uint32_t i = from; i < from + count; ++i) {
        samples += static_cast<char>(i % 8 < 4 ? 0x78 : 0x88);
    }
    return samples;
}

std::string soundFormat()
{
    std::string format;
    put16(format, 1); // PCM
    put16(format, 1); // channel
    format += numbers32(kSamplesPerSecond, kSamplesPerSecond);
    put16(format, 1); // bytes a sample
    put16(format, 8); // bits
    return format;
}

/// One picture that lasts the whole length: a frame every so many milliseconds.
std::string pictureStream(std::uint32_t lengthMs)
{
    std::string head = "vids" + std::string(4, '\0') + numbers32(0, 0, 0, lengthMs, 1000, 0, 1, kPictureBytes, -1, 0);
    put16(head, 0);
    put16(head, 0);
    put16(head, kSide);
    put16(head, kSide);
    std::string format = numbers32(40, kSide, kSide);
    put16(format, 1);
    put16(format, 24);
    format += numbers32(0, kPictureBytes, 0, 0, 0, 0);
    return list("strl", chunk("strh", head) + chunk("strf", format));
}

std::string soundStream(std::uint32_t lengthMs)
{
    const std::string head = "auds" + std::string(4, '\0')
                             + numbers32(0, 0, 0, 1, kSamplesPerSecond, 0, lengthMs, kSamplesPerSecond, -1, 1, 0, 0);
    return list("strl", chunk("strh", head) + chunk("strf", soundFormat()));
}

/// The chunks of an AVI file with their index.
class Movie {
public:
    void add(std::string_view name, const std::string& body)
    {
        constexpr std::uint32_t kKeyFrame = 0x10;
        index_ += std::string(name) + numbers32(kKeyFrame, 4 + body_.size(), body.size());
        body_ += chunk(name, body);
    }
    std::string bytes() const { return list("movi", body_) + chunk("idx1", index_); }

private:
    std::string body_;
    std::string index_;
};

std::string aviOf(std::uint32_t lengthMs, bool hasSound)
{
    constexpr std::uint32_t kHasIndex = 0x10;
    const std::uint32_t streams = hasSound ? 2 : 1;
    const std::string head = numbers32(std::int64_t{lengthMs} * 1000 > 0x7FFFFFFF ? 0 : lengthMs * 1000, 0, 0,
                                       kHasIndex, 1, 0, streams, kPictureBytes, kSide, kSide, 0, 0, 0, 0);
    Movie movie;
    movie.add("00db", std::string(kPictureBytes, '\x80'));
    for (std::uint32_t from = 0; hasSound && from < lengthMs; from += kSamplesPerSecond) {
        movie.add("01wb", tone(from, std::min(kSamplesPerSecond, lengthMs - from)));
    }
    return chunk("RIFF", "AVI "
                             + list("hdrl", chunk("avih", head) + pictureStream(lengthMs)
                                                + (hasSound ? soundStream(lengthMs) : std::string()))
                             + movie.bytes());
}

std::string wavOf(std::uint32_t lengthMs)
{
    return chunk("RIFF", "WAVE" + chunk("fmt ", soundFormat()) + chunk("data", tone(0, lengthMs)));
}

} // namespace

const char* mediaEnding(MediaKinds kinds) { return kinds.picture ? ".avi" : ".wav"; }

void writeMedia(const std::filesystem::path& path, std::int32_t lengthMs, MediaKinds kinds)
{
    const auto length = static_cast<std::uint32_t>(lengthMs);
    std::ofstream file(path, std::ios::binary);
    file << (kinds.picture ? aviOf(length, kinds.sound) : wavOf(length));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

} // namespace app
