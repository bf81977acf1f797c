#include "timeline/frmTimeline_form.h"

#include "core/shared_state.h"
#include "hand/bookmark_events.h"
#include "hand/frmTimeline_events.h"
#include "hand/list_and_divider.h"
#include "hand/tree_drop.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/timeline_access_form.h"
#include "timeline/timeline_marks_form.h"
#include "timeline/timeline_news_form.h"
#include "timeline/timeline_row_form.h"
#include "timeline/timeline_row_parts_form.h"
#include "timeline/timeline_tree_form.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kScaleHeight = 40;
constexpr int kScrollHeight = 16;
constexpr int kDividerWidth = 5;
constexpr int kHeaderWidth = 160;

forms::FrmTimeline& form() { return forms::frmTimeline; }

} // namespace

TimelineForm::TimelineForm(QWidget* parent) : QWidget(parent)
{
    setObjectName("frmTimeline");
    setWhatsThis(tr("The timeline: your film from left to right. Each bar is a piece of a file."));
    setMouseTracking(true);
    installTimelineAccess();
    makeList();
    base_ = new QWidget(this);
    base_->setObjectName("picTimelineBase");
    base_->setMouseTracking(true);
    base_->setFocusPolicy(Qt::ClickFocus);
    base_->installEventFilter(this);
    makeScale();
    makeRows();
    marks_ = std::make_unique<TimelineMarks>(scale_, base_);
    makeButtons();
    refreshIcons();
    driveTimer(this, form().tmTimeline);
    driveTimer(this, form().tmDrag);
    new TimelineNews(this);
    showPass().add(this, [this] { showState(); });
}

TimelineForm::~TimelineForm() = default;

void TimelineForm::makeList()
{
    tree_ = new TimelineTree(this);
    tree_->setObjectName("tvwTimeline");
    tree_->setAccessibleName(tr("Timeline list"));
    tree_->setWhatsThis(
        tr("All that lies on the rows, in order. Click a piece to select it; drag it onto another one to put "
           "it in front of that."));
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree_->setFrameShape(QFrame::NoFrame);
    tree_->setTextElideMode(Qt::ElideMiddle);
    treeModel_ = new TreeModel(
        form().tvwTimeline, [this](const std::string& key) { return programIcon(key, palette()); }, this);
    tree_->setModel(treeModel_);
    connect(tree_, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { frmTimeline::tvwTimeline_NodeClick(treeModel_->placesOf(index)); });
    tree_->dragged = frmTimeline::tvwTimeline_NodeClick;
    tree_->isDropValid = frmTimeline::IsTreeDropValid;
    tree_->dropped = frmTimeline::tvwTimeline_OLEDragDrop;
    // A click is answered when it is over; what moves the current node else is a key.
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& index) {
        if (!isShowing_ && index.isValid() && QGuiApplication::mouseButtons() == Qt::NoButton) {
            frmTimeline::tvwTimeline_NodeClick(treeModel_->placesOf(index));
        }
    });
    divider_ = new QWidget(this);
    divider_->setObjectName("picVerticalResize");
    divider_->setAccessibleName(tr("Divider between list and tracks"));
    divider_->setWhatsThis(tr("Drag it to give the list or the rows more room."));
    divider_->setCursor(Qt::SplitHCursor);
    divider_->installEventFilter(this);
}

void TimelineForm::makeScale()
{
    scale_ = new PictureWidget(form().picScale, "picScale", base_);
    scale_->setAccessibleName(tr("Time scale"));
    scale_->setWhatsThis(tr("The time. A click puts the slider there; the arrow keys move it on."));
    scale_->pressed = [](int button, int, float x, float) { frmTimeline::picScale_MouseDown(button, x); };
    scale_->moved = [this](int, int, float x, float) {
        frmTimeline::picScale_MouseMove(x);
        if (QToolTip::isVisible()) { // it follows the pointer
            QToolTip::showText(QCursor::pos(), translated(form().picScaleToolTip.get()), scale_);
        }
    };
    scale_->keyDown = [](int key, int shift) {
        frmTimeline::picScale_KeyDown(key, shift);
        return key == 37 || key == 39;
    };
    connectPicture(*scale_);
    scrollBar_ = new QScrollBar(Qt::Horizontal, base_);
    scrollBar_->setObjectName("hsb");
    scrollBar_->setAccessibleName(tr("Part of the timeline in view"));
    scrollBar_->setWhatsThis(tr("Moves the view along the timeline."));
    scrollBar_->setFocusPolicy(Qt::NoFocus);
    connect(scrollBar_, &QScrollBar::valueChanged, this, [](int value) { form().hsb.SetValue(value); });
}

void TimelineForm::connectPicture(PictureWidget& widget)
{
    widget.wheel = [this](double notches, int shift, float x) {
        if ((shift & 2) != 0) {
            zoomAt(notches, x);
        } else {
            scrollBy(notches);
        }
    };
}

