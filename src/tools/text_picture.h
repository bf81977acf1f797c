#pragma once

// A text as a picture: over a frame, as it is seen while it is written, and on a ground of one colour that an overlay's
// key takes away.
//
// The engine's key has no fringe where every pixel is wholly the key, wholly the letter, or the one mixture of the two
// whose share it finds again exactly (`mixtureOf`). So letters on the key's ground have edges of three steps; on a
// ground of their own they are as smooth as the platform draws them.

#include "core/lettering.h"

#include <cstdint>
#include <string>

namespace tools {

struct TextLook {
    std::string text; // lines end in CR LF
    TextFont font;
    std::int32_t fontColour = 0; // red in its low byte, as the next
    std::int32_t backColour = 0xFFFFFF;
    bool isTransparent = false; // no box in the back colour
    std::int32_t left = 0;      // pixels of the picture
    std::int32_t top = 0;
};

struct TextSize {
    std::int32_t width = 0; // of the longest line
    std::int32_t height = 0;
};
/// An empty text has the height of a line.
TextSize measure(const TextLook& look);

/// Draws the text over what is there. What reaches out of the picture is cut off.
void paintOver(engine::PixelCanvas& picture, const TextLook& look);
/// The whole picture in the key's colour, and the text on it.
void paintKeyed(engine::PixelCanvas& picture, const TextLook& look, std::int32_t key);

/// Whether the key takes away what has this colour.
bool isKeyedOut(std::int32_t colour, std::int32_t key);

} // namespace tools
