#pragma once

// The handles of the sliders, which are dragged over the scale, and their thin lines.

#include "core/controls.h"

#include <QColor>
#include <QWidget>
#include <functional>

/// A handle: the main one points down, the two of the selection are flags to the right and to the left.
class SliderHandle final : public QWidget {
public:
    enum class Shape { kMain, kStart, kEnd };

    struct Calls {
        std::function<void(int button, float x)> down;
        std::function<void(int button, float x)> move;
        std::function<void(int button, float x)> up;
        std::function<void()> snap = {}; // behind the release, with Ctrl held; none: nothing
    };

    /// Stands over the scale's widget, on its parent: at the edges of the view half of it lies outside.
    SliderHandle(ImageBox& state, Shape shape, Calls calls, const QString& name, QWidget* scale);

    static constexpr int kWidth = 11; // the slider's own x is in its middle
    static constexpr int kHeight = 15;

    Shape shape() const { return shape_; }
    /// Goes where the program has placed it; out of the view it is hidden.
    void showState();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// x inside the handle, as the program has placed it: the widget follows a moment later.
    float xIn(const QMouseEvent& event) const;

    ImageBox& state_;
    Shape shape_;
    Calls calls_;
    QWidget* scale_;
    bool isHeld_ = false;
};

/// A marker on the scale: a small flag that is selected by a press and dragged.
class BookmarkFlag final : public QWidget {
public:
    BookmarkFlag(std::int16_t index, QWidget* parent);

    static constexpr int kWidth = 9; // its time is 4 pixels right of its left edge
    static constexpr int kHeight = 13;

    /// How it looks, and its time. number: among those that are seen, from 1.
    void showState(const ImageBox& state, int number);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    float xIn(const QMouseEvent& event) const;

    std::int16_t index_;
    int number_ = 0;
    bool isSelected_ = false;
    bool isHeld_ = false;
};

/// A line of one pixel that lets presses through.
class ThinLine final : public QWidget {
public:
    ThinLine(const QColor& colour, const QString& name, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_;
};

inline constexpr QRgb kMainInk = 0xFFD1452B;
inline constexpr QRgb kSelectionInk = 0xFF3A4FC4;
inline constexpr QRgb kSnapInk = 0xFFE08A00;
