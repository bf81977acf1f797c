#include "timeline/timeline_sliders_form.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "windowing/picture_widget.h"

SliderHandle::SliderHandle(ImageBox& state, Shape shape, Calls calls, const QString& name, QWidget* parent)
    : QWidget(parent), state_(state), shape_(shape), calls_(std::move(calls))
{
    setObjectName(name);
    resize(kWidth, kHeight);
    setCursor(Qt::SizeHorCursor);
}

void SliderHandle::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    constexpr double kMiddle = kWidth / 2.0;
    if (shape_ == Shape::kMain) {
        path.moveTo(0.5, 0.5);
        path.lineTo(kWidth - 0.5, 0.5);
        path.lineTo(kWidth - 0.5, 8);
        path.lineTo(kMiddle, kHeight - 0.5);
        path.lineTo(0.5, 8);
    } else {
        const double tip = shape_ == Shape::kStart ? 0.5 : kWidth - 0.5;
        path.moveTo(kMiddle, 0.5);
        path.lineTo(tip, 0.5);
        path.lineTo(tip, 8);
        path.lineTo(kMiddle, kHeight - 0.5);
    }
    path.closeSubpath();
    const QColor ink = QColor::fromRgb(shape_ == Shape::kMain ? kMainInk : kSelectionInk);
    painter.setPen(QPen(ink.darker(140), 1));
    painter.setBrush(ink);
    painter.drawPath(path);
}

float SliderHandle::xIn(const QMouseEvent& event) const
{
    return static_cast<float>(mapToParent(event.position().toPoint()).x() - state_.Left.get());
}

void SliderHandle::mousePressEvent(QMouseEvent* event) { calls_.down(programButton(event->button()), xIn(*event)); }

void SliderHandle::mouseMoveEvent(QMouseEvent* event) { calls_.move(programButton(event->buttons()), xIn(*event)); }

void SliderHandle::mouseReleaseEvent(QMouseEvent* event) { calls_.up(programButton(event->button()), xIn(*event)); }

ThinLine::ThinLine(const QColor& colour, const QString& name, QWidget* parent) : QWidget(parent), colour_(colour)
{
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    hide();
}

void ThinLine::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), colour_);
}
