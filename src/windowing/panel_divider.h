#pragma once

// The gap between two panels, which a hand draws to give one of them more room. It moves nothing itself: it says where
// it is drawn to, and is placed by its owner.

#include <QWidget>
#include <functional>

class PanelDivider final : public QWidget {
public:
    /// Of the line that divides: vertical between panels that stand side by side.
    PanelDivider(Qt::Orientation line, QWidget* parent);

    /// The place of its middle on the parent, pixels.
    std::function<void(int place)> drawn;
    std::function<void()> letGo; // once it was drawn
    std::function<void()> doubleClicked;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int along(QPointF at) const;
    void endHolding();

    Qt::Orientation line_;
    bool isHeld_ = false;
    bool isDrawn_ = false;
    int pressedAt_ = 0; // inside the divider
};
