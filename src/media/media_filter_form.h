#pragma once

// The field over the media list in which a person types what the names of the files shown are to hold.
//
// Rows are hidden in the views alone: the list keeps all of them, in their places. What the text does to the selection
// is the program's (`frmMediaList::txtFilter_Change`).

#include <QLineEdit>
#include <cstdint>
#include <functional>
#include <vector>

class QListView;
class QTreeView;

class MediaFilter final : public QLineEdit {
public:
    explicit MediaFilter(QWidget* parent);

    /// A key that leads to the rows.
    std::function<void()> left;

    /// Copies the text, and hides rows in both views; how many stay. Where the program has selected a row that the text
    /// hides, the text goes.
    int showState(QTreeView& details, QListView& icons);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    static void typed(const QString& text);
};
