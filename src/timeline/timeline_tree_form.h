#pragma once

// The timeline list, whose items can be dragged on one another.
//
// Where a drop would do something, the place is shown: a line above the item ahead of which the dragged one would go, a
// frame around a track. The drag never leaves the list, so it is the list's own and not the desktop's. Nodes are told
// by their places below the root.

#include "windowing/tree_model.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QTreeView>
#include <functional>

class TimelineTree final : public QTreeView {
public:
    using Places = std::vector<std::int32_t>;

    explicit TimelineTree(QWidget* parent) : QTreeView(parent) {}

    /// A drag of a node begins.
    std::function<void(const Places& node)> dragged;
    /// Whether a drop of the one on the other would do anything.
    std::function<bool(const Places& drag, const Places& drop)> isDropValid;
    /// The drop was made, and the drag is over.
    std::function<void(const Places& drag, const Places& drop)> dropped;

    /// The nodes are other ones now: what was dragged is not there any more.
    void reset() override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool isDragged() const { return scrolling_.isActive(); }
    bool isSearching() const;
    Places placesAt(QPoint point) const;
    void begin();
    void aim(QPoint point);
    void end();
    void scrollAtEdge(QPoint point);
    TreeModel& nodes() const;

    Places pressed_; // the item under the press while the button is down, else empty
    QPoint pressPoint_;
    Places aim_;            // what a drop would go to, empty for nothing
    QBasicTimer scrolling_; // runs during a drag
    QElapsedTimer lastLetter_;
};
