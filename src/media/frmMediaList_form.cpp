#include "media/frmMediaList_form.h"

#include "core/forms/frmMediaList.h"
#include "core/shared_state.h"
#include "engine/file_presence.h"
#include "media/frmMediaList_events.h"
#include "media/media_filter_form.h"
#include "media/media_side_form.h"
#include "windowing/icons.h"
#include "windowing/picture_widget.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QDrag>
#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

namespace {

forms::FrmMediaList& form() { return forms::frmMediaList; }

/// Delete with and without its gap, Crop, Cut, Copy and Crop Source(s), on the number pad too.
bool isEditKey(const QKeyEvent& event)
{
    const QKeyCombination pressed(event.modifiers() & ~Qt::KeypadModifier, Qt::Key(event.key()));
    for (const QKeyCombination edit :
         {QKeyCombination(Qt::Key_Delete), Qt::SHIFT | Qt::Key_Delete, Qt::CTRL | Qt::Key_Delete, Qt::CTRL | Qt::Key_X,
          Qt::CTRL | Qt::Key_C, Qt::CTRL | Qt::Key_U}) {
        if (pressed == edit) {
            return true;
        }
    }
    return false;
}

/// A view of the list that tells the program of the span in which its rows are dragged.
template <class View>
class DragView final : public View {
public:
    DragView(QWidget* parent, std::function<void()> dragEnded) : View(parent), dragEnded_(std::move(dragEnded)) {}

protected:
    void startDrag(Qt::DropActions) override
    {
        constexpr int kIcon = 24;
        auto* const drag = new QDrag(this);
        drag->setMimeData(this->model()->mimeData(this->selectionModel()->selectedRows()));
        drag->setPixmap(this->currentIndex()
                            .siblingAtColumn(0)
                            .data(Qt::DecorationRole)
                            .template value<QIcon>()
                            .pixmap(kIcon, kIcon));
        frmMediaList::lvwMediaList_OLEStartDrag();
        drag->exec(Qt::CopyAction);
        frmMediaList::lvwMediaList_OLECompleteDrag();
        dragEnded_(); // the drag has taken the release
    }

private:
    std::function<void()> dragEnded_;
};

} // namespace

MediaListForm::MediaListForm(QWidget* parent) : QWidget(parent)
{
    setObjectName("frmMediaList");
    setWhatsThis(tr("The media list: the files that you have opened, with a small player."));
    setMouseTracking(true);
    makeList();
    filter_ = new MediaFilter(this);
    filter_->left = [this] { views_->currentWidget()->setFocus(Qt::TabFocusReason); };
    side_ = new MediaSide(this);
    refreshIcons();
    driveTimer(this, form().tmFilePreview);
    engine::filePresence().listen([this] { // on a thread of the engine's
        if (!isNewsPending_.exchange(true)) {
            QMetaObject::invokeMethod(
                this, [this] { takeNews(); }, Qt::QueuedConnection);
        }
    });
    showPass().add(this, [this] { showState(); });
}

MediaListForm::~MediaListForm() { engine::filePresence().listen({}); }

void MediaListForm::makeList()
{
    model_ = new ListModel(form().lvwMediaList,
                           {tr("Name"), tr("Media Type"), tr("Duration"), tr("Video Info"), tr("Audio Info")}, this);
    views_ = new QStackedWidget(this);
    const auto dragEnded = [this] { releasedInList(); };
    details_ = new DragView<QTreeView>(views_, dragEnded);
    details_->setObjectName("lvwMediaList");
    details_->setRootIsDecorated(false);
    details_->setUniformRowHeights(true);
    details_->setItemsExpandable(false);
    icons_ = new DragView<QListView>(views_, dragEnded);
    icons_->setObjectName("lvwMediaListIcons");
    icons_->setUniformItemSizes(true);
    icons_->setResizeMode(QListView::Adjust);
    icons_->setMovement(QListView::Static);
    for (QAbstractItemView* const view :
         {static_cast<QAbstractItemView*>(details_), static_cast<QAbstractItemView*>(icons_)}) {
        watchView(view);
        views_->addWidget(view);
    }
    icons_->setSelectionModel(details_->selectionModel());
    details_->header()->setStretchLastSection(false);
    details_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    fitColumns();
    details_->horizontalScrollBar()->setAccessibleName(tr("Scroll the list of media files sideways"));
    connect(details_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { noteSelection(); });
    connect(details_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { selectionChanged(); });
    emptyHint_ = new QLabel(views_);
    emptyHint_->setAlignment(Qt::AlignCenter);
    emptyHint_->setWordWrap(true);
    emptyHint_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void MediaListForm::watchView(QAbstractItemView* view)
{
    view->setModel(model_);
    view->setAccessibleName(tr("Media files"));
    view->setWhatsThis(tr("The files that you have opened. Select some and press F2, or drag them onto the timeline."));
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setFrameShape(QFrame::NoFrame);
    view->setDragEnabled(true);
    view->installEventFilter(this);
    view->viewport()->setMouseTracking(true);
    view->viewport()->installEventFilter(this);
    connect(view, &QAbstractItemView::doubleClicked, this, [] { frmMediaList::OnLvwMediaListDblClick(); });
}

/// Progress of an opening is not written over.
void MediaListForm::takeNews()
{
    if (state::BusyOpening) {
        constexpr int kLaterMs = 200;
        QTimer::singleShot(kLaterMs, this, [this] { takeNews(); });
        return;
    }
    isNewsPending_ = false;
    frmMediaList::FilesWereLookedFor();
}

void MediaListForm::showEvent(QShowEvent*) { frmMediaList::lvwMediaList_Showing(); }

void MediaListForm::refreshIcons()
{
    model_->setIcons(
        {programIcon("AUDIO", palette()), programIcon("VIDEO", palette()), programIcon("IMAGE", palette())},
        programIcon("MISSING", palette()));
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, quietText(palette()));
    side_->refreshIcons(quiet);
    emptyHint_->setPalette(quiet);
    filter_->setPalette(emptyFieldWords(palette()));
}

