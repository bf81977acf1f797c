#include "windowing/qt_lettering.h"

#include "windowing/text.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kMostSide = 16384; // pixels; a longer line is cut off there

/// Of the ink and of the line's own box.
QRect boundsOf(const QFontMetrics& metrics, const QString& line)
{
    const QRect box(0, 0, metrics.horizontalAdvance(line), metrics.height());
    return box | metrics.boundingRect(line).translated(0, metrics.ascent());
}

} // namespace

QFont toolkitFont(const TextFont& font)
{
    constexpr double kPixelsPerPoint = 96.0 / 72;
    QFont made(fromProgram(font.Name));
    made.setPixelSize(std::clamp(static_cast<int>(std::lround(font.Size * kPixelsPerPoint)), 1, 2000));
    made.setBold(font.Bold);
    made.setItalic(font.Italic);
    made.setUnderline(font.Underline);
    made.setStrikeOut(font.Strikethrough);
    return made;
}

std::vector<std::string> QtLettering::names()
{
    std::vector<std::string> names;
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family)) {
            names.push_back(toProgram(family));
        }
    }
    return names;
}

int QtLettering::lineWidth(const TextFont& font, std::string_view line)
{
    const QRect bounds = boundsOf(QFontMetrics(toolkitFont(font)), fromProgram(line));
    return std::max(bounds.right() + 1, 0);
}

int QtLettering::lineHeight(const TextFont& font) { return QFontMetrics(toolkitFont(font)).height(); }

Letters QtLettering::line(const TextFont& font, std::string_view line, std::int32_t colour)
{
    const QFont look = toolkitFont(font);
    const QString text = fromProgram(line);
    // A pixel more on all sides: smooth letters reach out of their measures.
    const QRect bounds = boundsOf(QFontMetrics(look), text).adjusted(-2, -2, 2, 2);
    QImage image(bounds.size().boundedTo({kMostSide, kMostSide}), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(look);
    painter.setPen(QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF));
    painter.drawText(QPoint(0, QFontMetrics(look).ascent()) - bounds.topLeft(), text);
    painter.end();
    image.convertTo(QImage::Format_ARGB32);
    Letters letters{bounds.left(), bounds.top(), {}};
    letters.pixels.resize(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto* const from = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        std::copy_n(from, image.width(), letters.pixels.line(y));
    }
    return letters;
}
