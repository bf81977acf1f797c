#pragma once

// The media list's form: the list of files, and beside it what the selected one is.

#include "windowing/list_model.h"

#include <QLabel>
#include <QListView>
#include <QStackedWidget>
#include <QTreeView>
#include <atomic>

class MediaFilter;
class MediaSide;

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
    void watchView(QAbstractItemView* view);
    bool keyInList(const QKeyEvent& event);
    static bool editKey(QKeyEvent& event);
    void pressedInList(const QMouseEvent& event);
    void releasedInList();
    void noteSelection();
    void selectionChanged();
    void takeNews();
    void showState();
    void showSelection();
    void refreshIcons();
    void fitColumns();
    void fitNames();

    MediaFilter* filter_ = nullptr;
    QStackedWidget* views_ = nullptr;
    QTreeView* details_ = nullptr;
    QListView* icons_ = nullptr;
    QLabel* emptyHint_ = nullptr;
    ListModel* model_ = nullptr;
    MediaSide* side_ = nullptr;
    std::atomic<bool> isNewsPending_{false};
    bool isPressed_ = false; // a press on the list is answered when the button comes up,
    bool isKeyed_ = false;   // an arrow key when the focus has moved
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};
