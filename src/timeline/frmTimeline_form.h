#pragma once

// The timeline's form: the list, the scale with its sliders, the rows with their options.

#include "windowing/picture_widget.h"
#include "windowing/tree_model.h"

#include <QScrollBar>
#include <QToolButton>
#include <memory>
#include <vector>

class RowPane;
class TimelineMarks;
class TimelineTree;

class TimelineForm final : public QWidget {
public:
    explicit TimelineForm(QWidget* parent);
    ~TimelineForm() override;

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
    void makeButtons();
    int listWidth() const;
    void place();
    void placeRows(int top, int height);
    void tellSizes();
    void showState();
    void showList();
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
    std::unique_ptr<TimelineMarks> marks_;
    QToolButton* zoomIn_ = nullptr;
    QToolButton* zoomOut_ = nullptr;
    QToolButton* selSliders_ = nullptr;
    QToolButton* addBookmark_ = nullptr;
    QToolButton* removeBookmark_ = nullptr;
    bool isShowing_ = false; // state is being copied into the list
    bool isTold_ = false;    // the program knows the pictures' sizes
    bool isListShown_ = true;
};
