#include "app/terminal_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <utility>

namespace app {

namespace {

// The longest path is shown whole, and behind it the cause.
constexpr std::size_t kMostBytes = 5000;
constexpr std::size_t kTailBytes = 700;

bool isPrintable(char32_t c)
{
    constexpr std::pair<char32_t, char32_t> kOrders[] = {{0, 0x1f},        {0x7f, 0x9f},        {0x61c, 0x61c},
                                                         {0x200e, 0x200f}, {0x2028, 0x202e},    {0x2066, 0x2069},
                                                         {0xd800, 0xdfff}, {0x110000, 0x1fffff}};
    return std::ranges::none_of(kOrders, [&](const auto& range) { return c >= range.first && c <= range.second; });
}

/// The length in bytes of the printable character that a text, which is not empty, begins with; 0: none.
std::size_t printableLength(std::string_view text)
{
    const auto first = static_cast<std::uint8_t>(text[0]);
    const auto ones = static_cast<std::size_t>(std::countl_one(first));
    const std::size_t length = ones == 0 ? 1 : ones;
    if (ones == 1 || length > 4 || length > text.size()) {
        return 0;
    }
    char32_t c = ones == 0 ? first : first & (0x7fu >> ones);
    for (const char byte : text.substr(1, length - 1)) {
        if ((static_cast<std::uint8_t>(byte) & 0xc0) != 0x80) {
            return 0;
        }
        c = c << 6 | (static_cast<std::uint8_t>(byte) & 0x3f);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    return c >= kLeast[length] && isPrintable(c) ? length : 0;
}

std::string escaped(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string safe;
    while (!text.empty()) {
        const std::size_t length = printableLength(text);
        if (length > 0) {
            safe += text.substr(0, length);
        } else {
            const auto byte = static_cast<std::uint8_t>(text[0]);
            safe.append("\\x").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
        }
        text.remove_prefix(std::max<std::size_t>(1, length));
    }
    return safe;
}

} // namespace

std::string forTerminal(std::string_view text)
{
    if (text.size() < kMostBytes) {
        return escaped(text);
    }
    return escaped(text.substr(0, kMostBytes - kTailBytes)) + " ... " + escaped(text.substr(text.size() - kTailBytes));
}

} // namespace app
