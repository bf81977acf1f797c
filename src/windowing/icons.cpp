#include "windowing/icons.h"

#include "windowing/scheme.h"
#include "windowing/text.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

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

/// Draws a picture when it is asked for, at the very size and for the very palette; remembers what it has drawn.
class DrawnIcon final : public QIconEngine {
public:
    DrawnIcon(std::string_view key, const QPalette& palette)
        : key_(key), inks_{{QIcon::Normal, palette.color(QPalette::WindowText)},
                           {QIcon::Disabled, palette.color(QPalette::Disabled, QPalette::WindowText)},
                           {QIcon::Active, palette.color(QPalette::WindowText)},
                           {QIcon::Selected, palette.color(QPalette::HighlightedText)}}
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize& pixels, QIcon::Mode mode, QIcon::State /*state*/, qreal ratio) override
    {
        const int side = std::min(pixels.width(), pixels.height());
        QPixmap& picture = drawn_[{side, mode}];
        if (picture.isNull()) {
            QByteArray drawing = drawingOf(key_);
            drawing.replace("currentColor", inks_.at(mode).name().toLatin1());
            picture = drawing.isEmpty() ? QPixmap() : drawn(drawing, side, 1);
        }
        QPixmap answer = picture;
        answer.setDevicePixelRatio(ratio);
        return answer;
    }

    QIconEngine* clone() const override { return new DrawnIcon(*this); }

private:
    std::string key_;
    std::map<QIcon::Mode, QColor> inks_;
    std::map<std::pair<int, QIcon::Mode>, QPixmap> drawn_;
};

} // namespace

QPixmap programPixmap(std::string_view key, const QColor& ink, int size, double pixelRatio)
{
    QByteArray drawing = drawingOf(key);
    drawing.replace("currentColor", ink.name().toLatin1());
    return drawing.isEmpty() ? QPixmap() : drawn(drawing, size, pixelRatio);
}

QIcon programIcon(std::string_view key, const QPalette& palette)
{
    // Lists ask for their icons each time that they are painted. Few palettes are seen in a run.
    static auto& made = *new std::map<std::tuple<std::string, QRgb, QRgb, QRgb>, QIcon>; // outlives the application
    const auto ink = [&](QPalette::ColorGroup group, QPalette::ColorRole role) {
        return palette.color(group, role).rgba();
    };
    QIcon& icon =
        made[{std::string(key), ink(QPalette::Active, QPalette::WindowText),
              ink(QPalette::Disabled, QPalette::WindowText), ink(QPalette::Active, QPalette::HighlightedText)}];
    if (icon.isNull()) {
        icon = QIcon(new DrawnIcon(key, palette));
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