void TimelineForm::scrollBy(double notches)
{
    constexpr double kTicksANotch = 5;
    moduleScaleRenderer::ScrollTo(form().hsb.Value() - static_cast<int>(notches * kTicksANotch));
}

void TimelineForm::zoomAt(double notches, float x)
{
    // The time under the pointer stays under it, as far as whole ticks and the ends of the bar allow.
    const double before = moduleScaleRenderer::PixelsToMs(1);
    const double px = static_cast<double>(moduleScaleRenderer::TicksToPixels(form().hsb.Value())) + x;
    if (notches > 0) {
        moduleScaleRenderer::ZoomIn();
    } else {
        moduleScaleRenderer::ZoomOut();
    }
    const double newLeft = px * before / moduleScaleRenderer::PixelsToMs(1) - x;
    moduleScaleRenderer::ScrollTo(static_cast<int>(std::lround(newLeft / state::TickSpacing)));
}

void TimelineForm::makeRows()
{
    for (RowParts& parts : makeRowParts()) {
        auto* const row = new RowPane(std::move(parts), base_);
        connectPicture(row->picture());
        row->installEventFilter(this);
        rows_.push_back(row);
    }
}

void TimelineForm::makeButtons()
{
    const auto make = [this](const char* name, auto click) {
        auto* const button = new QToolButton(base_);
        button->setObjectName(name);
        button->setAutoRaise(true);
        button->setIconSize({16, 16});
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this, click);
        return button;
    };
    zoomIn_ = make("cmdZoomIn", [] { frmTimeline::cmdZoomIn_Click(); });
    zoomOut_ = make("cmdZoomOut", [] { frmTimeline::cmdZoomOut_Click(); });
    selSliders_ = make("cmdSelSliders", [] { frmTimeline::cmdSelSliders_Click(); });
    addBookmark_ = make("cmdAddBookmark", [] { frmTimeline::cmdAddBookmark_Click(); });
    removeBookmark_ = make("cmdRemoveBookmark", [] { frmTimeline::cmdRemoveBookmark_Click(); });
    zoomIn_->setWhatsThis(tr("Shows a shorter time, in more detail."));
    zoomOut_->setWhatsThis(tr("Shows a longer time, in less detail."));
    selSliders_->setWhatsThis(tr("Shows or hides the two sliders that mark a range."));
    addBookmark_->setWhatsThis(tr("Sets a marker at the slider."));
    removeBookmark_->setWhatsThis(tr("Removes the marker that was clicked last."));
}

void TimelineForm::refreshIcons()
{
    zoomIn_->setIcon(programIcon("ZOOM_IN", palette()));
    zoomOut_->setIcon(programIcon("ZOOM_OUT", palette()));
    selSliders_->setIcon(programIcon("SEL_SLIDERS", palette()));
    addBookmark_->setIcon(programIcon("ADD_MARKER", palette()));
    removeBookmark_->setIcon(programIcon("REMOVE_MARKER", palette()));
    for (RowPane* const row : rows_) {
        row->refreshIcons();
    }
}

int TimelineForm::listWidth() const
{
    return std::clamp<int>(form().picVerticalResizeLeft, 0, std::max(0, width() - 300));
}

void TimelineForm::place()
{
    isListShown_ = form().tvwTimelineVisible;
    tree_->setVisible(isListShown_);
    divider_->setVisible(isListShown_);
    tree_->setGeometry(0, 0, listWidth(), height());
    divider_->setGeometry(listWidth(), 0, kDividerWidth, height());
    const int left = isListShown_ ? listWidth() + kDividerWidth : 0;
    base_->setGeometry(left, 0, std::max(1, width() - left), height());
    const int pictureWidth = std::max(1, base_->width() - kHeaderWidth);
    scale_->setGeometry(kHeaderWidth, 0, pictureWidth, kScaleHeight);
    constexpr int kButton = 26;
    int x = 8;
    for (QToolButton* const button : {zoomIn_, zoomOut_, selSliders_, addBookmark_, removeBookmark_}) {
        button->setGeometry(x, (kScaleHeight - kButton) / 2, kButton, kButton);
        x += kButton + 4;
    }
    placeRows(kScaleHeight, std::max(5, height() - kScaleHeight - kScrollHeight));
    scrollBar_->setGeometry(kHeaderWidth, height() - kScrollHeight, pictureWidth, kScrollHeight);
    if (isTold_) {
        tellSizes();
    }
}

void TimelineForm::placeRows(int top, int height)
{
    // The lane of effects is lower than the rows of sources.
    constexpr int kShares[] = {12, 8, 10, 10, 10};
    constexpr int kAllShares = 50;
    int y = top;
    int shares = 0;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        shares += kShares[i];
        const int bottom = top + height * shares / kAllShares;
        rows_[i]->setGeometry(0, y, base_->width(), bottom - y - 1);
        rows_[i]->setHeaderWidth(kHeaderWidth);
        y = bottom;
    }
}