void MediaListForm::resizeEvent(QResizeEvent*)
{
    const int sideWidth = std::clamp(width() * 2 / 5, std::min(200, width() / 2), 420); // the list keeps the half
    const int listWidth = std::max(10, width() - sideWidth - 1);
    constexpr int kMargin = 3;
    const int top = filter_->sizeHint().height() + 2 * kMargin;
    filter_->setGeometry(kMargin, kMargin, listWidth - 2 * kMargin, top - 2 * kMargin);
    views_->setGeometry(0, top, listWidth, std::max(10, height() - top));
    emptyHint_->setGeometry(0, 20, listWidth, std::max(10, views_->height() - 40));
    side_->setGeometry(listWidth + 1, 0, sideWidth, height());
    side_->place();
    fitNames();
}

/// As wide as their usual texts. Later the columns are as wide as the person made them.
void MediaListForm::fitColumns()
{
    const QFontMetrics metrics = details_->fontMetrics();
    constexpr const char* kUsual[] = {"0:00:00.000   ", "0:00:00.000   ", "1920 x 1080, 25fps   ", "Audio Info    "};
    for (int column = 1; column < details_->header()->count(); ++column) {
        details_->header()->resizeSection(column, metrics.horizontalAdvance(kUsual[column - 1]));
    }
    fitNames();
}

/// The name takes what the facts leave; in a narrow panel it keeps a readable width, and the list scrolls sideways.
void MediaListForm::fitNames()
{
    constexpr int kLeast = 106;
    QHeaderView& header = *details_->header();
    const int facts = header.length() - header.sectionSize(0);
    const bool isNarrow = details_->viewport()->width() - facts < kLeast;
    const auto mode = isNarrow ? QHeaderView::Interactive : QHeaderView::Stretch;
    if (header.sectionResizeMode(0) != mode) {
        header.setSectionResizeMode(0, mode);
        header.resizeSection(0, isNarrow ? kLeast : header.sectionSize(0));
    }
}

bool MediaListForm::event(QEvent* event)
{
    const bool isTaken = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate) {
        frmMediaList::lvwMediaList_Showing(); // the person comes back, perhaps from the file manager
    }
    return isTaken;
}

void MediaListForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && details_ != nullptr) {
        fitColumns();
    }
    if (event->type() == QEvent::PaletteChange && emptyHint_ != nullptr && side_ != nullptr) {
        refreshIcons();
        show::mark();
    }
}

void MediaListForm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(views_->width(), 0, 1, height(), hairline(palette()));
}

void MediaListForm::keyPressEvent(QKeyEvent* event)
{
    const int key = programKey(event->key());
    if (key != 13 && key != 32) {
        QWidget::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        frmMediaList::Form_KeyDown(key);
    }
}

void MediaListForm::mouseMoveEvent(QMouseEvent*) { frmMediaList::Form_MouseMove(); }

