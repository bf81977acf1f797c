#pragma once

// Pictures of controls: drawn once as SVG in one ink, which takes the palette's text colour, sharp at any scale.

#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <string_view>

/// The picture of an image list's key ("LINK", "ZOOM_IN"); an empty one for "BLANK" and for keys that have none.
QIcon programIcon(std::string_view key, const QPalette& palette);
/// The same in a given ink and size; logical pixels.
QPixmap programPixmap(std::string_view key, const QColor& ink, int size, double pixelRatio);
/// The program's own picture.
QIcon applicationIcon();
