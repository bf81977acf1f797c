#include "windowing/pixel_view.h"

#include "core/pixel_picture.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace {

/// Not rounded: on a fine screen the pointer stands between two whole places, and still on one pixel.
QPoint pixelOf(const QMouseEvent& event)
{
    return {static_cast<int>(std::floor(event.position().x())), static_cast<int>(std::floor(event.position().y()))};
}

} // namespace

PixelView::PixelView(PixelPicture& picture, QWidget* parent) : QWidget(parent), picture_(picture)
{
    setMouseTracking(true);
    setFixedSize(sizeHint());
}

QSize PixelView::sizeHint() const { return {picture_.canvas.width(), picture_.canvas.height()}; }

void PixelView::showPicture()
{
    if (shown_ != picture_.generation()) {
        shown_ = picture_.generation();
        setFixedSize(sizeHint());
        update();
    }
}

void PixelView::paintEvent(QPaintEvent* event)
{
    const engine::PixelCanvas& canvas = picture_.canvas;
    if (canvas.width() == 0) {
        return;
    }
    const QImage image(reinterpret_cast<const uchar*>(canvas.line(0)), canvas.width(), canvas.height(),
                       static_cast<qsizetype>(canvas.width()) * 4, QImage::Format_RGB32);
    QPainter painter(this);
    painter.drawImage(event->rect(), image, event->rect());
}

void PixelView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && pressed) {
        pressed(pixelOf(*event));
    }
}

void PixelView::mouseMoveEvent(QMouseEvent* event)
{
    if (moved) {
        moved(pixelOf(*event));
    }
}

void PixelView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && released) {
        released(pixelOf(*event));
    }
}
