#pragma once

// The program's list with columns as a model of the toolkit's views.

#include "core/controls.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>
#include <array>

/// What a drag of rows is known by. It carries none: the program knows which rows are selected.
inline constexpr const char* kRowsMimeType = "application/x-quillmont-rows";

class ListModel final : public QAbstractTableModel {
public:
    ListModel(const ListView& list, QStringList headings, QObject* parent);

    /// `icons` by the rows' icon number, from 1; a row that is missing shows the other one instead.
    void setIcons(std::vector<QIcon> icons, QIcon missing = {});
    /// Takes the rows over when they have changed; true when they had.
    bool showState();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override { return {kRowsMimeType}; }
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const ListView& list_;
    QStringList headings_;
    std::vector<QIcon> icons_;
    QIcon missing_;
    std::vector<ListItem> rows_;
    std::uint64_t generation_ = 0;
};
