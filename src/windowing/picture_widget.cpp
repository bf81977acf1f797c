#include "windowing/picture_widget.h"

#include "windowing/dropped_files.h"
#include "windowing/painter_canvas.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>

int programButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

int programButton(Qt::MouseButtons buttons)
{
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (buttons.testFlag(button)) {
            return programButton(button);
        }
    }
    return 0;
}

int programShift(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) | (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0)
           | (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int programKey(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Comma:
        return 188;
    case Qt::Key_Period:
        return 190;
    default:
        return key >= Qt::Key_A && key <= Qt::Key_Z ? key : 0; // the same numbers
    }
}

PictureWidget::PictureWidget(PictureBox& picture, const QString& name, QWidget* parent)
    : QWidget(parent), picture_(picture)
{
    setObjectName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PictureWidget::showState()
{
    const auto& strokes = picture_.drawing.strokes();
    if (strokes != shown_) {
        shown_ = strokes;
        update();
        if (QAccessible::isActive()) {
            QAccessibleEvent changed(this, QAccessible::ObjectReorder);
            QAccessible::updateAccessibility(&changed);
        }
    }
}

void PictureWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect part = event->rect();
    PainterCanvas canvas(painter, size(), part.left() - 1.0, part.right() + 1.0);
    picture_.drawing.replay(canvas);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void PictureWidget::mousePressEvent(QMouseEvent* event)
{
    if (pressed) {
        const QPointF at = event->position();
        pressed(programButton(event->button()), programShift(event->modifiers()), static_cast<float>(at.x()),
                static_cast<float>(at.y()));
    }
}

void PictureWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (moved) {
        const QPointF at = event->position();
        moved(programButton(event->buttons()), programShift(event->modifiers()), static_cast<float>(at.x()),
              static_cast<float>(at.y()));
    }
}

void PictureWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (released) {
        const QPointF at = event->position();
        released(programButton(event->button()), programShift(event->modifiers()), static_cast<float>(at.x()),
                 static_cast<float>(at.y()));
    }
}

void PictureWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
    if (doubleClicked) {
        doubleClicked(programButton(event->button()), programShift(event->modifiers()));
    }
}

void PictureWidget::keyPressEvent(QKeyEvent* event)
{
    if (!keyDown || !keyDown(programKey(event->key()), programShift(event->modifiers()))) {
        QWidget::keyPressEvent(event);
    }
}

void PictureWidget::wheelEvent(QWheelEvent* event)
{
    constexpr double kNotch = 120;
    const QPoint turn = event->angleDelta();
    const int most = turn.y() != 0 ? turn.y() : turn.x();
    if (!wheel || most == 0) {
        QWidget::wheelEvent(event);
        return;
    }
    wheel(most / kNotch, programShift(event->modifiers()), static_cast<float>(event->position().x()));
}

void PictureWidget::dragEnterEvent(QDragEnterEvent* event)
{
    const bool areRows = event->source() != nullptr;
    if (areRows ? takesDrops && takesDrops() : filesDropped && event->mimeData()->hasUrls()) {
        takeDrag(*event);
    } else {
        event->ignore();
    }
}

void PictureWidget::dragMoveEvent(QDragMoveEvent* event) { takeDrag(*event); }

/// A copy, whatever the keys would make of it elsewhere: what is dragged stays where it is.
void PictureWidget::takeDrag(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (draggedOver) {
        draggedOver(event.source() != nullptr, programShift(event.modifiers()),
                    static_cast<float>(event.position().x()));
    }
}

void PictureWidget::dragLeaveEvent(QDragLeaveEvent*)
{
    if (draggedOff) {
        draggedOff();
    }
}

void PictureWidget::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (draggedOff) {
        draggedOff();
    }
    const int shift = programShift(event->modifiers());
    const auto x = static_cast<float>(event->position().x());
    std::function<void()> deed = [this, shift, x] { dropped(shift, x); };
    if (event->source() == nullptr) {
        deed = [this, paths = localFiles(*event->mimeData()), shift, x] { filesDropped(paths, shift, x); };
    }
    // The drag ends first: what follows takes time, or asks the person something.
    QMetaObject::invokeMethod(this, deed, Qt::QueuedConnection);
}

void PictureWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void PictureWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}
