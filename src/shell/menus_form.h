#pragma once

// Menus and toolbar of the main window, built from the tables of `menu_table.h`.

#include "shell/menu_table.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <vector>

/// Makes the toolkit's menus and buttons, and copies the program's state into them.
class MainMenus final : public QObject {
public:
    MainMenus(QMenuBar& bar, QToolBar& tools, QWidget* parent);

    void showState();
    void refreshIcons();
    QMenu* popUp(forms::PopUp which) const;

private:
    struct Entry {
        const shell::MenuRow* row;
        QAction* action;
    };
    struct Tool {
        const shell::ToolRow* row;
        QAction* action;
    };
    struct Recent {
        const shell::MenuRow* row;
        QMenu* menu;
    };

    void build(std::span<const shell::MenuRow> rows, QMenuBar* bar, QMenu* popUp);
    QAction* addEntry(const shell::MenuRow& row, QMenu& menu);
    void tellHighlights(QMenu& menu);
    static void setKeys(QAction& action, const shell::MenuRow& row);
    static QString captionOf(const shell::MenuRow& row, const QString& caption);
    void buildTools(QToolBar& tools);
    static void showRecent(const Recent& recent);

    std::vector<Entry> entries_;
    std::vector<Tool> tools_;
    std::vector<Recent> recents_;
    QMenu* mediaListContext_;
    QMenu* editContext_;
};
