#include "timeline/timeline_tree_form.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>
#include <utility>

TreeModel& TimelineTree::nodes() const { return static_cast<TreeModel&>(*model()); }

TimelineTree::Places TimelineTree::placesAt(QPoint point) const
{
    const QModelIndex index = indexAt(point);
    return index.isValid() ? nodes().placesOf(index) : Places{};
}

void TimelineTree::reset()
{
    QTreeView::reset();
    end();
}

void TimelineTree::begin()
{
    constexpr int kScrollMs = 50;
    scrolling_.start(kScrollMs, this);
    dragged(pressed_);
}

void TimelineTree::aim(QPoint point)
{
    const Places node = placesAt(point);
    const bool isValid = isDropValid(pressed_, node);
    viewport()->setCursor(isValid ? Qt::DragMoveCursor : Qt::ForbiddenCursor);
    aim_ = isValid ? node : Places{};
    viewport()->update();
}

void TimelineTree::end()
{
    if (isDragged()) {
        scrolling_.stop();
        viewport()->unsetCursor();
        viewport()->update();
    }
    pressed_.clear();
    aim_.clear();
}

void TimelineTree::mousePressEvent(QMouseEvent* event)
{
    end();
    QTreeView::mousePressEvent(event);
    const Places node = placesAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && node.size() == 2) {
        pressed_ = node;
        pressPoint_ = event->position().toPoint();
    }
}

void TimelineTree::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        end(); // its release was lost
    }
    if (pressed_.empty()) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    if (!isDragged() && (point - pressPoint_).manhattanLength() >= QApplication::startDragDistance()) {
        begin();
    }
    if (isDragged()) {
        aim(point);
    }
}

void TimelineTree::mouseReleaseEvent(QMouseEvent* event)
{
    if (!isDragged() || event->button() != Qt::LeftButton) {
        pressed_.clear();
        QTreeView::mouseReleaseEvent(event);
        return;
    }
    {
        const QSignalBlocker quiet(this); // it was no click
        QTreeView::mouseReleaseEvent(event);
    }
    aim(event->position().toPoint());
    const Places node = pressed_;
    const Places target = std::exchange(aim_, {});
    end();
    if (!target.empty()) {
        dropped(node, target);
    }
}

void TimelineTree::keyPressEvent(QKeyEvent* event)
{
    const bool isMove = event->modifiers() == Qt::AltModifier; // with an arrow key, of the item
    if (!isDragged() && (isMove || (event->key() == Qt::Key_Space && !isSearching()))) {
        event->ignore(); // the blank plays
    } else if (!isDragged()) {
        if (!event->text().isEmpty() && event->text().front().isPrint()) {
            lastLetter_.start();
        }
        QTreeView::keyPressEvent(event);
    } else if (event->key() == Qt::Key_Escape) {
        end();
    }
}

/// A name is being typed, to which a blank belongs.
bool TimelineTree::isSearching() const
{
    return lastLetter_.isValid() && !lastLetter_.hasExpired(QApplication::keyboardInputInterval());
}

bool TimelineTree::event(QEvent* event)
{
    if (isDragged()) {
        switch (event->type()) {
        case QEvent::ShortcutOverride: // no command runs in the middle of a drag
            event->accept();
            return true;
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            end();
            break;
        default:
            break;
        }
    }
    return QTreeView::event(event);
}

void TimelineTree::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != scrolling_.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    scrollAtEdge(viewport()->mapFromGlobal(QCursor::pos()));
}

void TimelineTree::scrollAtEdge(QPoint point)
{
    constexpr int kEdge = 12;
    QScrollBar& bar = *verticalScrollBar();
    const int step = point.y() < kEdge ? -1 : point.y() >= viewport()->height() - kEdge ? 1 : 0;
    const int before = bar.value();
    bar.setValue(before + step * bar.singleStep());
    if (bar.value() != before) {
        aim(point);
    }
}

void TimelineTree::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (aim_.empty()) {
        return;
    }
    const QRect place = visualRect(nodes().indexOf(aim_));
    QPainter painter(viewport());
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    if (aim_.size() == 2) {
        painter.drawLine(place.left(), place.top(), viewport()->width() - 2, place.top());
    } else {
        painter.drawRect(place.adjusted(1, 1, -1, -1));
    }
}
