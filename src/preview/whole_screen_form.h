#pragma once

// The picture on the whole screen: a window of its own, black around the picture, which the panel lends its picture to.
// Keys go to the panel. The pointer hides when it rests.

#include <QTimer>
#include <QWidget>
#include <functional>

class WholeScreen final : public QWidget {
public:
    /// On the screen on which the panel's window is. The panel owns it.
    explicit WholeScreen(QWidget* panel);

    /// It has got its size, or another one.
    std::function<void()> resized;
    /// The window system wants it closed.
    std::function<void()> closed;

    void pointerMoved();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QTimer rest_;
};
