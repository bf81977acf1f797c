#include "windowing/list_model.h"

#include "windowing/language.h"
#include "windowing/text.h"

#include <QMimeData>

ListModel::ListModel(const ListView& list, QStringList headings, QObject* parent)
    : QAbstractTableModel(parent), list_(list), headings_(std::move(headings))
{}

void ListModel::setIcons(std::vector<QIcon> icons, QIcon missing)
{
    icons_ = std::move(icons);
    missing_ = std::move(missing);
    if (!rows_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
    }
}

bool ListModel::showState()
{
    if (generation_ == list_.generation()) {
        return false;
    }
    generation_ = list_.generation();
    std::vector<ListItem> rows;
    for (std::int32_t i = 1; i <= list_.Count(); ++i) {
        rows.push_back(list_.Row(i));
    }
    if (rows.size() == rows_.size()) {
        rows_ = std::move(rows);
        if (!rows_.empty()) {
            emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        }
        return true;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    return true;
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    const ListItem& row = rows_[static_cast<std::size_t>(index.row())];
    const auto column = static_cast<std::size_t>(index.column());
    if (row.Missing && column == 0 && (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole)) {
        return tr("%1 is missing from the disk").arg(fromProgram(row.Text));
    }
    if (row.Missing && column == 0 && role == Qt::DecorationRole) {
        return missing_;
    }
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        return column == 0 ? translatedWord(row.Text) : translated(row.SubItems[column - 1]);
    }
    const auto icon = static_cast<std::size_t>(row.Icon);
    if (role == Qt::DecorationRole && column == 0 && icon >= 1 && icon <= icons_.size()) {
        return icons_[icon - 1];
    }
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

QMimeData* ListModel::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty()) {
        return nullptr;
    }
    auto* const rows = new QMimeData;
    rows->setData(kRowsMimeType, {});
    return rows;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return headings_.value(section);
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}
