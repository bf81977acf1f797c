#include "windowing/frame_view.h"

#include "windowing/language.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>

namespace {

const QEvent::Type kNewPicture = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

FrameView::FrameView(const QString& name, QWidget* parent) : QWidget(parent)
{
    setObjectName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    number_ = engine::surfaces().add(static_cast<engine::FrameSink&>(*this), surfaceSize());
}

FrameView::~FrameView() { engine::surfaces().remove(number_); }

engine::SurfaceSize FrameView::surfaceSize() const { return {width(), height(), devicePixelRatioF()}; }

void FrameView::clearPicture()
{
    {
        const std::lock_guard lock(mutex_);
        newest_ = {};
        words_.clear();
    }
    update();
}

void FrameView::show(const engine::SurfacePicture& picture) noexcept
{
    {
        const std::lock_guard lock(mutex_);
        newest_ = picture;
        words_.clear();
    }
    postUpdate();
}

void FrameView::say(engine::Text text) noexcept
{
    {
        const std::lock_guard lock(mutex_);
        words_ = translated(text);
    }
    postUpdate();
}

void FrameView::postUpdate() noexcept
{
    if (!isPending_.exchange(true)) {
        QCoreApplication::postEvent(this, new QEvent(kNewPicture));
    }
}

bool FrameView::event(QEvent* event)
{
    if (event->type() == kNewPicture) {
        isPending_ = false;
        update();
        return true;
    }
    return QWidget::event(event);
}

void FrameView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    engine::surfaces().resize(number_, surfaceSize());
}

void FrameView::paintEvent(QPaintEvent*)
{
    engine::SurfacePicture picture;
    QString words;
    {
        const std::lock_guard lock(mutex_);
        picture = newest_;
        words = words_;
    }
    QPainter painter(this);
    if (picture.pixels == nullptr) {
        painter.fillRect(rect(), QColor(0x16, 0x18, 0x1C));
    } else {
        QImage image(picture.pixels.get(), picture.width, picture.height, picture.strideBytes, QImage::Format_RGB32);
        image.setDevicePixelRatio(devicePixelRatioF());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::black); // for the moment after a resize
        painter.drawImage(QPointF(0, 0), image);
    }
    if (!words.isEmpty()) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        if (picture.pixels != nullptr) { // the words are to be read, and the picture is no longer live
            painter.fillRect(rect(), QColor(0x16, 0x18, 0x1C, 0xD0));
        }
        painter.setPen(QColor(0xE6, 0xE8, 0xEA));
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, words);
    }
}
