#include "shell/menus_form.h"

#include "hand/pointer_turn.h"
#include "shell/command_help.h"
#include "shell/key_table.h"
#include "shell/mdiTarnwick_events.h"
#include "windowing/help_pages.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/text.h"

#include <QActionGroup>
#include <QWidget>

using shell::MenuKind;
using shell::MenuRow;

namespace {

constexpr int kMostOfAPath = 80; // characters of the menus of recent files; a menu as wide as the screen helps nobody

/// What a command is for, for the mode in which a click explains it.
void explain(QAction& action, const shell::CommandHelp* help)
{
    if (help != nullptr) {
        action.setWhatsThis(help::answer(translated(help->text), fromProgram(help->topic)));
    }
}

} // namespace

MainMenus::MainMenus(QMenuBar& bar, QToolBar& tools, QWidget* parent)
    : QObject(parent), mediaListContext_(new QMenu(parent)), editContext_(new QMenu(parent))
{
    build(shell::menuBar(), &bar, nullptr);
    build(shell::mediaListContext(), nullptr, mediaListContext_);
    build(shell::editContext(), nullptr, editContext_);
    buildTools(tools);
    refreshIcons();
}

QMenu* MainMenus::popUp(forms::PopUp which) const
{
    return which == forms::PopUp::kMediaListContext ? mediaListContext_ : editContext_;
}

void MainMenus::build(std::span<const MenuRow> rows, QMenuBar* bar, QMenu* popUp)
{
    QMenu* top = popUp;
    QMenu* subMenu = nullptr;
    auto* const choices = new QActionGroup(this);
    for (const MenuRow& row : rows) {
        const QString caption = translated(row.caption);
        switch (row.kind) {
        case MenuKind::kTop:
            if (bar != nullptr) {
                top = bar->addMenu(caption);
                tellHighlights(*top);
            }
            break;
        case MenuKind::kRule:
            entries_.push_back({&row, top->addSeparator()});
            break;
        case MenuKind::kSubMenu:
            subMenu = top->addMenu(caption);
            entries_.push_back({&row, subMenu->menuAction()});
            explain(*subMenu->menuAction(), shell::helpOf(row));
            break;
        case MenuKind::kRecent:
            recents_.push_back({&row, top->addMenu(caption)});
            recents_.back().menu->setToolTipsVisible(true);
            entries_.push_back({&row, recents_.back().menu->menuAction()});
            explain(*recents_.back().menu->menuAction(), shell::helpOf(row));
            break;
        case MenuKind::kSubEntry:
            entries_.push_back({&row, addEntry(row, *subMenu)});
            break;
        case MenuKind::kChoice:
            entries_.push_back({&row, addEntry(row, *top)});
            choices->addAction(entries_.back().action);
            break;
        default:
            entries_.push_back({&row, addEntry(row, *top)});
            break;
        }
    }
}

QAction* MainMenus::addEntry(const MenuRow& row, QMenu& menu)
{
    QAction* const action = menu.addAction(captionOf(row, translated(row.caption)));
    action->setObjectName(fromProgram(row.name));
    action->setCheckable(row.kind == MenuKind::kCheck || row.kind == MenuKind::kChoice);
    setKeys(*action, row);
    explain(*action, shell::helpOf(row));
    connect(action, &QAction::triggered, this, [action, &row] {
        if (row.handler == nullptr) {
            return;
        }
        // The toolkit has turned the check over by itself: the program's state decides.
        if (row.kind == MenuKind::kCheck) {
            action->setChecked(row.state->Checked);
        }
        hand::behindTurn(row.handler);
    });
    return action;
}

/// A key of the panels is only written beside the caption: as a shortcut it would be taken from whoever types.
QString MainMenus::captionOf(const MenuRow& row, const QString& caption)
{
    const std::string_view key = shell::shownKeyOf(row);
    return shell::isPanelKey(key) ? caption + '\t' + QKeySequence(fromProgram(key)).toString(QKeySequence::NativeText)
                                  : caption;
}

/// In a pop-up the keys are shown, and run by the menu bar's own entry.
void MainMenus::setKeys(QAction& action, const MenuRow& row)
{
    QList<QKeySequence> keys;
    for (const std::string_view key : {shell::shownKeyOf(row), shell::secondKeyOf(row.name)}) {
        if (const QKeySequence sequence(fromProgram(key)); !shell::isPanelKey(key) && !keys.contains(sequence)) {
            keys.append(sequence);
        }
    }
    keys.removeAll(QKeySequence());
    action.setShortcuts(keys);
    action.setShortcutVisibleInContextMenu(true);
}

