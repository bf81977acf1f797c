#pragma once

// The list of the history: one row a step, undone ones faint and named so, the one at which the film stands in bold.
//
// A row is chosen by a click of the left button, or by a key that moves from one row to another, and by nothing else:
// rows also become the current one when the list gets the focus or is pressed by another button, and what is chosen
// takes steps back.

#include "core/forms/frmTools.h"

#include <QListWidget>
#include <functional>
#include <vector>

class HistoryList final : public QListWidget {
public:
    explicit HistoryList(QWidget* parent);

    /// The person has chosen that row, counted from 1. Called inside the event, before the list has done with it.
    std::function<void(int row)> chosen;

    /// Shows the rows; `selected` counts from 1, 0 for none. The present step is brought into view when it is another
    /// one.
    void showRows(const std::vector<forms::HistoryRow>& rows, int selected);
    /// The palette or the font is another one: all rows are dressed anew with the next showing.
    void refresh() { shown_.clear(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void dress(QListWidgetItem& item, const forms::HistoryRow& row, bool isPresent) const;
    void choose(int row);
    void showCurrent();
    void showPresent();

    std::vector<forms::HistoryRow> shown_;
    int shownWidth_ = 0;
    int present_ = -1;  // from 0: the last row in force, -1 none
    int selected_ = -1; // from 0, -1 none
};
