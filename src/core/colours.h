#pragma once

// Colours as the program keeps them: 0x00BBGGRR, or an index of a system colour when the top bit is set. On the track
// pictures the latter come from a fixed light scheme.

#include <cstdint>

namespace colours {

inline constexpr auto kWindow = static_cast<std::int32_t>(0x80000005);
inline constexpr auto kWindowText = static_cast<std::int32_t>(0x80000008);
inline constexpr auto kButtonFace = static_cast<std::int32_t>(0x8000000F);
inline constexpr auto kButtonShadow = static_cast<std::int32_t>(0x80000010);
inline constexpr auto kHighlight = static_cast<std::int32_t>(0x80000014);

} // namespace colours
