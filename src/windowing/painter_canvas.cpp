#include "windowing/painter_canvas.h"

#include "windowing/language.h"
#include "windowing/scheme.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <vector>

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
    painter_.drawText(QPointF(x, y + QFontMetricsF(painter_.font()).ascent()), translatedWord(text));
}

void PainterCanvas::veil(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, std::int32_t colour)
{
    if (isSeen(x1, x2)) {
        constexpr double kThickness = 0.75;
        QColor thin = trackColour(colour);
        thin.setAlphaF(kThickness);
        painter_.fillRect(QRect(QPoint(x1, y1), QPoint(x2, y2)), thin);
    }
}

void PainterCanvas::picture(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
                            const engine::SurfacePicture& picture)
{
    if (!isSeen(x1, x2) || !picture.pixels || y2 < y1) {
        return;
    }
    QImage image(picture.pixels.get(), picture.width, picture.height, picture.strideBytes, QImage::Format_RGB32);
    const double ratio = static_cast<double>(picture.height) / (y2 - y1 + 1); // one, or that of the screen
    const double width = std::min<double>(x2 - x1 + 1, picture.width / ratio);
    // In pixels of the screen: on a fraction of one, what is below would shine through where two pictures meet.
    const double screen = painter_.device()->devicePixelRatioF();
    const auto onScreen = [screen](double place) { return static_cast<int>(std::lround(place * screen)); };
    const QRect target(QPoint(onScreen(x1), onScreen(y1)), QPoint(onScreen(x1 + width) - 1, onScreen(y2 + 1) - 1));
    const double shown = std::min<double>(target.width() * ratio / screen, picture.width);
    painter_.save();
    painter_.scale(1 / screen, 1 / screen);
    painter_.drawImage(QRectF(target), image, QRectF(0, 0, shown, picture.height));
    painter_.restore();
}

void PainterCanvas::wave(std::int32_t x1, std::int32_t y1, std::int32_t y2, std::span<const engine::Peak> peaks,
                         std::int32_t colour)
{
    constexpr double kFull = 127;
    // In pixels of the screen, so that a quiet sound has a shape on a fine one too.
    const double ratio = painter_.device()->devicePixelRatioF();
    const auto onScreen = [ratio](double place) { return static_cast<int>(std::lround(place * ratio)); };
    const double middle = (onScreen(y1) + onScreen(y2 + 1) - 1) / 2.0;
    const double reach = (onScreen(y2 + 1) - 1 - onScreen(y1)) / 2.0 / kFull;
    const auto begin = static_cast<std::size_t>(std::max(0.0, from_ - x1));
    const auto end = static_cast<std::size_t>(std::clamp(to_ - x1 + 1, 0.0, static_cast<double>(peaks.size())));
    std::vector<QRect> columns;
    columns.reserve(end > begin ? end - begin : 0);
    for (std::size_t i = begin; i < end; ++i) {
        if (peaks[i].isKnown()) {
            const int top = static_cast<int>(std::lround(middle - peaks[i].high * reach));
            const int bottom = static_cast<int>(std::lround(middle - peaks[i].low * reach));
            const double x = x1 + static_cast<double>(i);
            columns.emplace_back(QPoint(onScreen(x), top), QPoint(onScreen(x + 1) - 1, bottom));
        }
    }
    painter_.save();
    painter_.scale(1 / ratio, 1 / ratio);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(trackColour(colour));
    painter_.drawRects(columns.data(), static_cast<int>(columns.size()));
    painter_.restore();
}

double PainterCanvas::textWidth(std::string_view text)
{
    return QFontMetricsF(painter_.font()).horizontalAdvance(translatedWord(text));
}

double PainterCanvas::textHeight() { return QFontMetricsF(painter_.font()).height(); }
