#pragma once

// Plain values as bytes, the least significant first. Pure; any thread.

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace journal {

static_assert(std::endian::native == std::endian::little, "a journal is read by the machine that wrote it");

/// Bytes that are not what they should be.
struct Broken : std::runtime_error {
    Broken() : std::runtime_error("a journal that cannot be read") {}
};

/// Another word at any one place gives another sum, whatever follows it.
inline std::uint64_t checksum(std::string_view bytes)
{
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t sum = 0xCBF29CE484222325 ^ bytes.size();
    while (!bytes.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(bytes.size(), sizeof word);
        std::memcpy(&word, bytes.data(), count);
        bytes.remove_prefix(count);
        sum = (sum ^ word) * kPrime;
        sum ^= sum >> 29;
    }
    return sum;
}

class ByteWriter {
public:
    template <std::integral Number>
    void put(Number value)
    {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes.append(raw, sizeof value);
    }
    void put(std::string_view text)
    {
        put(static_cast<std::uint32_t>(text.size()));
        bytes += text;
    }

    std::string bytes;
};

/// Raises `Broken` where the bytes end too early, and takes no memory on their word.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    template <std::integral Number>
    Number take()
    {
        const std::string_view raw = take(sizeof(Number));
        if constexpr (std::same_as<Number, bool>) {
            return raw.front() != 0;
        } else {
            Number value = 0;
            std::memcpy(&value, raw.data(), sizeof value);
            return value;
        }
    }
    std::string_view take(std::size_t count)
    {
        if (count > bytes_.size()) {
            throw Broken();
        }
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return taken;
    }
    std::string_view takeText() { return take(take<std::uint32_t>()); }
    /// A number of elements that stand behind it, of at least so many bytes each.
    std::size_t takeCount(std::size_t leastBytes)
    {
        const auto count = take<std::uint32_t>();
        if (count > bytes_.size() / leastBytes) {
            throw Broken();
        }
        return count;
    }
    bool isAtEnd() const { return bytes_.empty(); }

private:
    std::string_view bytes_;
};

} // namespace journal