bool MediaListForm::eventFilter(QObject* watched, QEvent* event)
{
    const bool isList = watched == details_->viewport() || watched == icons_->viewport();
    switch (event->type()) {
    case QEvent::MouseMove:
        if (isList) {
            frmMediaList::lvwMediaList_MouseMove();
        }
        return false;
    case QEvent::ShortcutOverride:
        return (watched == details_ || watched == icons_) && editKey(static_cast<QKeyEvent&>(*event));
    case QEvent::KeyPress:
        return (watched == details_ || watched == icons_) && keyInList(static_cast<const QKeyEvent&>(*event));
    case QEvent::MouseButtonPress:
        if (isList) {
            pressedInList(static_cast<const QMouseEvent&>(*event));
        }
        return false;
    case QEvent::MouseButtonRelease:
        if (isList) {
            releasedInList();
        }
        return false;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

/// The keys that edit the timeline are asked about ahead of the menu, which would run them. True when the list keeps
/// it.
bool MediaListForm::editKey(QKeyEvent& event)
{
    if (!isEditKey(event) || !frmMediaList::lvwMediaList_EditKey()) {
        return false;
    }
    event.accept();
    return true;
}

/// The form's own keys come before the list's search; True when it took the key.
bool MediaListForm::keyInList(const QKeyEvent& event)
{
    const int key = programKey(event.key());
    if (isEditKey(event)) {
        return true; // the list has a copying of its own
    }
    if ((key == 13 || key == 32) && programShift(event.modifiers()) == 0) {
        if (!event.isAutoRepeat()) { // a held key would play and pause in turns
            frmMediaList::Form_KeyDown(key);
        }
        return true;
    }
    if (key == 38 || key == 40) {
        isKeyed_ = true;
        const auto answer = [this, key] {
            isKeyed_ = false;
            frmMediaList::lvwMediaList_KeyDown(key);
        };
        QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection); // the list moves the focus first
    }
    return false;
}

void MediaListForm::pressedInList(const QMouseEvent& event)
{
    isPressed_ = true;
    frmMediaList::lvwMediaList_MouseDown(programButton(event.button()));
}

void MediaListForm::releasedInList()
{
    isPressed_ = false;
    const auto answer = [] { frmMediaList::lvwMediaList_Click(); };
    QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection); // the view may change the selection once more
}

void MediaListForm::noteSelection()
{
    if (isShowing_) {
        return;
    }
    auto& list = form().lvwMediaList;
    const QItemSelectionModel& selection = *details_->selectionModel();
    for (std::int32_t i = 1; i <= list.Count(); ++i) {
        // A range that is drawn over hidden rows does not hold them.
        const bool isSelected = selection.isRowSelected(i - 1, {}) && !details_->isRowHidden(i - 1, {});
        if (list.Row(i).Selected != isSelected) {
            list.Change(i).Selected = isSelected;
        }
    }
    const QModelIndex current = selection.currentIndex();
    const bool isSeen = current.isValid() && !details_->isRowHidden(current.row(), {});
    list.SelectedItem = isSeen ? current.row() + 1 : 0;
}

void MediaListForm::selectionChanged()
{
    if (isShowing_) {
        return;
    }
    noteSelection();
    if (!isPressed_ && !isKeyed_) {
        frmMediaList::lvwMediaList_Click();
    }
}

void MediaListForm::showSelection()
{
    const auto& list = form().lvwMediaList;
    QItemSelection selection;
    for (std::int32_t i = 1; i <= list.Count(); ++i) {
        if (list.Row(i).Selected) {
            selection.select(model_->index(i - 1, 0), model_->index(i - 1, model_->columnCount() - 1));
        }
    }
    auto& shown = *details_->selectionModel();
    if (shown.selection() != selection) {
        shown.select(selection, QItemSelectionModel::ClearAndSelect);
    }
    const QModelIndex current = model_->index(list.SelectedItem - 1, 0);
    if (current.isValid() && current != shown.currentIndex()) {
        shown.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    } else if (!current.isValid() && shown.currentIndex().isValid()
               && details_->isRowHidden(shown.currentIndex().row(), {})) {
        shown.clearCurrentIndex();
    }
}

void MediaListForm::showState()
{
    isShowing_ = true;
    const auto& f = form();
    model_->showState();
    const bool isAnyShown = filter_->showState(*details_, *icons_) > 0;
    emptyHint_->setText(f.lvwMediaList.Count() == 0 ? tr("Open video, sound and picture files\n"
                                                         "with File > Open File (Ctrl+I),\n"
                                                         "or drop them here from your file manager.")
                                                    : tr("No name of a file holds this."));
    emptyHint_->setVisible(!isAnyShown);
    emptyHint_->raise();
    showSelection();
    const std::int16_t view = f.lvwMediaList.View;
    views_->setCurrentWidget(view == 3 ? static_cast<QWidget*>(details_) : icons_);
    icons_->setViewMode(view == 0 ? QListView::IconMode : QListView::ListMode);
    icons_->setIconSize(view == 0 ? QSize(32, 32) : QSize(16, 16));
    icons_->setGridSize(view == 0 ? QSize(110, 70) : view == 1 ? QSize(190, 24) : QSize());
    icons_->setFlow(view == 2 ? QListView::TopToBottom : QListView::LeftToRight);
    icons_->setWrapping(true);
    icons_->setWordWrap(view == 0);
    side_->showState();
    isShowing_ = false;
}
