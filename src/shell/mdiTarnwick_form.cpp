#include "shell/mdiTarnwick_form.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "media/frmMediaList_events.h"
#include "media/frmMediaList_form.h"
#include "media/media_menu.h"
#include "media/moduleTarnwick.h"
#include "timeline/frmTimeline_events.h"
#include "timeline/frmTimeline_form.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "windowing/icons.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

MainWindow::MainWindow()
{
    setObjectName("mdiTarnwick");
    setWindowTitle("Quillmont");
    setWindowIcon(applicationIcon());
    setAcceptDrops(true);
    resize(1280, 800);
    setMinimumSize(760, 520);
    makePanels();
    makeMenus();
    makeStatusBar();
    showPass().add(this, [this] { showState(); });
}

MainWindow::~MainWindow() { frmMediaList::Unload(); }

void MainWindow::makePanels()
{
    ground_ = new QWidget(this);
    ground_->installEventFilter(this);
    setCentralWidget(ground_);
    // The panels are loaded in this order.
    mediaList_ = new MediaListForm(nullptr);
    frmMediaList::Load();
    timeline_ = new TimelineForm(nullptr);
    frmTimeline::Load();
    mediaListPanel_ = new PanelFrame(mediaList_, ground_);
    mediaListPanel_->setClosable([] { frmMediaList::CloseFromWindowMenu(); });
    timelinePanel_ = new PanelFrame(timeline_, ground_);
    timelinePanel_->setCaption(tr("Timeline"));
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        for (PanelFrame* const panel : {mediaListPanel_, timelinePanel_}) {
            panel->setActive(now != nullptr && panel->isAncestorOf(now));
        }
    });
}

void MainWindow::makeMenus()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Open &File..."), QKeySequence(Qt::CTRL | Qt::Key_I), this,
                    [] { mdiTarnwick::mnuFileOpen_Click(); });
    file->addAction(tr("&Close File"), this, [] { mdiTarnwick::mnuFileClose_Click(); });
    file->addSeparator();
    recentFiles_ = file->addMenu(tr("&Recent Files"));
    file->addSeparator();
    file->addAction(tr("E&xit"), this, [this] { close(); });
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    viewSelectionSliders_ = view->addAction(tr("&Selection Sliders"), QKeySequence(Qt::Key_F5), this,
                                            [] { moduleTimeline::ToggleSelSliders(); });
    viewSelectionSliders_->setCheckable(true);
    QMenu* const tools = menuBar()->addMenu(tr("&Tools"));
    tools->addAction(tr("Zoom &In Timeline Scale"), QKeySequence(Qt::Key_F6), this,
                     [] { moduleScaleRenderer::ZoomIn(); });
    tools->addAction(tr("Zoom &Out Timeline Scale"), QKeySequence(Qt::Key_F7), this,
                     [] { moduleScaleRenderer::ZoomOut(); });
    QMenu* const window = menuBar()->addMenu(tr("&Window"));
    viewMediaList_ = window->addAction(tr("&Media List"), this, [](bool isOn) {
        forms::frmMediaList.Visible = isOn;
        forms::mdiTarnwick.mnuViewMediaList.Checked = isOn;
    });
    viewMediaList_->setCheckable(true);
}

void MainWindow::makeStatusBar()
{
    QStatusBar& bar = *statusBar();
    for (std::size_t i = 0; i < statusPanels_.size(); ++i) {
        statusPanels_[i] = new QLabel(&bar);
        statusPanels_[i]->setTextFormat(Qt::PlainText);
        statusPanels_[i]->setContentsMargins(6, 0, 6, 0);
    }
    statusPanels_[0]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const int timeWidth = fontMetrics().horizontalAdvance("00:00:00.000") + 16;
    progress_ = new QProgressBar(&bar);
    progress_->setFixedWidth(180);
    progress_->setMaximumHeight(16);
    progress_->setAccessibleName(tr("Progress"));
    cancel_ = new QPushButton(tr("Cancel"), &bar);
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
}

void MainWindow::placePanels()
{
    constexpr int kGap = 6;
    const int timelineHeight = std::clamp(ground_->height() * 2 / 5, 220, 420);
    const int top = ground_->height() - timelineHeight;
    timelinePanel_->setGeometry(kGap, top, ground_->width() - 2 * kGap, timelineHeight - kGap);
    mediaListPanel_->setGeometry(kGap, kGap, ground_->width() - 2 * kGap, top - 2 * kGap);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ground_ && event->type() == QEvent::Resize) {
        placePanels();
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showRecent()
{
    const auto& recent = forms::mdiTarnwick.mnuFileRF;
    bool differs = recentFiles_->actions().size() != static_cast<qsizetype>(recent.size());
    for (std::size_t i = 0; i < recent.size() && !differs; ++i) {
        differs = recentFiles_->actions()[static_cast<qsizetype>(i)]->data().toString()
                  != fromProgram(recent[i].Caption.get());
    }
    if (!differs) {
        return;
    }
    recentFiles_->clear();
    for (std::size_t i = 0; i < recent.size(); ++i) {
        const QString caption = fromProgram(recent[i].Caption.get());
        QString shown = caption;
        QAction* const action =
            recentFiles_->addAction(shown.replace("&", "&&"), this, [i] { mdiTarnwick::mnuFileRF_Click(i); });
        action->setData(caption);
        action->setEnabled(recent[i].Enabled);
    }
}

void MainWindow::showState()
{
    const auto& m = forms::mdiTarnwick;
    for (std::size_t i = 0; i < statusPanels_.size(); ++i) {
        const QString text = fromProgram(const_cast<StatusBar&>(m.sbr).Panel(static_cast<std::int32_t>(i) + 1).get());
        statusPanels_[i]->setText(text);
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
    mediaListPanel_->setVisible(forms::frmMediaList.Visible);
    viewMediaList_->setChecked(m.mnuViewMediaList.Checked);
    viewSelectionSliders_->setChecked(m.mnuViewSelectionSliders.Checked);
    showRecent();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        show::mark();
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (state::InSelectionUpdate || state::BusyOpening) {
        forms::mdiTarnwick.sbr.Panel(1) = "Quillmont is currently busy. Please wait until the current operation is "
                                          "completed and then close the application.";
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
