#pragma once

// Shows one picture that the program draws (`PictureBox`): tells it its size, paints it when it was drawn anew, and
// hands presses, moves and keys on in logical pixels.

#include "core/controls.h"

#include <QWidget>
#include <functional>

class PictureWidget : public QWidget {
public:
    PictureWidget(PictureBox& picture, const QString& name, QWidget* parent);

    /// Button 1 left, 2 right; masks 1 Shift, 2 Ctrl, 4 Alt. Unset ones are not called.
    std::function<void(int button, int shift, float x, float y)> pressed;
    std::function<void(int button, int shift, float x, float y)> moved;
    std::function<void(int button, int shift, float x, float y)> released;
    /// A key by the program's number; true when it was taken.
    std::function<bool(int key, int shift)> keyDown;
    /// The wheel turned up by so many notches over x.
    std::function<void(double notches, int shift, float x)> wheel;

    /// Behind the press that a double click is as well.
    std::function<void(int button, int shift)> doubleClicked;

    /// Whether rows of a list of the program's own may be dropped now, and what a drop does.
    std::function<bool()> takesDrops;
    std::function<void(int shift, float x)> dropped;
    /// Files of a file manager were dropped. Unset, these are the window's.
    std::function<void(const std::vector<std::string>& paths, int shift, float x)> filesDropped;
    /// What may be dropped is over the picture: such rows, or such files.
    std::function<void(bool areRows, int shift, float x)> draggedOver;
    std::function<void()> draggedOff;

    const PictureBox& picture() const { return picture_; }
    /// Paints again what has changed since the last pass, and tells those who cannot see it.
    void showState();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void takeDrag(QDropEvent& event);

    PictureBox& picture_;
    std::vector<DrawList::Stroke> shown_;
};

/// 1 left, 2 right, 4 middle, 0 none, as the program counts buttons.
int programButton(Qt::MouseButton button);
/// The lowest of the buttons that are held.
int programButton(Qt::MouseButtons buttons);
int programShift(Qt::KeyboardModifiers modifiers);
/// The program's number of a key; 0 for one that it knows none for.
int programKey(int key);
