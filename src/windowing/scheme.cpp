#include "windowing/scheme.h"

#include "core/colours.h"

#include <cstdlib>

namespace {

QColor plain(std::int32_t colour) { return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF); }

QColor mixed(const QColor& a, const QColor& b, double share)
{
    const auto part = [&](int x, int y) { return static_cast<int>(x + (y - x) * share); };
    return QColor(part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()));
}

} // namespace

QColor trackColour(std::int32_t colour)
{
    switch (colour) {
    case colours::kWindow:
        return QColor::fromRgb(kTrackPaper);
    case colours::kWindowText:
        return QColor::fromRgb(0xFF101418);
    case colours::kButtonFace:
        return QColor::fromRgb(0xFFE0E0DC);
    case colours::kButtonShadow:
        return QColor::fromRgb(0xFF9A9A94);
    case colours::kHighlight:
        return QColor::fromRgb(0xFFFFFFFF);
    default:
        return plain(colour);
    }
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

QColor quietText(const QPalette& palette)
{
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.28);
}

QPalette emptyFieldWords(const QPalette& palette)
{
    QPalette words;
    words.setColor(QPalette::PlaceholderText,
                   mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.35));
    return words;
}

QColor linkColour(const QPalette& palette, QPalette::ColorRole ground)
{
    const QColor link = palette.color(QPalette::Link);
    const int apart = std::abs(qGray(link.rgb()) - qGray(palette.color(ground).rgb()));
    constexpr int kReadable = 90;
    return apart >= kReadable ? link : isDark(palette) ? QColor(0x7A, 0xB8, 0xF5) : QColor(0x1A, 0x5F, 0xB4);
}

QColor hairline(const QPalette& palette)
{
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.22);
}
