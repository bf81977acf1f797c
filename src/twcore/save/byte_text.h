#pragma once

// Bytes of file headers: little-endian numbers, texts in UTF-16, and reading and writing at a place of a file.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace twcore {

/// `count` bytes from `at` on, which must be there.
std::uint64_t littleEndian(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t count);
void appendLittleEndian(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::size_t count);

/// UTF-16, little-endian, with a terminator; at most `maxBytes`, cut ahead of the character that does not fit. What is
/// no UTF-8 becomes U+FFFD.
std::vector<std::uint8_t> utf16Of(std::string_view text, std::size_t maxBytes);

/// All of it, or false.
bool readAt(int descriptor, std::uint64_t at, std::span<std::uint8_t> bytes);
/// All of it, or false with errno.
bool writeAt(int descriptor, std::uint64_t at, std::span<const std::uint8_t> bytes);

} // namespace twcore
