#include "shell/help_form.h"

#include "shell/help_index_form.h"
#include "shell/sample_files_form.h"
#include "shell/tutorial.h"
#include "windowing/help_browser.h"
#include "windowing/help_pages.h"
#include "windowing/icons.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace {

const QString kWelcome = QStringLiteral("1_Welcome.htm");
constexpr int kPageRole = Qt::UserRole; // of a line: the page that it opens
constexpr int kSidePx = 250;

} // namespace

HelpForm::HelpForm() : QWidget(nullptr, Qt::Window)
{
    setObjectName("helpWindow");
    setAttribute(Qt::WA_QuitOnClose, false);
    page_ = new HelpBrowser(this);
    page_->deed = sample::run;
    side_ = makeSide();
    QToolBar* const bar = makeToolBar();
    halves_ = new QSplitter(Qt::Horizontal, this);
    halves_->addWidget(side_);
    halves_->addWidget(page_);
    halves_->setStretchFactor(1, 1);
    halves_->setSizes({kSidePx, 650});
    halves_->setChildrenCollapsible(false);
    hideTutorial_ = new QCheckBox(tr("Do not show Tutorial on startup"), this);
    hideTutorial_->setObjectName("chkDoNotShowTutorial");
    connect(hideTutorial_, &QCheckBox::clicked, this, [](bool hide) { mdiTarnwick::HideTutorialAtStart(hide); });
    auto* const foot = new QHBoxLayout;
    foot->setContentsMargins(10, 0, 10, 0);
    foot->addWidget(hideTutorial_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    column->addWidget(halves_, 1);
    column->addLayout(foot);
    makeKeys();
    refreshIcons();
    connect(page_, &QTextBrowser::historyChanged, this, [this] { pageShown(); });
    showPass().add(this, [this] {
        if (hideTutorial_->isVisible()) {
            hideTutorial_->setChecked(mdiTarnwick::IsTutorialHidden());
        }
    });
}

QAction* HelpForm::addTool(QToolBar& bar, const char* name, const char* picture, const QString& text,
                           const QList<QKeySequence>& keys, std::function<void()> run)
{
    QAction* const action = bar.addAction(text, this, std::move(run));
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setToolTip(text + " (" + keys.front().toString(QKeySequence::NativeText) + ")");
    if (QWidget* const button = bar.widgetForAction(action)) {
        button->setAccessibleName(text);
        button->setFocusPolicy(Qt::TabFocus);
    }
    pictures_.emplace_back(action, picture);
    return action;
}

QToolBar* HelpForm::makeToolBar()
{
    auto* const bar = new QToolBar(this);
    bar->setIconSize({18, 18});
    showsSide_ = addTool(*bar, "helpSide", "DETAIL", tr("Contents"), {Qt::Key_F9},
                         [this] { showSide(showsSide_->isChecked()); });
    showsSide_->setCheckable(true);
    showsSide_->setChecked(true);
    back_ = addTool(*bar, "helpBack", "HELP_BACK", tr("Back"), {Qt::ALT | Qt::Key_Left}, [this] { page_->backward(); });
    forward_ = addTool(*bar, "helpForward", "HELP_FORWARD", tr("Forward"), {Qt::ALT | Qt::Key_Right},
                       [this] { page_->forward(); });
    addTool(*bar, "helpHome", "HELP_HOME", tr("Welcome"), {Qt::ALT | Qt::Key_Home}, [this] { open(kWelcome); });
    bar->addSeparator();
    addTool(*bar, "helpLarger", "ZOOM_IN", tr("Larger text"), {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
            [this] { page_->zoomBy(1); });
    addTool(*bar, "helpSmaller", "ZOOM_OUT", tr("Smaller text"), {Qt::CTRL | Qt::Key_Minus},
            [this] { page_->zoomBy(-1); });
    back_->setEnabled(false);
    forward_->setEnabled(false);
    connect(page_, &QTextBrowser::backwardAvailable, back_, &QAction::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward_, &QAction::setEnabled);
    return bar;
}

QWidget* HelpForm::makeSide()
{
    auto* const side = new QWidget(this);
    words_ = new QLineEdit(side);
    words_->setObjectName("helpSearch");
    words_->setAccessibleName(tr("Search the help"));
    words_->setPlaceholderText(tr("Search (Ctrl+F)"));
    words_->setClearButtonEnabled(true);
    words_->installEventFilter(this);
    connect(words_, &QLineEdit::textChanged, this, [this] { search(); });
    connect(words_, &QLineEdit::returnPressed, this, [this] { openHit(); });
    hits_ = new QListWidget(side);
    hits_->setObjectName("helpHits");
    hits_->setAccessibleName(tr("Pages with these words"));
    hits_->setFrameShape(QFrame::NoFrame);
    hits_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    hits_->setTextElideMode(Qt::ElideRight);
    hits_->setSpacing(2);
    for (const auto signal : {&QListWidget::itemClicked, &QListWidget::itemActivated}) {
        connect(hits_, signal, this, [this] { openHit(); });
    }
    count_ = new QLabel(side);
    count_->setObjectName("helpCount");
    count_->setContentsMargins(4, 2, 4, 4);
    count_->hide();
    lists_ = new QStackedWidget(side);
    lists_->addWidget(makeTabs());
    lists_->addWidget(hits_);
    auto* const column = new QVBoxLayout(side);
    column->setContentsMargins(6, 6, 0, 6);
    column->addWidget(words_);
    column->addWidget(count_);
    column->addWidget(lists_, 1);
    return side;
}

QWidget* HelpForm::makeTabs()
{
    makeContents();
    index_ = new HelpIndex(this, [this](const QString& topic) { open(topic); });
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName("helpTabs");
    tabs_->setDocumentMode(true);
    tabs_->addTab(contents_, tr("&Contents"));
    tabs_->addTab(index_, tr("&Index"));
    tabs_->tabBar()->setAccessibleName(tr("Contents or index"));
    return tabs_;
}

void HelpForm::makeContents()
{
    contents_ = new QTreeWidget(this);
    contents_->setObjectName("helpContents");
    contents_->setAccessibleName(tr("Contents"));
    contents_->setHeaderHidden(true);
    contents_->setFrameShape(QFrame::NoFrame);
    contents_->setRootIsDecorated(false);
    contents_->setItemsExpandable(false);
    contents_->setIndentation(12);
    const QSize line(0, fontMetrics().height() + 6);
    QTreeWidgetItem* chapter = contents_->invisibleRootItem();
    for (const help::ContentsLine& entry : help::contents()) {
        if (entry.page.isEmpty()) {
            chapter = new QTreeWidgetItem(contents_, {entry.title});
            chapter->setSizeHint(0, line);
            chapter->setFlags(Qt::ItemIsEnabled);
            QFont bold = contents_->font();
            bold.setBold(true);
            chapter->setFont(0, bold);
        } else {
            auto* const item = new QTreeWidgetItem(chapter, {entry.title});
            item->setSizeHint(0, line);
            item->setData(0, kPageRole, entry.page);
        }
    }
    contents_->expandAll();
    for (const auto signal : {&QTreeWidget::itemClicked, &QTreeWidget::itemActivated}) {
        connect(contents_, signal, this, [this](const QTreeWidgetItem* item) {
            const QString page = item->data(0, kPageRole).toString();
            if (!page.isEmpty()) {
                open(page);
            }
        });
    }
}

void HelpForm::makeKeys()
{
    const auto bind = [this](const QKeySequence& key, std::function<void()> run) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, std::move(run));
    };
    bind(QKeySequence::Find, [this] {
        showSide(true);
        words_->setFocus(Qt::ShortcutFocusReason);
        words_->selectAll();
    });
    bind(Qt::Key_F3, [this] { page_->goToMark(true); });
    bind(Qt::SHIFT | Qt::Key_F3, [this] { page_->goToMark(false); });
    bind(Qt::CTRL | Qt::Key_0, [this] { page_->zoomBy(0); });
    bind(Qt::Key_F1, [this] { open(kWelcome); });
    bind(Qt::Key_Escape, [this] { escape(); });
}