/// Undo and Redo say in the status bar what they are about, for as long as they are highlighted.
void MainMenus::tellHighlights(QMenu& menu)
{
    connect(&menu, &QMenu::hovered, this,
            [](const QAction* action) { mdiTarnwick::MenuHighlighted(toProgram(action->objectName())); });
    connect(&menu, &QMenu::aboutToHide, this, [] { mdiTarnwick::MenuHighlighted({}); });
}

void MainMenus::buildTools(QToolBar& tools)
{
    for (const shell::ToolRow& row : shell::toolBar()) {
        if (row.opensGroup) {
            tools.addSeparator();
        }
        QAction* const action = tools.addAction(translated(row.toolTip));
        action->setObjectName("tbr_" + fromProgram(row.key));
        const QString tip = row.toolTip.empty() ? tr("Help") : translated(row.toolTip);
        action->setText(tip);
        action->setToolTip(tip);
        explain(*action, shell::helpOf(row));
        action->setCheckable(row.isView);
        if (QWidget* const button = tools.widgetForAction(action)) {
            button->setAccessibleName(tip);
        }
        connect(action, &QAction::triggered, this, [action, &row] {
            if (row.isView) {
                action->setChecked(row.state->Pressed);
            }
            hand::behindTurn([&row] { mdiTarnwick::tbr_ButtonClick(row.key); });
        });
        tools_.push_back({&row, action});
    }
}

void MainMenus::refreshIcons()
{
    const QPalette palette = mediaListContext_->parentWidget()->palette();
    for (const Tool& tool : tools_) {
        tool.action->setIcon(programIcon(tool.row->picture, palette));
        // A menu entry shows the picture of the button that does the same.
        for (const Entry& entry : entries_) {
            if (entry.row->handler != nullptr && entry.row->handler == tool.row->handler
                && entry.row->kind == MenuKind::kEntry) {
                entry.action->setIcon(tool.action->icon());
            }
        }
    }
}

void MainMenus::showState()
{
    for (const Entry& entry : entries_) {
        if (entry.row->state == nullptr) {
            continue;
        }
        const Menu& state = *entry.row->state;
        entry.action->setVisible(state.Visible);
        entry.action->setEnabled(state.Enabled && entry.row->hasCommand());
        if (entry.action->isCheckable()) {
            entry.action->setChecked(state.Checked);
        }
        const QString caption = captionOf(*entry.row, translated(state.Caption.get()));
        if (!state.Caption.get().empty() && entry.action->text() != caption) {
            entry.action->setText(caption);
        }
    }
    for (const Tool& tool : tools_) {
        tool.action->setEnabled(tool.row->state->Enabled);
        if (tool.action->isCheckable()) {
            tool.action->setChecked(tool.row->state->Pressed);
        }
    }
    for (const Recent& recent : recents_) {
        showRecent(recent);
    }
}

void MainMenus::showRecent(const Recent& recent)
{
    const std::vector<Menu>& items = *recent.row->items;
    const auto shown = recent.menu->actions();
    bool differs = shown.size() != static_cast<qsizetype>(items.size());
    for (std::size_t i = 0; i < items.size() && !differs; ++i) {
        differs = shown[static_cast<qsizetype>(i)]->data().toString() != translatedWord(items[i].Caption.get())
                  || shown[static_cast<qsizetype>(i)]->isEnabled() != items[i].Enabled.get();
    }
    if (!differs) {
        return;
    }
    recent.menu->clear();
    const QFontMetrics metrics = recent.menu->fontMetrics();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const QString caption = translatedWord(items[i].Caption.get()); // a path, or that there is none
        QString text = metrics.elidedText(caption, Qt::ElideMiddle, metrics.averageCharWidth() * kMostOfAPath);
        const bool isCut = text != caption;
        QAction* const action = recent.menu->addAction(text.replace("&", "&&"));
        action->setToolTip(isCut ? caption : QString());
        action->setData(caption);
        action->setWhatsThis(recent.menu->menuAction()->whatsThis());
        action->setEnabled(items[i].Enabled && recent.row->pick != nullptr);
        connect(action, &QAction::triggered, recent.menu, [row = recent.row, i] {
            if (row->pick != nullptr) {
                hand::behindTurn([row, i] { row->pick(i); });
            }
        });
    }
}
