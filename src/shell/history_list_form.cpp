#include "shell/history_list_form.h"

#include "core/colours.h"
#include "shell/frmTools_events.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/scheme.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace {

bool isUndone(const forms::HistoryRow& row) { return row.ForeColor == colours::kButtonFace; }

} // namespace

HistoryList::HistoryList(QWidget* parent) : QListWidget(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { choose(row(item)); });
}

void HistoryList::keyPressEvent(QKeyEvent* event)
{
    showCurrent(); // the focus has made the first row the current one where there was none
    const int before = currentRow();
    QListWidget::keyPressEvent(event);
    if (currentRow() != before && currentRow() >= 0) {
        choose(currentRow());
    }
}

/// The next key may be here before the rows are shown anew, and goes on from this one.
void HistoryList::choose(int row)
{
    selected_ = row;
    chosen(row + 1);
}

void HistoryList::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        QListWidget::mousePressEvent(event);
    }
}

void HistoryList::mouseReleaseEvent(QMouseEvent* event)
{
    QListWidget::mouseReleaseEvent(event);
    showCurrent(); // a press that became no click has chosen nothing
}

void HistoryList::showEvent(QShowEvent* event)
{
    QListWidget::showEvent(event);
    showPresent();
}

void HistoryList::dress(QListWidgetItem& item, const forms::HistoryRow& row, bool isPresent) const
{
    constexpr int kAroundText = 40; // the picture and the margins
    const QString caption = translated(row.Text);
    const QString mark = isUndone(row) ? tr("(undone)") : QString();
    const QString line = mark.isEmpty() ? caption : caption + "  " + mark;
    const int room = width() - style()->pixelMetric(QStyle::PM_ScrollBarExtent) - 2 * frameWidth() - kAroundText;
    const bool fits = fontMetrics().horizontalAdvance(line) <= room;
    item.setText(fits || mark.isEmpty() ? line : caption + "\n" + mark);
    item.setIcon(programIcon(frmTools::pictureOf(row.Picture), palette()));
    item.setForeground(mark.isEmpty() ? palette().color(QPalette::Text) : quietText(palette()));
    QFont font = this->font();
    font.setBold(isPresent);
    item.setFont(font);
    item.setToolTip(isPresent ? tr("%1: the film stands here").arg(caption) : line);
    item.setData(Qt::AccessibleTextRole, item.toolTip());
}

void HistoryList::showRows(const std::vector<forms::HistoryRow>& rows, int selected)
{
    selected_ = selected - 1;
    if (rows != shown_ || width() != shownWidth_) {
        const auto inForce = std::ranges::count_if(rows, [](const auto& row) { return !isUndone(row); });
        present_ = static_cast<int>(inForce) - 1; // undone rows stand at the end
        shown_ = rows;
        shownWidth_ = width();
        while (count() > static_cast<int>(rows.size())) {
            delete takeItem(count() - 1);
        }
        for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
            if (i == count()) {
                addItem(QString());
            }
            dress(*item(i), rows[static_cast<std::size_t>(i)], i == present_);
        }
        showPresent();
    }
    showCurrent();
}

/// Keys go on from the row that was chosen last, else from the present step.
void HistoryList::showCurrent()
{
    const int wanted = selected_ >= 0 ? selected_ : present_;
    const auto command = selected_ >= 0 ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Clear;
    const bool isSelected = wanted >= 0 && wanted < count() && item(wanted)->isSelected();
    if (currentRow() != wanted || isSelected != (selected_ >= 0)) {
        setCurrentRow(wanted, command);
    }
}

void HistoryList::showPresent()
{
    if (isVisible() && count() > 0) {
        executeDelayedItemsLayout();
        scrollToItem(item(std::max(present_, 0)));
    }
}