/// First the search goes, then the window.
void HelpForm::escape()
{
    if (words_->text().isEmpty()) {
        close();
    } else {
        words_->clear();
    }
}

void HelpForm::refreshIcons()
{
    for (const auto& [action, picture] : pictures_) {
        action->setIcon(programIcon(picture, palette()));
    }
    words_->setPalette(emptyFieldWords(palette()));
}

void HelpForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        refreshIcons();
    }
}

bool HelpForm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == words_ && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        QWidget* const list = lists_->currentWidget() == hits_ ? hits_ : tabs_->currentWidget();
        list->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void HelpForm::showTopic(const QString& topic)
{
    open(topic);
    if (isMinimized()) {
        showNormal();
    }
    show();
    raise();
    activateWindow();
    page_->setFocus(Qt::OtherFocusReason); // its keys scroll the page
}

void HelpForm::setNarrow(bool isNarrow)
{
    widenedPx_ = 0; // it is placed anew
    showsSide_->setChecked(!isNarrow);
    side_->setVisible(!isNarrow);
}

/// A window without room for both grows to the left by what contents and search need, and gives it back.
void HelpForm::showSide(bool isShown)
{
    constexpr int kRoomForBothPx = 2 * kSidePx;
    const bool changes = isShown == side_->isHidden();
    showsSide_->setChecked(isShown);
    side_->setVisible(isShown);
    QRect place = geometry();
    if (changes && isShown && place.width() < kRoomForBothPx) {
        widenedPx_ = std::max(0, std::min(kSidePx, place.left() - screen()->availableGeometry().left()));
        place.setLeft(place.left() - widenedPx_);
        setGeometry(place);
        halves_->setSizes({kSidePx, place.width() - kSidePx});
    } else if (changes && !isShown) {
        place.setLeft(place.left() + std::exchange(widenedPx_, 0));
        setGeometry(place);
    }
}

