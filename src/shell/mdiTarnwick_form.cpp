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
#include "shell/context_keys.h"
#include "shell/frmPreferences_form.h"
#include "shell/frmTools_events.h"
#include "shell/frmTools_form.h"
#include "shell/help_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/menus_form.h"
#include "shell/panel_places.h"
#include "timeline/frmTimeline_form.h"
#include "tools/frmAddText_form.h"
#include "tools/frmKeyColor_form.h"
#include "tools/frmStretchMode_form.h"
#include "tools/frmTakeSnap_form.h"
#include "volume/frmVolume_form.h"
#include "windowing/cut_label.h"
#include "windowing/icons.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <QWhatsThis>
#include <algorithm>

MainWindow::MainWindow()
{
    setObjectName("mdiTarnwick");
    setWindowTitle("Quillmont");
    setWindowIcon(applicationIcon());
    setAcceptDrops(true);
    constexpr QSize kFrame(4, 40); // about what the desktop draws around a window
    resize(QSize(1280, 800).boundedTo(screen()->availableSize() - kFrame));
    setMinimumSize(760, 520);
    makePanels();
    makeMenus();
    makeStatusBar();
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
    hintOver(*ground_, mdiTarnwick::MDIForm_MouseMove);
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
    mdiTarnwick::enterWhatsThis = [] { QWhatsThis::enterWhatsThisMode(); };
    mdiTarnwick::showAbout = [this] {
        QMessageBox::about(this, tr("About Quillmont"),
                           tr("<b>Quillmont %1</b><p>A video editor for holidays, lectures and school projects.</p>"
                              "<p>Free software under the GNU General Public License, version 3 or later.</p>"
                              "<p>Built on FFmpeg, Qt, SDL2, FluidSynth, pugixml and libjpeg-turbo.</p>")
                               .arg(QApplication::applicationVersion()));
    };
    forms::mdiTarnwick.PopupMenu = [this](forms::PopUp which) {
        menus_->showState(); // what is enabled now, not at the last pass
        menus_->popUp(which)->popup(popUpPlace_.value_or(QCursor::pos()));
    };
}

void MainWindow::makeStatusBar()
{
    QStatusBar& bar = *statusBar();
    for (std::size_t i = 0; i < statusPanels_.size(); ++i) {
        statusPanels_[i] = i == 0 ? message_ = new CutLabel(&bar) : new QLabel(&bar);
        statusPanels_[i]->setObjectName(QString("sbr%1").arg(i + 1));
        statusPanels_[i]->setTextFormat(Qt::PlainText);
        statusPanels_[i]->setContentsMargins(6, 0, 6, 0);
    }
    statusPanels_[0]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const int timeWidth = fontMetrics().horizontalAdvance("00:00:00.000") + 16;
    progress_ = new QProgressBar(&bar);
    progress_->setObjectName("pbarMain");
    progress_->setFixedWidth(180);
    progress_->setMaximumHeight(16);
    progress_->setAccessibleName(tr("Progress"));
    progress_->setWhatsThis(tr("How far the task has come."));
    cancel_ = new QPushButton(tr("Cancel"), &bar);
    cancel_->setWhatsThis(tr("Ends the task after the file that is being read."));
    connect(cancel_, &QPushButton::clicked, this, [] { state::OpeningCancelled = true; });
    bar.addWidget(statusPanels_[0], 1);
    bar.addPermanentWidget(cancel_);
    bar.addPermanentWidget(progress_);
    for (std::size_t i = 1; i < statusPanels_.size(); ++i) {
        statusPanels_[i]->setMinimumWidth(i == 3 ? 2 * timeWidth : timeWidth);
        bar.addPermanentWidget(statusPanels_[i]);
    }
    statusPanels_[1]->setToolTip(tr("Position of the slider"));
    statusPanels_[2]->setToolTip(tr("Length of the timeline"));
    statusPanels_[3]->setToolTip(tr("Selected item"));
    statusPanels_[0]->setWhatsThis(tr("What the part under the pointer is for, or how far a task has come."));
    statusPanels_[1]->setWhatsThis(tr("The time at which the slider stands."));
    statusPanels_[2]->setWhatsThis(tr("The length of the film."));
    statusPanels_[3]->setWhatsThis(tr("When the selected item begins and ends."));
}

void MainWindow::tellSize()
{
    constexpr std::int32_t kShareOfTimeline = 42; // of 100
    forms::mdiTarnwick.TimelineHeight = std::clamp(ground_->height() * kShareOfTimeline / 100, 240, 420);
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
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ground_ && event->type() == QEvent::Resize) {
        tellSize();
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
    for (std::size_t i = 0; i < statusPanels_.size(); ++i) {
        const QString text = fromProgram(const_cast<StatusBar&>(m.sbr).Panel(static_cast<std::int32_t>(i) + 1).get());
        i == 0 ? message_->setWhole(text) : statusPanels_[i]->setText(text); // the others have their room
    }
    progress_->setVisible(m.pbarMain.Visible);
    progress_->setRange(m.pbarMain.Min(), std::max(m.pbarMain.Min() + 1, m.pbarMain.Max()));
    progress_->setValue(m.pbarMain.Value());
    cancel_->setVisible(m.pbarMain.Visible || (state::BusyOpening && QApplication::activeModalWidget() == nullptr));
    const bool waits = m.MousePointer == 11;
    if (waits != (QApplication::overrideCursor() != nullptr)) {
        waits ? QApplication::setOverrideCursor(Qt::BusyCursor) : QApplication::restoreOverrideCursor();
    }
    mediaListPanel_->setCaption(fromProgram(forms::frmMediaList.Caption.get()));
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
    std::vector<std::string> paths;
    for (const QUrl& url : dropped.urls()) {
        if (url.isLocalFile()) {
            paths.push_back(toProgram(url.toLocalFile()));
        }
    }
    // The other program waits for its drop to end, and opening takes time.
    QTimer::singleShot(0, this, [paths] { moduleTarnwick::OpenDroppedFiles(paths); });
}
