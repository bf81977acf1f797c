#pragma once

// Shows a picture of pixels, and tells where the pointer is on it: in pixels of the picture, whatever the screen's own
// pixels are.

#include <QWidget>
#include <cstdint>
#include <functional>

class PixelPicture;

class PixelView : public QWidget {
public:
    /// picture: outlives the view. It is as large as the picture, from the next show pass on.
    PixelView(PixelPicture& picture, QWidget* parent);

    /// To be called at each show pass: draws again what has changed.
    void showPicture();

    std::function<void(QPoint)> pressed;  // by the left button
    std::function<void(QPoint)> moved;    // with or without a button
    std::function<void(QPoint)> released; // the left button

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    PixelPicture& picture_;
    std::uint64_t shown_ = 0;
};
