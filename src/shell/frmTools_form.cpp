#include "shell/frmTools_form.h"

#include "core/forms/frmTools.h"
#include "hand/pointer_turn.h"
#include "shell/frmTools_events.h"
#include "windowing/icons.h"
#include "windowing/picture_widget.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

namespace {

forms::FrmTools& form() { return forms::frmTools; }

constexpr int kTabHeight = 30;
constexpr int kAddHeight = 40;

} // namespace

ToolsForm::ToolsForm(QWidget* parent) : QWidget(parent)
{
    setObjectName("frmTools");
    setWhatsThis(tr("The tools: actions that make sense now, effects, and the history of what you did."));
    tabs_ = new QTabBar(this);
    tabs_->setObjectName("tbsTools");
    tabs_->setExpanding(true);
    tabs_->setDrawBase(false);
    tabs_->setAccessibleName(tr("Tools"));
    tabs_->setWhatsThis(tr("Actions that make sense now, effects, and the history of what you did."));
    for (const QString& caption : {tr("Actions"), tr("Effects"), tr("History")}) {
        tabs_->addTab(caption);
    }
    for (QWidget* const bare : {static_cast<QWidget*>(this), static_cast<QWidget*>(tabs_)}) {
        bare->setMouseTracking(true);
    }
    tabs_->installEventFilter(this);
    connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) {
        if (!isShowing_) {
            frmTools::tbsTools_Click(static_cast<std::int16_t>(tab + 1));
        }
    });
    makeActions();
    makeEffects();
    makeHistory();
    showPass().add(this, [this] { showState(); });
}

void ToolsForm::makeActions()
{
    actions_ = new QTreeView(this);
    actions_->setObjectName("tvwActions");
    actions_->setAccessibleName(tr("Actions"));
    actions_->setWhatsThis(tr("What can be done now in the panel that you work in. Click an action to run it."));
    actions_->setHeaderHidden(true);
    actions_->setRootIsDecorated(false);
    actions_->setUniformRowHeights(true);
    actions_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    actions_->setFrameShape(QFrame::NoFrame);
    actionModel_ = new TreeModel(
        form().tvwActions, [this](const std::string& key) { return programIcon(frmTools::pictureOf(key), palette()); },
        this);
    actions_->setModel(actionModel_);
    actions_->viewport()->setMouseTracking(true);
    actions_->viewport()->installEventFilter(this);
    actions_->installEventFilter(this);
    connect(actions_, &QTreeView::clicked, this, [this](const QModelIndex& index) { runAction(index); });
}

void ToolsForm::runAction(const QModelIndex& index)
{
    // The list may be made anew by what the action does.
    const auto places = actionModel_->placesOf(index);
    QMetaObject::invokeMethod(
        this, [places] { hand::behindTurn([places] { frmTools::tvwActions_NodeClick(places); }); },
        Qt::QueuedConnection);
}

/// Enter and Space run the current action, as a click does. True when the key was one of them.
bool ToolsForm::actionKey(const QKeyEvent& event)
{
    const int key = programKey(event.key());
    const QModelIndex current = actions_->currentIndex();
    if ((key != 13 && key != 32) || !current.isValid()) {
        return false;
    }
    if (!event.isAutoRepeat()) {
        frmTools::tvwActions_MouseDown(programButton(Qt::LeftButton));
        runAction(current);
    }
    return true;
}

/// The keyboard stays at the action at which it was. When that has gone it is at none: what has come to its place is
/// another one, and a second Enter must not run that.
void ToolsForm::showActions()
{
    const QVariant action = actions_->currentIndex().data();
    if (!actionModel_->showState()) {
        return;
    }
    // The program's root is no node of the list.
    const QModelIndex root = actionModel_->indexOf(std::vector<std::int32_t>{});
    actions_->setRootIndex(root);
    for (int row = 0; actions_->hasFocus() && action.isValid() && row < actionModel_->rowCount(root); ++row) {
        const QModelIndex index = actionModel_->index(row, 0, root);
        if (index.data() == action) {
            actions_->setCurrentIndex(index);
        }
    }
}

