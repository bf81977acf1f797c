#pragma once

// What is drawn by hand (the scale, the bars) goes through these few operations, so that its exact geometry can be
// checked in words.
//
// Coordinates are logical pixels of the picture from its left top corner; a point's pixel is drawn, and both ends of a
// line or a box count. Colours are 0x00BBGGRR, or a system colour when the top bit is set (see `colours.h`).
// Texts are UTF-8, with the left top corner of their line at the point. What lies outside the picture is cut.

#include "engine/ITWBarPictures.h"

#include <cstdint>
#include <span>
#include <string_view>

class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void clear() = 0;
    virtual void line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) = 0;
    /// The outline of a box. Without width or height it is a line.
    virtual void box(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) = 0;
    /// The same with dots for a line.
    virtual void dottedBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) = 0;
    virtual void filledBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) = 0;
    virtual void text(double x, double y, std::string_view text, std::int32_t colour) = 0;
    /// A filled box through which what lies below still shines.
    virtual void veil(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) = 0;
    /// A picture as high as the box, from its left edge on as far as the box goes.
    virtual void picture(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
                         const engine::SurfacePicture& picture) = 0;
    /// Sound from the box's left edge on, a peak a pixel, around its middle line.
    virtual void wave(std::int32_t x1, std::int32_t y1, std::int32_t y2, std::span<const engine::Peak> peaks,
                      std::int32_t colour) = 0;

    /// Logical pixels, in the font of the picture.
    virtual double textWidth(std::string_view text) = 0;
    virtual double textHeight() = 0;
};
