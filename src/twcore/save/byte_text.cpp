#include "twcore/save/byte_text.h"

extern "C" {
#include <libavutil/avstring.h>
}

#include <cerrno>
#include <unistd.h>

namespace twcore {

std::uint64_t littleEndian(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t count)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value |= std::uint64_t{bytes[at + i]} << (8 * i);
    }
    return value;
}

void appendLittleEndian(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

std::vector<std::uint8_t> utf16Of(std::string_view text, std::size_t maxBytes)
{
    constexpr std::int32_t kUnknown = 0xfffd;
    std::vector<std::uint8_t> bytes;
    const auto* at = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto* const end = at + text.size();
    while (at < end) {
        std::int32_t code = 0;
        code = av_utf8_decode(&code, &at, end, 0) < 0 ? kUnknown : code;
        const std::size_t needed = code >= 0x10000 ? 4 : 2;
        if (bytes.size() + needed + 2 > maxBytes) {
            break;
        }
        if (code >= 0x10000) {
            const auto rest = static_cast<std::uint32_t>(code - 0x10000);
            appendLittleEndian(bytes, 0xd800 + (rest >> 10), 2);
            appendLittleEndian(bytes, 0xdc00 + (rest & 0x3ff), 2);
        } else {
            appendLittleEndian(bytes, static_cast<std::uint32_t>(code), 2);
        }
    }
    appendLittleEndian(bytes, 0, 2);
    return bytes;
}

bool readAt(int descriptor, std::uint64_t at, std::span<std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto count = ::pread(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(at));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        at += static_cast<std::uint64_t>(count);
    }
    return true;
}

bool writeAt(int descriptor, std::uint64_t at, std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto count = ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(at));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            errno = count == 0 ? ENOSPC : errno;
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        at += static_cast<std::uint64_t>(count);
    }
    return true;
}

} // namespace twcore
