#pragma once

// What stands over the scale and the rows: the sliders' lines and handles, the thin marker of the pointer, the flags of
// the bookmarks. The widgets belong to the scale and to the ground under the rows.

#include "timeline/timeline_sliders_form.h"

#include <vector>

class TimelineMarks {
public:
    TimelineMarks(QWidget* scale, QWidget* base);

    /// The lines over the rows reach from the scale's height down to `bottom`, in pixels of the ground.
    void showState(int scaleHeight, int bottom);

private:
    void nameHandles();
    void showLines(int scaleHeight, int bottom);
    void showBookmarks(int scaleHeight);

    QWidget* scale_;
    QWidget* marker_; // under the pointer
    QWidget* snapLine_;
    std::vector<QWidget*> scaleLines_;
    std::vector<QWidget*> trackLines_;
    std::vector<SliderHandle*> handles_;
    std::vector<BookmarkFlag*> bookmarks_;
};
