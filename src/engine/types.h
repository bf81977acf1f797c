#pragma once

// The plain values that cross the engine's boundary.
//
// Nothing here owns media or points into the engine: handles, numbers, texts. A value that the engine writes is an
// out reference; when an operation answers ok false, every other out value of that call is 0.

#include <cstdint>
#include <span>
#include <string_view>

namespace engine {

/// A file, stream or track of the engine. 0 is never valid, and a handle is never given out twice.
using Handle = std::int32_t;

/// A truth value, 16 bits wide: -1 true, 0 false. Any value but 0 counts as true when it is handed in.
using Bool16 = std::int16_t;
inline constexpr Bool16 kTrue = -1;
inline constexpr Bool16 kFalse = 0;

constexpr Bool16 toBool16(bool value) noexcept { return value ? kTrue : kFalse; }

/// Milliseconds on the timeline or inside a stream.
using Milliseconds = std::int32_t;

/// A caller's text of a fixed length, filled with blanks or NULs, which the engine overwrites to its full length:
/// the text, then blanks. UTF-8. The caller trims what it gets.
using TextBuffer = std::span<char>;

/// A text handed in, UTF-8, read during the call only.
using Text = std::string_view;

} // namespace engine
