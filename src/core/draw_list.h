#pragma once

// A drawing kept as a list of what was drawn. A form replays it with a painter when the picture has to be painted, so
// that drawing the same picture five times in one command costs one painting; a test reads it.

#include "core/canvas.h"

#include <string>
#include <vector>

class DrawList final : public Canvas {
public:
    enum class Kind : std::uint8_t { kLine, kBox, kDottedBox, kFilledBox, kText, kVeil, kPicture, kWave };

    struct Stroke {
        Kind kind = Kind::kLine;
        std::int32_t colour = 0;
        double x1 = 0;
        double y1 = 0;
        double x2 = 0; // 0 for a text
        double y2 = 0;
        std::string text;
        engine::SurfacePicture picture{};
        std::vector<engine::Peak> peaks{};

        bool operator==(const Stroke&) const = default;
    };

    void clear() override;
    void line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) override;
    void box(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) override;
    void dottedBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) override;
    void filledBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) override;
    void text(double x, double y, std::string_view text, std::int32_t colour) override;
    void veil(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour) override;
    void picture(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
                 const engine::SurfacePicture& picture) override;
    void wave(std::int32_t x1, std::int32_t y1, std::int32_t y2, std::span<const engine::Peak> peaks,
              std::int32_t colour) override;
    /// Asks `ports.fonts`, and remembers what it answered.
    double textWidth(std::string_view text) override;
    double textHeight() override;

    const std::vector<Stroke>& strokes() const noexcept { return strokes_; }
    /// Draws the list on another canvas, after clearing it.
    void replay(Canvas& target) const;
    /// One stroke a line, in the order of drawing: "box 0 0 99 23 000000", "text 10 5 clip.avi 80000008".
    std::string inWords() const;

private:
    Stroke& add(Kind kind, std::int32_t colour, double x1, double y1, double x2, double y2, std::string_view text = {});

    std::vector<Stroke> strokes_;
};
