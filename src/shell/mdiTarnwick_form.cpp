#include "shell/mdiTarnwick_form.h"

#include "capture/frmCaptureOptions_form.h"
#include "capture/frmCaptureValues_form.h"
#include "capture/frmCapture_form.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "export/frmAdvancedSaveOptions_form.h"
#include "export/frmExportTimeline_form.h"
#include "export/frmProfileProperties_form.h"
#include "export/frmProgressBar_form.h"
#include "hand/frmTimeline_events.h"
#include "media/frmMediaList_events.h"
#include "media/frmMediaList_form.h"
#include "media/moduleTarnwick.h"
#include "preview/frmPreview_events.h"
#include "preview/frmPreview_form.h"
#include "project/frmNewProject_form.h"
#include "shell/about_form.h"
#include "shell/context_keys.h"
#include "shell/frmPreferences_form.h"
#include "shell/frmTools_events.h"
#include "shell/frmTools_form.h"
#include "shell/help_desk_form.h"
#include "shell/key_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/menus_form.h"
#include "shell/panel_places.h"
#include "shell/status_line_form.h"
#include "timeline/frmTimeline_form.h"
#include "tools/frmAddText_form.h"
#include "tools/frmKeyColor_form.h"
#include "tools/frmStretchMode_form.h"
#include "tools/frmTakeSnap_form.h"
#include "volume/frmVolume_form.h"
#include "windowing/dropped_files.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <algorithm>

MainWindow::MainWindow()
{
    setObjectName("mdiTarnwick");
    setWhatsThis(
        tr("The window: the media list, the preview, the tools and the timeline, and all commands in the menus."));
    setWindowTitle("Quillmont");
    setWindowIcon(applicationIcon());
    setAcceptDrops(true);
    constexpr QSize kFrame(4, 40); // about what the desktop draws around a window
    const QSize room = screen()->availableSize() - kFrame;
    resize(QSize(1280, 800).boundedTo(room));
    // On a screen that is small, or finely scaled, nothing lies below its edge as long as there is room for all.
    setMinimumSize(QSize(760, 520).boundedTo(room).expandedTo(QSize(640, 400)));
    makePanels();
    makeDividers();
    makeMenus();
    statusLine_ = std::make_unique<StatusLine>(*statusBar());
    bindHooks();
    mdiTarnwick::Form_Load();
    showPass().add(this, [this] { showState(); });
}

MainWindow::~MainWindow()
{
    disconnect(qApp, nullptr, this, nullptr); // windows that close now move the focus, and the panels go
    frmPreview::Unload();
    frmMediaList::Unload();
}

void MainWindow::makePanels()
{
    ground_ = new QWidget(this);
    ground_->installEventFilter(this);
    setCentralWidget(ground_);
    // The panels are loaded in this order.
    mdiTarnwick::Form_Initialize();
    mediaList_ = new MediaListForm(nullptr);
    frmMediaList::Load();
    timeline_ = new TimelineForm(nullptr);
    frmTimeline::Load();
    preview_ = new PreviewForm(nullptr);
    frmPreview::Load();
    tools_ = new ToolsForm(nullptr);
    frmTools::Form_Load();
    mediaListPanel_ = new PanelFrame(mediaList_, ground_);
    mediaListPanel_->setClosable([] {
        frmMediaList::CloseFromWindowMenu();
        mdiTarnwick::ArrangeVisible();
    });
    previewPanel_ = new PanelFrame(preview_, ground_);
    previewPanel_->setCaption(tr("Preview"));
    previewPanel_->setClosable([] {
        frmPreview::CloseFromWindowMenu();
        mdiTarnwick::ArrangeVisible();
    });
    new VolumeForm(this);
    timelinePanel_ = new PanelFrame(timeline_, ground_);
    timelinePanel_->setCaption(tr("Timeline"));
    timelinePanel_->setClosable([] {
        frmTimeline::CloseFromWindowMenu();
        mdiTarnwick::ArrangeVisible();
    });
    toolsPanel_ = new PanelFrame(tools_, ground_);
    toolsPanel_->setCaption(tr("Tools"));
    toolsPanel_->setClosable([] {
        frmTools::CloseFromWindowMenu();
        mdiTarnwick::ArrangeVisible();
    });
    for (PanelFrame* const panel : {mediaListPanel_, previewPanel_, timelinePanel_, toolsPanel_}) {
        panel->bareMoved = mdiTarnwick::MDIForm_MouseMove; // its strip is a part of the frame
    }
    for (QAbstractItemView* const list : ground_->findChildren<QAbstractItemView*>()) {
        list->installEventFilter(this);
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        for (PanelFrame* const panel : {mediaListPanel_, previewPanel_, timelinePanel_, toolsPanel_}) {
            panel->setActive(now != nullptr && panel->isAncestorOf(now));
        }
        if (now != nullptr && mediaListPanel_->isAncestorOf(now)) {
            activate(0, frmMediaList::Form_Activate);
        } else if (now != nullptr && previewPanel_->isAncestorOf(now)) {
            activate(1, frmPreview::Form_Activate);
        } else if (now != nullptr && timelinePanel_->isAncestorOf(now)) {
            activate(2, frmTimeline::Form_Activate);
        }
    });
}

