#include "windowing/panel_divider.h"

#include <QMouseEvent>
#include <QPainter>
#include <utility>

PanelDivider::PanelDivider(Qt::Orientation line, QWidget* parent) : QWidget(parent), line_(line)
{
    setCursor(line == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    setMouseTracking(true);
}

/// Across the line, whole pixels.
int PanelDivider::along(QPointF at) const { return qRound(line_ == Qt::Vertical ? at.x() : at.y()); }

void PanelDivider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        isHeld_ = true;
        isDrawn_ = false;
        pressedAt_ = along(event->position());
    }
}

void PanelDivider::mouseMoveEvent(QMouseEvent* event)
{
    if (!isHeld_ || (event->buttons() & Qt::LeftButton) == 0) {
        endHolding();    // the release went to another window
        event->ignore(); // a pointer that passes is the owner's
        return;
    }
    const int half = along({width() / 2.0, height() / 2.0});
    const int moved = along(event->position()) - pressedAt_;
    if (moved != 0 || isDrawn_) {
        isDrawn_ = true;
        drawn(along(pos()) + half + moved);
    }
}

void PanelDivider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        endHolding();
    }
}

void PanelDivider::endHolding()
{
    if (std::exchange(isHeld_, false) && std::exchange(isDrawn_, false)) {
        letGo();
    }
}

void PanelDivider::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        doubleClicked();
    }
}

void PanelDivider::enterEvent(QEnterEvent*) { update(); }

void PanelDivider::leaveEvent(QEvent*) { update(); }

/// Bare ground until the pointer is there.
void PanelDivider::paintEvent(QPaintEvent*)
{
    if (isHeld_ || underMouse()) {
        QPainter painter(this);
        constexpr int kThick = 2;
        const QRect across = line_ == Qt::Vertical ? QRect((width() - kThick) / 2, 0, kThick, height())
                                                   : QRect(0, (height() - kThick) / 2, width(), kThick);
        painter.fillRect(across, palette().color(QPalette::Highlight));
    }
}
