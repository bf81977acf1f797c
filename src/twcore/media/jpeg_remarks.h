#pragma once

// Remarks in pictures of Motion JPEG that change what the decoder makes of a picture: of the range of its numbers, of
// its first line, of its pixels' shape. Pure function, any thread.

#include <cstdint>
#include <span>

namespace twcore {

/// A bit for each kind of such remark that the picture bears.
unsigned remarksOf(std::span<const std::uint8_t> jpeg);

} // namespace twcore
