#pragma once

// Letters as pictures: what the program asks of the platform's fonts to put a title on a movie. Whatever the screen is
// like, the same text has the same pixels.
//
// Interface thread only. No call raises.

#include "engine/surfaces.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct TextFont {
    std::string Name;
    double Size = 0; // points, 96 pixels to the inch
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;
    friend bool operator==(const TextFont&, const TextFont&) = default;
};

/// Pixels that letters cover: 0xAARRGGBB, not multiplied. Where a line's letters reach out of its box, `left` and `top`
/// are below 0.
struct Letters {
    int left = 0; // of the picture, from where the line begins
    int top = 0;
    engine::PixelCanvas pixels;
};

class Lettering {
public:
    virtual ~Lettering() = default;
    /// The names of all fonts for the screen, in their order for people.
    virtual std::vector<std::string> names() = 0;
    /// Pixels from where a line begins to where all of its letters have ended.
    virtual int lineWidth(const TextFont& font, std::string_view line) = 0;
    /// Pixels from a line to the next.
    virtual int lineHeight(const TextFont& font) = 0;
    /// A line in one colour (red in its low byte); letters that bring colours of their own keep them.
    virtual Letters line(const TextFont& font, std::string_view line, std::int32_t colour) = 0;
};
