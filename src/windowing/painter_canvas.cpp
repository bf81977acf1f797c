#include "windowing/painter_canvas.h"

#include "windowing/scheme.h"
#include "windowing/text.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>

QFont trackFont()
{
    QFont font = QApplication::font();
    font.setPixelSize(11);
    return font;
}

PainterCanvas::PainterCanvas(QPainter& painter, const QSize& size, double from, double to)
    : painter_(painter), size_(size), from_(from), to_(to)
{
    painter_.setFont(trackFont());
}

void PainterCanvas::clear() { painter_.fillRect(QRect({0, 0}, size_), QColor::fromRgb(kTrackPaper)); }

void PainterCanvas::line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    if (!isSeen(std::min(x1, x2), std::max(x1, x2))) {
        return;
    }
    if (x1 == x2 || y1 == y2) {
        filledBox(x1, y1, x2, y2, colour); // much quicker than a pen, and thousands of lines are straight
        return;
    }
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setPen(QPen(trackColour(colour), 1));
    painter_.drawLine(x1, y1, x2, y2);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void PainterCanvas::box(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    if (x1 == x2 || y1 == y2) {
        filledBox(x1, y1, x2, y2, colour); // most edges of a bar are such lines
        return;
    }
    filledBox(x1, y1, x2, y1, colour);
    filledBox(x1, y2, x2, y2, colour);
    filledBox(x1, y1, x1, y2, colour);
    filledBox(x2, y1, x2, y2, colour);
}

void PainterCanvas::dottedBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    if (!isSeen(std::min(x1, x2), std::max(x1, x2))) {
        return;
    }
    // Dots are counted from the box's own corner, so that they do not crawl when only a part is painted again.
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(trackColour(colour), 1, Qt::DotLine));
    painter_.drawRect(x1, y1, x2 - x1, y2 - y1);
}

void PainterCanvas::filledBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    if (!isSeen(std::min(x1, x2), std::max(x1, x2))) {
        return;
    }
    const QRect whole(QPoint(std::min(x1, x2), std::min(y1, y2)), QPoint(std::max(x1, x2), std::max(y1, y2)));
    painter_.fillRect(whole, trackColour(colour));
}

void PainterCanvas::text(double x, double y, std::string_view text, std::int32_t colour)
{
    constexpr double kLongest = 4000; // further than any caption reaches
    if (!isSeen(x, x + kLongest)) {
        return;
    }
    painter_.setPen(trackColour(colour));
    painter_.drawText(QPointF(x, y + QFontMetricsF(painter_.font()).ascent()), fromProgram(text));
}

double PainterCanvas::textWidth(std::string_view text)
{
    return QFontMetricsF(painter_.font()).horizontalAdvance(fromProgram(text));
}

double PainterCanvas::textHeight() { return QFontMetricsF(painter_.font()).height(); }
