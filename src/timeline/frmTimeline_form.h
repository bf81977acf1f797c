#pragma once

// The timeline's form: the list, the scale with its sliders, the rows with their options.

#include "windowing/picture_widget.h"
#include "windowing/tree_model.h"

#include <QScrollBar>
#include <QToolButton>
#include <array>

class BookmarkFlag;
class SliderHandle;
class TimelineTree;
class RowPane;

class TimelineForm final : public QWidget {
public:
    explicit TimelineForm(QWidget* parent);

    QSize sizeHint() const override { return {1000, 290}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeList();
    void makeScale();
    void makeRows();
    void makeSliders();
    void makeButtons();
    int listWidth() const;
    void place();
    void placeRows(int top, int height);
    void tellSizes();
    void showState();
    void showList();
    void showMarkers();
    void showBookmarks();
    void refreshIcons();
    void zoomAt(double notches, float x);
    void scrollBy(double notches);
    void connectPicture(PictureWidget& widget);

    TimelineTree* tree_ = nullptr;
    TreeModel* treeModel_ = nullptr;
    QWidget* divider_ = nullptr;
    QWidget* base_ = nullptr; // the ground under the rows
    PictureWidget* scale_ = nullptr;
    QScrollBar* scrollBar_ = nullptr;
    std::vector<RowPane*> rows_;
    std::vector<SliderHandle*> handles_;
    std::vector<BookmarkFlag*> bookmarks_;
    std::vector<QWidget*> scaleLines_;
    std::vector<QWidget*> trackLines_;
    QWidget* scaleMarker_ = nullptr;
    QToolButton* zoomIn_ = nullptr;
    QToolButton* zoomOut_ = nullptr;
    QToolButton* selSliders_ = nullptr;
    QToolButton* addBookmark_ = nullptr;
    QToolButton* removeBookmark_ = nullptr;
    bool isShowing_ = false; // state is being copied into the list
    bool isTold_ = false;    // the program knows the pictures' sizes
    bool isListShown_ = true;
};
