#pragma once

// The media list's form: the list of files, the facts of the selected one, and the small player.

#include "windowing/frame_view.h"
#include "windowing/list_model.h"

#include <QLabel>
#include <QListView>
#include <QScrollArea>
#include <QSlider>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeView>
#include <array>
#include <atomic>

class MediaListForm final : public QWidget {
public:
    explicit MediaListForm(QWidget* parent);
    ~MediaListForm() override;

    QSize sizeHint() const override { return {900, 320}; }

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeList();
    void makePlayer();
    void makeFacts();
    void watchView(QAbstractItemView* view);
    bool hintAt(QObject* watched);
    bool keyInList(const QKeyEvent& event);
    static bool editKey(QKeyEvent& event);
    void pressedInList(const QMouseEvent& event);
    void releasedInList();
    void noteSelection();
    void selectionChanged();
    void takeNews();
    void showState();
    void showSelection();
    void showFacts();
    void refreshIcons();
    void fitColumns();
    void fitNames();
    int factsHeight() const;
    void placeSide();
    void tellPlayerSize();

    QStackedWidget* views_ = nullptr;
    QTreeView* details_ = nullptr;
    QListView* icons_ = nullptr;
    QLabel* emptyHint_ = nullptr;
    ListModel* model_ = nullptr;
    QWidget* side_ = nullptr; // player and facts
    FrameView* picture_ = nullptr;
    QSlider* position_ = nullptr;
    QToolButton* play_ = nullptr;
    QScrollArea* factRoom_ = nullptr; // scrolls what a low panel has no room for
    QWidget* factBox_ = nullptr;
    std::array<QLabel*, 6> factNames_{};
    std::array<QLabel*, 6> facts_{};
    std::string playPicture_;
    std::atomic<bool> isNewsPending_{false};
    bool isPressed_ = false; // a press on the list is answered when the button comes up,
    bool isKeyed_ = false;   // an arrow key when the focus has moved
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};
