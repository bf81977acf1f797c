#include "timeline/timeline_marks_form.h"

#include "core/forms/frmTimeline.h"
#include "hand/slider_drag.h"

TimelineMarks::TimelineMarks(QWidget* scale, QWidget* base)
    : scale_(scale), marker_(new ThinLine(QColor(0x70, 0x78, 0x80), "imgScaleMarker", scale))
{
    auto& f = forms::frmTimeline;
    const QColor mainInk = QColor::fromRgb(kMainInk);
    const QColor selectionInk = QColor::fromRgb(kSelectionInk);
    scaleLines_ = {new ThinLine(selectionInk, "imgStartSelSlider", scale),
                   new ThinLine(selectionInk, "imgEndSelSlider", scale),
                   new ThinLine(mainInk, "imgScaleSlider", scale)};
    trackLines_ = {new ThinLine(selectionInk, "picStartSelSlider", base),
                   new ThinLine(selectionInk, "picEndSelSlider", base), new ThinLine(mainInk, "picSlider", base)};
    snapLine_ = new ThinLine(QColor::fromRgb(kSnapInk), "picSnapLine", base);
    using Shape = SliderHandle::Shape;
    handles_ = {new SliderHandle(f.imgStartSelHandle, Shape::kStart,
                                 {frmTimeline::imgStartSelHandle_MouseDown, frmTimeline::imgStartSelHandle_MouseMove,
                                  frmTimeline::imgStartSelHandle_MouseUp, frmTimeline::SnapStartSel},
                                 "imgStartSelHandle", scale),
                new SliderHandle(f.imgEndSelHandle, Shape::kEnd,
                                 {frmTimeline::imgEndSelHandle_MouseDown, frmTimeline::imgEndSelHandle_MouseMove,
                                  frmTimeline::imgEndSelHandle_MouseUp, frmTimeline::SnapEndSel},
                                 "imgEndSelHandle", scale),
                new SliderHandle(f.imgSliderHandle, Shape::kMain,
                                 {frmTimeline::imgSliderHandle_MouseDown, frmTimeline::imgSliderHandle_MouseMove,
                                  frmTimeline::imgSliderHandle_MouseUp, frmTimeline::SnapSlider},
                                 "imgSliderHandle", scale)};
    handles_[0]->raise();
    handles_[1]->raise();
    nameHandles();
}

void TimelineMarks::nameHandles()
{
    handles_[0]->setAccessibleName(QWidget::tr("Start of the selection"));
    handles_[0]->setWhatsThis(QWidget::tr("Where the range begins on which cut, copy, delete and crop work. Drag it."));
    handles_[1]->setAccessibleName(QWidget::tr("End of the selection"));
    handles_[1]->setWhatsThis(QWidget::tr("Where the range ends on which cut, copy, delete and crop work. Drag it."));
    handles_[2]->setAccessibleName(QWidget::tr("Position on the timeline"));
    handles_[2]->setWhatsThis(
        QWidget::tr("The slider: the place that the preview shows, and at which you paste and split. Drag it."));
}

void TimelineMarks::showState(int scaleHeight, int bottom)
{
    showLines(scaleHeight, bottom);
    for (SliderHandle* const handle : handles_) {
        handle->showState();
    }
    showBookmarks(scaleHeight);
}

void TimelineMarks::showLines(int scaleHeight, int bottom)
{
    const auto& f = forms::frmTimeline;
    const auto showLine = [](QWidget& line, const Marker& state, int from, int to) {
        line.setGeometry(state.Left, from, 1, to - from);
        line.setVisible(state.Visible);
    };
    showLine(*scaleLines_[0], f.imgStartSelSlider, 0, scaleHeight);
    showLine(*scaleLines_[1], f.imgEndSelSlider, 0, scaleHeight);
    showLine(*scaleLines_[2], f.imgScaleSlider, 0, scaleHeight);
    showLine(*trackLines_[0], f.picStartSelSlider, scaleHeight, bottom);
    showLine(*trackLines_[1], f.picEndSelSlider, scaleHeight, bottom);
    showLine(*trackLines_[2], f.picSlider, scaleHeight, bottom);
    showLine(*snapLine_, f.picSnapLine, 0, bottom);
    marker_->setGeometry(f.imgScaleMarker.Left, scaleHeight - 8, 1, 8);
    marker_->setVisible(f.imgScaleMarker.Visible);
}

void TimelineMarks::showBookmarks(int scaleHeight)
{
    const auto& f = forms::frmTimeline;
    while (bookmarks_.size() < f.imgBookmark.size()) {
        const auto index = static_cast<std::int16_t>(bookmarks_.size());
        auto* const flag = new BookmarkFlag(index, scale_);
        flag->lower();
        bookmarks_.push_back(flag);
    }
    int number = 0;
    for (std::size_t i = 0; i < bookmarks_.size(); ++i) {
        const bool isThere = i < f.imgBookmark.size() && f.imgBookmark[i].Visible;
        bookmarks_[i]->setVisible(isThere);
        if (isThere) {
            bookmarks_[i]->move(f.imgBookmark[i].Left, scaleHeight - BookmarkFlag::kHeight);
            bookmarks_[i]->showState(f.imgBookmark[i], ++number);
        }
    }
}