void HelpForm::open(const QString& page) { page_->setSource(help::addressOf(page), QTextDocument::HtmlResource); }

void HelpForm::search()
{
    const QString words = words_->text().simplified();
    hits_->clear();
    for (const help::Hit& hit : help::pagesWith(words)) {
        auto* const item = new QListWidgetItem(hit.title + "\n" + hit.excerpt, hits_);
        item->setData(kPageRole, hit.page);
        item->setToolTip(hit.excerpt);
    }
    hits_->setCurrentRow(0);
    count_->setVisible(!words.isEmpty());
    count_->setText(hits_->count() == 0   ? tr("No page has these words.")
                    : hits_->count() == 1 ? tr("1 page")
                                          : tr("%1 pages").arg(hits_->count()));
    lists_->setCurrentWidget(words.isEmpty() ? static_cast<QWidget*>(tabs_) : hits_);
    if (words.isEmpty()) {
        page_->mark({});
    }
}

void HelpForm::openHit()
{
    if (const QListWidgetItem* const item = hits_->currentItem()) {
        open(item->data(kPageRole).toString());
        page_->mark(words_->text());
    }
}

void HelpForm::pageShown()
{
    const QString page = help::pageOf(page_->source());
    setWindowTitle(tr("%1 - Help").arg(page_->documentTitle()));
    contents_->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator item(contents_); *item != nullptr; ++item) {
        if ((*item)->data(0, kPageRole).toString() == page) {
            contents_->setCurrentItem(*item);
        }
    }
    hideTutorial_->setVisible(page == QString::fromUtf8(mdiTarnwick::kTutorialPage));
    hideTutorial_->setChecked(mdiTarnwick::IsTutorialHidden());
}