void MainWindow::makeDividers()
{
    const QString reset = tr(" A double click puts it back.");
    listDivider_ = new PanelDivider(Qt::Vertical, ground_);
    listDivider_->setObjectName("dividerList");
    listDivider_->setAccessibleName(tr("Divider between media list and preview"));
    listDivider_->setWhatsThis(tr("Drag it to give the media list or the preview more room.") + reset);
    listDivider_->drawn = mdiTarnwick::DrawListDivider;
    listDivider_->doubleClicked = mdiTarnwick::ForgetListDivider;
    timelineDivider_ = new PanelDivider(Qt::Horizontal, ground_);
    timelineDivider_->setObjectName("dividerTimeline");
    timelineDivider_->setAccessibleName(tr("Divider above the timeline"));
    timelineDivider_->setWhatsThis(tr("Drag it to give the timeline or the panels above it more room.") + reset);
    timelineDivider_->drawn = mdiTarnwick::DrawTimelineDivider;
    timelineDivider_->doubleClicked = mdiTarnwick::ForgetTimelineDivider;
    for (PanelDivider* const divider : {listDivider_, timelineDivider_}) {
        divider->letGo = mdiTarnwick::KeepDividers;
    }
}

/// The tools panel follows the panel that is worked in.
void MainWindow::activate(std::int16_t context, void (*activated)())
{
    if (forms::frmTools.ActiveContext != context) {
        activated();
    }
}

void MainWindow::makeMenus()
{
    auto* const tools = addToolBar(tr("Commands"));
    tools->setObjectName("tbr");
    tools->setMovable(false);
    tools->setIconSize({18, 18});
    tools->toggleViewAction()->setVisible(false);
    setContextMenuPolicy(Qt::NoContextMenu);
    menus_ = new MainMenus(*menuBar(), *tools, this);
    hintOver(*menuBar(), mdiTarnwick::MDIForm_MouseMove);
    hintOver(*tools, mdiTarnwick::tbr_MouseMove);
    for (QWidget* const bare :
         {ground_, static_cast<QWidget*>(listDivider_), static_cast<QWidget*>(timelineDivider_)}) {
        hintOver(*bare, mdiTarnwick::MDIForm_MouseMove);
    }
    for (const QKeySequence& key : {QKeySequence(Qt::Key_Menu), QKeySequence(Qt::SHIFT | Qt::Key_F10)}) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this] { popUpByKey(); });
    }
}

/// Moves over the widget and its own parts write that hint.
void MainWindow::hintOver(QWidget& widget, void (*hint)())
{
    QList<QWidget*> parts{&widget};
    if (&widget != ground_) { // on the ground stand the panels, which have hints of their own
        parts += widget.findChildren<QWidget*>();
    }
    for (QWidget* const part : parts) {
        part->setMouseTracking(true);
        part->installEventFilter(this);
        hints_[part] = hint;
    }
}

/// The menu that a right press would open, at the part that has the keyboard.
void MainWindow::popUpByKey()
{
    QWidget* const focus = focusWidget();
    if (focus == nullptr || QApplication::activePopupWidget() != nullptr) {
        return;
    }
    QPoint at = focus->rect().center();
    if (const auto* const list = qobject_cast<QAbstractItemView*>(focus);
        list != nullptr && list->currentIndex().isValid()) {
        at = list->visualRect(list->currentIndex()).center();
    }
    popUpPlace_ = focus->mapToGlobal(at);
    shell::popUpFor(toProgram(focus->objectName()));
    popUpPlace_.reset();
}

