#pragma once

// Beside the media list: the small player, and under it the facts of the selected file.

#include "windowing/frame_view.h"

#include <QLabel>
#include <QScrollArea>
#include <QSlider>
#include <QToolButton>
#include <array>
#include <string>

class MediaSide final : public QWidget {
public:
    explicit MediaSide(QWidget* parent);

    /// Gives player and facts their room, and tells the program the picture's size.
    void place();
    void showState();
    /// `quiet` is the palette of the facts' names.
    void refreshIcons(const QPalette& quiet);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makePlayer();
    void makeFacts();
    int factsHeight() const;
    void tellPlayerSize();
    bool hintAt(QObject* watched);
    void showPlayer();
    void showFacts();

    FrameView* picture_ = nullptr;
    QSlider* position_ = nullptr;
    QToolButton* play_ = nullptr;
    QScrollArea* factRoom_ = nullptr; // scrolls what a low panel has no room for
    QWidget* factBox_ = nullptr;
    std::array<QLabel*, 6> factNames_{};
    std::array<QLabel*, 6> facts_{};
    std::string playPicture_;
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};
