#pragma once

// The preview's form: the picture, the seek bar between its two times, and the transport below; above them, at times,
// the line that offers another size for the movie.

#include "preview/frame_offer_form.h"
#include "preview/whole_screen_form.h"
#include "windowing/frame_view.h"

#include <QLabel>
#include <QSlider>
#include <QToolButton>
#include <vector>

class PreviewForm final : public QWidget {
public:
    explicit PreviewForm(QWidget* parent);

    QSize sizeHint() const override { return {400, 340}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Hint = void (*)();

    QToolButton* addButton(const char* name, void (*clicked)(), Hint hint);
    void watch(QWidget* widget, Hint hint);
    void makePicture();
    void makeSeekBar();
    void makeTransport();
    void layOut();
    void tellRoom();
    void layOutSeekBar(int top, bool isNarrow);
    void layOutTransport(int top);
    void seekBarMoved(int value);
    void openVolume();
    void showState();
    void showOffer();
    void showWholeScreen();
    void showSeekBar();
    void showButtons();

    FrameOfferLine* offer_ = nullptr;
    QWidget* ground_ = nullptr;    // around the picture
    WholeScreen* whole_ = nullptr; // while the picture has the whole screen
    FrameView* picture_ = nullptr;
    QLabel* emptyHint_ = nullptr;
    QLabel* currentTime_ = nullptr;
    QLabel* duration_ = nullptr;
    QSlider* seekBar_ = nullptr;
    std::vector<QToolButton*> transport_;
    QToolButton* repeat_ = nullptr;
    QToolButton* volume_ = nullptr;
    std::vector<std::pair<QObject*, Hint>> hints_;
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};