void ToolsForm::makeEffects()
{
    effectModel_ = new ListModel(form().lvwEffects, {tr("Effect")}, this);
    effects_ = new QListView(this);
    effects_->setObjectName("lvwEffects");
    effects_->setAccessibleName(tr("Effects"));
    effects_->setWhatsThis(tr("The effects. A double click adds one; it can also be dragged onto the row of effects."));
    effects_->setModel(effectModel_);
    effects_->setFrameShape(QFrame::NoFrame);
    effects_->setIconSize({24, 24});
    effects_->setSpacing(2);
    effects_->setDragEnabled(true);
    effects_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    effects_->viewport()->setMouseTracking(true);
    effects_->viewport()->installEventFilter(this);
    connect(effects_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { effectChosen(); });
    connect(effects_, &QListView::doubleClicked, this, [] { frmTools::lvwEffects_DblClick(); });
    add_ = new QPushButton(tr("&Add to Timeline"), this);
    add_->setObjectName("cmdAdd");
    add_->setWhatsThis(tr("Adds the selected effect, at the slider or over the range."));
    add_->setMouseTracking(true);
    add_->installEventFilter(this);
    connect(add_, &QPushButton::clicked, this, [] { frmTools::cmdAdd_Click(); });
}

void ToolsForm::effectChosen()
{
    if (isShowing_) {
        return;
    }
    ListView& list = form().lvwEffects;
    const QModelIndex current = effects_->currentIndex();
    for (std::int32_t i = 1; i <= list.Count(); ++i) {
        list.Change(i).Selected = current.isValid() && current.row() == i - 1;
    }
    list.SelectedItem = current.isValid() ? current.row() + 1 : 0;
}

void ToolsForm::makeHistory()
{
    history_ = new HistoryList(this);
    history_->setObjectName("lvwHistory");
    history_->setAccessibleName(tr("History"));
    history_->setWhatsThis(
        tr("The steps that you made. Click one to take it and all later ones back, or an undone one to "
           "make it again."));
    history_->setFrameShape(QFrame::NoFrame);
    history_->viewport()->setMouseTracking(true);
    history_->viewport()->installEventFilter(this);
    history_->chosen = [this](int row) {
        form().lvwHistorySelected = row; // at once: a showing ahead of the step leaves the list at that row
        QMetaObject::invokeMethod(
            this,
            [row] {
                hand::behindTurn([row] {
                    form().lvwHistorySelected = row;
                    frmTools::lvwHistory_Click();
                });
            },
            Qt::QueuedConnection);
    };
}

void ToolsForm::mouseMoveEvent(QMouseEvent*) { frmTools::Form_MouseMove(); }

void ToolsForm::resizeEvent(QResizeEvent*)
{
    const int below = std::max(10, height() - kTabHeight);
    tabs_->setGeometry(0, 0, width(), kTabHeight);
    actions_->setGeometry(0, kTabHeight, width(), below);
    history_->setGeometry(0, kTabHeight, width(), below);
    effects_->setGeometry(0, kTabHeight, width(), std::max(10, below - kAddHeight));
    add_->setGeometry(8, height() - kAddHeight + 6, width() - 16, kAddHeight - 12);
}

void ToolsForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && history_ != nullptr) {
        refreshIcons();
        show::mark();
    }
}

void ToolsForm::refreshIcons()
{
    std::vector<QIcon> icons;
    for (const char* const key : {"FADE", "PIXELATE", "BLUR", "WAVE", "EMBOSS", "ENGRAVE"}) {
        icons.push_back(programIcon(key, palette()));
    }
    effectModel_->setIcons(std::move(icons));
    history_->refresh();
}

bool ToolsForm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == actions_ && event->type() == QEvent::KeyPress) {
        return actionKey(static_cast<const QKeyEvent&>(*event));
    }
    if (event->type() == QEvent::MouseMove) {
        if (watched == actions_->viewport()) {
            frmTools::tvwActions_MouseMove();
        } else if (watched == effects_->viewport()) {
            frmTools::lvwEffects_MouseMove();
        } else if (watched == history_->viewport()) {
            frmTools::lvwHistory_MouseMove();
        } else if (watched == tabs_ || watched == add_) {
            frmTools::Form_MouseMove();
        }
    } else if (event->type() == QEvent::MouseButtonPress && watched == actions_->viewport()) {
        frmTools::tvwActions_MouseDown(programButton(static_cast<QMouseEvent*>(event)->button()));
    }
    return QWidget::eventFilter(watched, event);
}

void ToolsForm::showState()
{
    isShowing_ = true;
    const std::int16_t tab = form().tbsTools;
    tabs_->setCurrentIndex(tab - 1);
    actions_->setVisible(tab == 1);
    effects_->setVisible(tab == 2);
    add_->setVisible(tab == 2);
    history_->setVisible(tab == 3);
    showActions();
    if (effectModel_->showState()) {
        refreshIcons();
    }
    const QModelIndex effect = effectModel_->index(form().lvwEffects.SelectedItem - 1, 0);
    if (effect.isValid() && effect != effects_->currentIndex()) {
        effects_->setCurrentIndex(effect);
    }
    add_->setEnabled(form().cmdAdd.Enabled);
    history_->showRows(form().lvwHistory, form().lvwHistorySelected);
    isShowing_ = false;
}
