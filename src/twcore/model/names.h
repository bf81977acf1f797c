#pragma once

// Names of effects and transitions, and the caller's buffers that they are read through.

#include "engine/types.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace twcore {

inline constexpr std::size_t kMaxNameLength = 10;

/// The text's first bytes, at most maxLength, ending where a UTF-8 character ends.
constexpr std::string_view cutAtCharacter(std::string_view text, std::size_t maxLength) noexcept
{
    if (text.size() <= maxLength) {
        return text;
    }
    constexpr std::size_t kMaxContinuationBytes = 3;
    std::size_t length = maxLength;
    while (length > 0 && maxLength - length < kMaxContinuationBytes
           && (static_cast<unsigned char>(text[length]) & 0xC0u) == 0x80u) {
        --length;
    }
    return text.substr(0, length);
}

/// The text, cut to the buffer where it must be, then blanks.
inline void fillBuffer(engine::TextBuffer buffer, std::string_view text) noexcept
{
    const std::string_view shown = cutAtCharacter(text, buffer.size());
    std::fill(std::copy(shown.begin(), shown.end(), buffer.begin()), buffer.end(), ' ');
}

} // namespace twcore
