#pragma once

// The tools panel's form: three tabs with actions, effects and history.

#include "windowing/list_model.h"
#include "windowing/tree_model.h"

#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>

class ToolsForm final : public QWidget {
public:
    explicit ToolsForm(QWidget* parent);

    QSize sizeHint() const override { return {230, 500}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeActions();
    void makeEffects();
    void makeHistory();
    void effectChosen();
    void showState();
    void showHistory();
    void refreshIcons();

    QTabBar* tabs_ = nullptr;
    QTreeView* actions_ = nullptr;
    TreeModel* actionModel_ = nullptr;
    QListView* effects_ = nullptr;
    ListModel* effectModel_ = nullptr;
    QPushButton* add_ = nullptr;
    QListWidget* history_ = nullptr;
    std::vector<std::string> shownHistory_;
    bool isShowing_ = false;
};
