#pragma once

// The picture on which a title is written: the text is drawn about by its handle, moved by the direction keys, and
// typed into a box that stands over it.

#include "windowing/pixel_view.h"

#include <functional>

class QPlainTextEdit;

class TitleView final : public PixelView {
public:
    explicit TitleView(QWidget* parent);

    /// To be called at each show pass.
    void showTitle();

    /// What a person works on, in pixels of the view: where only a part of it is in sight, that should be.
    std::function<void(const QRect&)> sought;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    static bool isEmpty();
    QRect handle() const;
    QPoint within(QPoint at) const;
    void placeEdit();
    void seek(const QRect& place) const;
    void seekCaret() const;
    void paintHint();
    void press(QPoint at);
    void move(QPoint at);
    void release(QPoint at);
    void makeEdit();

    QPlainTextEdit* edit_;
    bool isShowing_ = false;
    bool isDragging_ = false;
    QRect placed_;   // the handle as it was shown last
    QPoint drawnTo_; // where the handle would be dropped
};
