#include "windowing/icons.h"

#include "windowing/scheme.h"
#include "windowing/text.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <map>
#include <tuple>

/// Outside a namespace, as the toolkit's macro wants it: a static library's resources come in only when asked for.
static void bringInResources() { Q_INIT_RESOURCE(resources); }

namespace {

QByteArray drawingOf(std::string_view key)
{
    bringInResources();
    QFile file(":/icons/" + fromProgram(key).toLower() + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap drawn(const QByteArray& drawing, int size, double pixelRatio)
{
    const int pixels = static_cast<int>(size * pixelRatio + 0.5);
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QSvgRenderer renderer(drawing);
    QPainter painter(&picture);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    picture.setDevicePixelRatio(pixelRatio);
    return picture;
}

} // namespace

QPixmap programPixmap(std::string_view key, const QColor& ink, int size, double pixelRatio)
{
    QByteArray drawing = drawingOf(key);
    drawing.replace("currentColor", ink.name().toLatin1());
    return drawing.isEmpty() ? QPixmap() : drawn(drawing, size, pixelRatio);
}

QIcon programIcon(std::string_view key, const QPalette& palette)
{
    const QColor ink = palette.color(QPalette::WindowText);
    const QColor faint = palette.color(QPalette::Disabled, QPalette::WindowText);
    // Lists ask for their icons each time that they are painted. Few palettes are seen in a run.
    static auto& drawnBefore = *new std::map<std::tuple<std::string, QRgb, QRgb>, QIcon>; // outlives the application
    QIcon& icon = drawnBefore[{std::string(key), ink.rgba(), faint.rgba()}];
    if (icon.isNull()) {
        for (const int size : {16, 24, 32}) {
            for (const double ratio : {1.0, 2.0}) {
                icon.addPixmap(programPixmap(key, ink, size, ratio));
                icon.addPixmap(programPixmap(key, faint, size, ratio), QIcon::Disabled);
            }
        }
    }
    return icon;
}

QIcon applicationIcon()
{
    QIcon icon;
    const QByteArray drawing = drawingOf("quillmont");
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(drawn(drawing, size, 1));
    }
    return icon;
}
