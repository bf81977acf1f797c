#include "timeline/timeline_sliders_form.h"

#include "core/forms/frmTimeline.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <utility>

#include "hand/bookmark_events.h"
#include "timeline/moduleBookmarks.h"
#include "windowing/picture_widget.h"
#include "windowing/text.h"

namespace {

/// What is held hears no release behind it: a dialogue takes the pointer, or the widget has gone.
bool losesRelease(const QEvent& event)
{
    return event.type() == QEvent::WindowDeactivate || event.type() == QEvent::Hide;
}

} // namespace

SliderHandle::SliderHandle(ImageBox& state, Shape shape, Calls calls, const QString& name, QWidget* scale)
    : QWidget(scale->parentWidget()), state_(state), shape_(shape), calls_(std::move(calls)), scale_(scale)
{
    setObjectName(name);
    resize(kWidth, kHeight);
    setCursor(Qt::SizeHorCursor);
    // A flag takes presses on its own half only: a new selection starts where the main handle stands.
    if (shape_ == Shape::kStart) {
        setMask(QRegion(0, 0, kWidth / 2 + 1, kHeight));
    } else if (shape_ == Shape::kEnd) {
        setMask(QRegion(kWidth / 2, 0, kWidth / 2 + 1, kHeight));
    }
}

void SliderHandle::showState()
{
    const int left = state_.Left;
    const QPoint before = pos();
    move(scale_->x() + left, scale_->y() + scale_->height() - kHeight);
    if (QAccessible::isActive() && pos() != before) {
        QAccessibleEvent moved(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&moved);
    }
    // A drag holds it within these edges as well.
    setVisible(state_.Visible && left >= -kWidth / 2 - 1 && left <= scale_->width() - kWidth / 2);
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
    return static_cast<float>(mapToParent(event.position().toPoint()).x() - scale_->x() - state_.Left.get());
}

bool SliderHandle::event(QEvent* event)
{
    if (losesRelease(*event) && std::exchange(isHeld_, false)) {
        calls_.up(programButton(Qt::LeftButton), 0);
    }
    return QWidget::event(event);
}

void SliderHandle::mousePressEvent(QMouseEvent* event)
{
    isHeld_ = isHeld_ || event->button() == Qt::LeftButton;
    calls_.down(programButton(event->button()), xIn(*event));
}

void SliderHandle::mouseMoveEvent(QMouseEvent* event) { calls_.move(programButton(event->buttons()), xIn(*event)); }

void SliderHandle::mouseReleaseEvent(QMouseEvent* event)
{
    const bool isEnd = isHeld_ && event->button() == Qt::LeftButton;
    isHeld_ = isHeld_ && !isEnd;
    calls_.up(programButton(event->button()), xIn(*event));
    if (isEnd && calls_.snap && event->modifiers().testFlag(Qt::ControlModifier)) {
        calls_.snap();
    }
}

BookmarkFlag::BookmarkFlag(std::int16_t index, QWidget* parent) : QWidget(parent), index_(index)
{
    setObjectName(QString("imgBookmark%1").arg(index));
    setWhatsThis(tr("A marker. Drag it to move it; click it and press F9 to remove it."));
    resize(kWidth, kHeight);
    hide();
}

void BookmarkFlag::showState(const ImageBox& state, int number)
{
    const bool isSelected = state.Picture.get() == moduleBookmarks::kSelectedLook;
    if (std::exchange(isSelected_, isSelected) != isSelected) {
        update();
    }
    const QString time = fromProgram(state.ToolTipText.get());
    const bool isRenumbered = std::exchange(number_, number) != number;
    if (isRenumbered || time != toolTip()) {
        setToolTip(time);
        setAccessibleName(tr("Marker %1").arg(number_) + ", " + time);
    }
}

void BookmarkFlag::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(kWidth / 2.0, 0.5);
    path.lineTo(kWidth - 0.5, 5);
    path.lineTo(kWidth - 0.5, kHeight - 0.5);
    path.lineTo(0.5, kHeight - 0.5);
    path.lineTo(0.5, 5);
    path.closeSubpath();
    const QColor ink(0x2E, 0x8B, 0x57);
    painter.setPen(QPen(ink.darker(150), 1));
    painter.setBrush(isSelected_ ? ink : QColor(0xC9, 0xE8, 0xD5));
    painter.drawPath(path);
}

float BookmarkFlag::xIn(const QMouseEvent& event) const
{
    const auto& flags = forms::frmTimeline.imgBookmark;
    const std::int32_t left =
        static_cast<std::size_t>(index_) < flags.size() ? flags[static_cast<std::size_t>(index_)].Left.get() : x();
    return static_cast<float>(mapToParent(event.position().toPoint()).x() - left);
}

bool BookmarkFlag::event(QEvent* event)
{
    if (losesRelease(*event) && std::exchange(isHeld_, false)) {
        frmTimeline::imgBookmark_MouseUp(index_, programButton(Qt::LeftButton), 0, 0);
    }
    return QWidget::event(event);
}

void BookmarkFlag::mousePressEvent(QMouseEvent* event)
{
    isHeld_ = isHeld_ || event->button() == Qt::LeftButton;
    frmTimeline::imgBookmark_MouseDown(index_, programButton(event->button()), xIn(*event),
                                       static_cast<float>(event->position().y()));
    update();
}

void BookmarkFlag::mouseMoveEvent(QMouseEvent* event)
{
    frmTimeline::imgBookmark_MouseMove(index_, programButton(event->buttons()), xIn(*event),
                                       static_cast<float>(event->position().y()));
}

void BookmarkFlag::mouseReleaseEvent(QMouseEvent* event)
{
    isHeld_ = isHeld_ && event->button() != Qt::LeftButton;
    frmTimeline::imgBookmark_MouseUp(index_, programButton(event->button()), xIn(*event),
                                     static_cast<float>(event->position().y()));
}

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
