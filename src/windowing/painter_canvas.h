#pragma once

// The program's canvas over a painter, and a widget that shows a picture of the program's.

#include "core/canvas.h"

#include <QFont>
#include <QPainter>
#include <QWidget>

class DrawList;

/// Draws on a painter whose coordinates are logical pixels. Strokes that end left of `from` or begin right of `to` are
/// passed over.
class PainterCanvas final : public Canvas {
public:
    PainterCanvas(QPainter& painter, const QSize& size, double from, double to);

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
    double textWidth(std::string_view text) override;
    double textHeight() override;

private:
    bool isSeen(double left, double right) const { return right >= from_ && left <= to_; }

    QPainter& painter_;
    QSize size_;
    double from_;
    double to_;
};

/// The font of the track pictures.
QFont trackFont();
