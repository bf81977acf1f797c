#pragma once

// The program's tree as a model of the toolkit's views.

#include "core/controls.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <functional>
#include <unordered_map>

class TreeModel final : public QAbstractItemModel {
public:
    TreeModel(const TreeView& tree, std::function<QIcon(const std::string&)> iconOf, QObject* parent);

    /// Takes the tree over when it has changed; true when it had.
    bool showState();

    /// Places from 0 below the root, level by level.
    std::vector<std::int32_t> placesOf(const QModelIndex& index) const;
    QModelIndex indexOf(const std::vector<std::int32_t>& places) const;
    /// The nodes that stand open.
    std::vector<QModelIndex> expanded() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Place {
        const TreeNode* parent;
        int row;
    };

    void note(const TreeNode& node);
    QModelIndex indexOf(const TreeNode& node) const;
    void addExpanded(const TreeNode& node, std::vector<QModelIndex>& found) const;

    const TreeView& tree_;
    std::function<QIcon(const std::string&)> iconOf_;
    std::uint64_t generation_ = 0;
    TreeNode root_; // what is shown; the program's own may change at any time
    std::unordered_map<const TreeNode*, Place> places_;
};