void TimelineForm::tellSizes()
{
    auto& f = form();
    f.Width = width();
    f.PixelRatio = devicePixelRatioF();
    f.lblHighlight.Left = kHeaderWidth;
    f.picScale.ScaleWidth = scale_->width();
    f.picScale.ScaleHeight = scale_->height();
    for (RowPane* const row : rows_) {
        row->parts().picture->ScaleWidth = row->picture().width();
        row->parts().picture->ScaleHeight = row->picture().height();
        row->parts().picture->Left = kHeaderWidth;
    }
    frmTimeline::Form_Resize();
}

void TimelineForm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    isTold_ = true;
    place();
}

void TimelineForm::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void TimelineForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        refreshIcons();
    }
}

void TimelineForm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (isListShown_) {
        painter.fillRect(divider_->geometry(), hairline(palette()));
    }
    painter.fillRect(base_->geometry(), hairline(palette()));
    painter.fillRect(QRect(base_->x(), 0, kHeaderWidth, kScaleHeight - 1), palette().color(QPalette::Button));
    painter.fillRect(QRect(base_->x(), height() - kScrollHeight, base_->width(), kScrollHeight),
                     palette().color(QPalette::Window));
}

bool TimelineForm::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (watched == divider_
        && (type == QEvent::MouseButtonPress || type == QEvent::MouseMove || type == QEvent::MouseButtonRelease)) {
        const auto& mouse = static_cast<QMouseEvent&>(*event);
        if (type == QEvent::MouseButtonPress) {
            form().picVerticalResizeLeft = listWidth(); // less than it had where the window has become narrow
        }
        // The program counts from the divider as it has placed it.
        const auto x = static_cast<float>(divider_->mapToParent(mouse.position().toPoint()).x()
                                          - form().picVerticalResizeLeft.get());
        if (type == QEvent::MouseButtonPress) {
            frmTimeline::picVerticalResize_MouseDown(programButton(mouse.button()), x);
        } else if (type == QEvent::MouseMove) {
            frmTimeline::picVerticalResize_MouseMove(programButton(mouse.buttons()), x);
        } else {
            place(); // the list and the rows first: what is drawn then depends on their sizes
            frmTimeline::picVerticalResize_MouseUp(programButton(mouse.button()), x);
        }
        return true;
    }
    if (watched == base_ && type == QEvent::MouseMove) {
        frmTimeline::picTimelineBase_MouseMove(static_cast<float>(static_cast<QMouseEvent*>(event)->position().x()));
    }
    if (watched == base_ && type == QEvent::Leave) {
        frmTimeline::Form_MouseMove(); // of the form itself nothing lies bare
    }
    if (watched == base_ && type == QEvent::KeyPress) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        frmTimeline::picTimelineBase_KeyDown(programKey(key.key()), programShift(key.modifiers()));
    }
    return QWidget::eventFilter(watched, event);
}

void TimelineForm::showList()
{
    isShowing_ = true;
    if (treeModel_->showState()) {
        for (const QModelIndex& index : treeModel_->expanded()) {
            tree_->expand(index);
        }
    }
    const auto& places = form().tvwTimeline.Selected.get();
    const QModelIndex wanted = places.empty() ? QModelIndex() : treeModel_->indexOf(places);
    if (wanted != tree_->currentIndex() && wanted.isValid()) {
        tree_->setCurrentIndex(wanted);
    }
    isShowing_ = false;
}

void TimelineForm::showState()
{
    const auto& f = form();
    if (isListShown_ != f.tvwTimelineVisible) {
        place();
        update();
    }
    if (divider_->x() != listWidth() && isTold_) {
        divider_->move(listWidth(), 0);
        divider_->raise();
    }
    {
        const QSignalBlocker quiet(scrollBar_);
        scrollBar_->setRange(f.hsb.Min(), f.hsb.Max());
        scrollBar_->setPageStep(std::max(1, f.picScale.ScaleWidth.get() / std::max<int>(1, state::TickSpacing)));
        scrollBar_->setSingleStep(5);
        scrollBar_->setValue(f.hsb.Value());
        scrollBar_->setEnabled(f.hsb.Enabled);
    }
    scale_->showState();
    scale_->setToolTip(translated(f.picScaleToolTip.get()));
    for (RowPane* const row : rows_) {
        row->showState();
    }
    marks_->showState(kScaleHeight, height() - kScrollHeight);
    showList();
    for (const auto& [button, told] : {std::pair{zoomIn_, &f.cmdZoomIn},
                                       {zoomOut_, &f.cmdZoomOut},
                                       {selSliders_, &f.cmdSelSliders},
                                       {addBookmark_, &f.cmdAddBookmark},
                                       {removeBookmark_, &f.cmdRemoveBookmark}}) {
        const QString tip = translated(told->ToolTipText.get());
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        button->setEnabled(told->Enabled);
    }
}
