#pragma once

// The tools panel's form: three tabs with actions, effects and history.

#include "shell/history_list_form.h"
#include "windowing/list_model.h"
#include "windowing/tree_model.h"

#include <QListView>
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
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeActions();
    void runAction(const QModelIndex& index);
    bool actionKey(const QKeyEvent& event);
    void showActions();
    void makeEffects();
    void makeHistory();
    void effectChosen();
    void showState();
    void refreshIcons();

    QTabBar* tabs_ = nullptr;
    QTreeView* actions_ = nullptr;
    TreeModel* actionModel_ = nullptr;
    QListView* effects_ = nullptr;
    ListModel* effectModel_ = nullptr;
    QPushButton* add_ = nullptr;
    HistoryList* history_ = nullptr;
    bool isShowing_ = false;
};
