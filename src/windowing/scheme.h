#pragma once

// The program's colours as the toolkit's.

#include <QColor>
#include <QPalette>
#include <cstdint>

/// A colour of the track pictures: system colours come from a fixed light scheme, since bars are pale in every palette.
QColor trackColour(std::int32_t colour);

/// The paper behind the bars, and its shade where a row is empty or locked.
inline constexpr QRgb kTrackPaper = 0xFFFAFAF7;

/// Whether texts are light on dark.
bool isDark(const QPalette& palette);
/// A middle between window and text that is still readable on the window.
QColor quietText(const QPalette& palette);
/// Only a colour for the words in an empty field: dark desktops do not all tell one, and the toolkit's own is too
/// faint.
QPalette emptyFieldWords(const QPalette& palette);
/// Links as the palette has them, unless that cannot be read on this ground, as where only the ground was made dark.
QColor linkColour(const QPalette& palette, QPalette::ColorRole ground);
/// For hair lines between panels.
QColor hairline(const QPalette& palette);