void MainWindow::bindHooks()
{
    mdiTarnwick::unload = [this] { close(); };
    new HelpDesk(this);
    frmNewProject::connectScreens();
    frmExportTimeline::connectScreens();
    frmAdvancedSaveOptions::connectScreens();
    frmProgressBar::connectScreens();
    frmProfileProperties::connectScreens();
    frmCapture::connectScreens();
    frmCaptureValues::connectScreens();
    frmCaptureOptions::connectScreens();
    frmPreferences::connectScreens();
    frmAddText::connectScreens();
    frmTakeSnap::connectScreens();
    frmKeyColor::connectScreens();
    frmStretchMode::connectScreens();
    mdiTarnwick::showAbout = [this] { about::show(this); };
    forms::mdiTarnwick.PopupMenu = [this](forms::PopUp which) {
        menus_->showState(); // what is enabled now, not at the last pass
        menus_->popUp(which)->popup(popUpPlace_.value_or(QCursor::pos()));
    };
}

void MainWindow::tellSize()
{
    constexpr std::int32_t kShareOfTimeline = 42; // of 100
    constexpr std::int32_t kLowest = 200;         // rows as high as their buttons' pictures; the preview needs the rest
    forms::mdiTarnwick.TimelineHeight = std::clamp(ground_->height() * kShareOfTimeline / 100, kLowest, 420);
    mdiTarnwick::MDIForm_Resize(ground_->width(), ground_->height());
}

void MainWindow::showPanels()
{
    constexpr int kGap = 3; // on each side, so that panels stand apart
    const auto& m = forms::mdiTarnwick;
    const auto place = [](PanelFrame& panel, const forms::Rectangle& r, bool isVisible) {
        const QRect inner = QRect(r.left, r.top, r.width, r.height).adjusted(kGap, kGap, -kGap, -kGap);
        if (isVisible && inner.isValid()) {
            panel.setGeometry(inner);
        }
        panel.setVisible(isVisible);
    };
    place(*mediaListPanel_, m.MediaListPlace, forms::frmMediaList.Visible);
    place(*previewPanel_, m.PreviewPlace, forms::frmPreview.Visible);
    place(*timelinePanel_, m.TimelinePlace, forms::frmTimeline.Visible);
    place(*toolsPanel_, m.ToolsPlace, forms::frmTools.Visible);
    for (const auto& [divider, told] :
         {std::pair{listDivider_, &m.ListDividerPlace.get()}, {timelineDivider_, &m.TimelineDividerPlace.get()}}) {
        divider->setGeometry(told->left, told->top, told->width, told->height);
        divider->setVisible(told->width > 0);
    }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ground_ && event->type() == QEvent::Resize) {
        tellSize();
    }
    if (event->type() == QEvent::KeyPress && qobject_cast<QAbstractItemView*>(watched) != nullptr
        && takeKeyFromList(static_cast<const QKeyEvent&>(*event))) {
        return true;
    }
    if (event->type() == QEvent::MouseMove) {
        const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
        const auto hint = hints_.find(watched);
        // A move that a panel did not want comes to the ground as well.
        if (hint != hints_.end() && (watched != ground_ || ground_->childAt(at) == nullptr)) {
            hint->second();
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showState()
{
    const auto& m = forms::mdiTarnwick;
    statusLine_->showState();
    const bool waits = m.MousePointer == 11;
    if (waits != (QApplication::overrideCursor() != nullptr)) {
        waits ? QApplication::setOverrideCursor(Qt::BusyCursor) : QApplication::restoreOverrideCursor();
    }
    mediaListPanel_->setCaption(translated(forms::frmMediaList.Caption.get()));
    showPanels();
    menus_->showState();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        menus_->refreshIcons();
        show::mark();
    }
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    showPass().runNow(); // ahead of the first painting
}

/// What the part that has the keyboard did not want.
void MainWindow::keyPressEvent(QKeyEvent* event)
{
    if (!takeKeyEvent(*event)) {
        QMainWindow::keyPressEvent(event);
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!mdiTarnwick::QueryUnload()) {
        event->ignore();
        return;
    }
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    takeDrop(*event->mimeData());
}

void MainWindow::takeDrop(const QMimeData& dropped)
{
    // The other program waits for its drop to end, and opening takes time.
    QTimer::singleShot(0, this, [paths = localFiles(dropped)] { moduleTarnwick::OpenDroppedFiles(paths); });
}
