#include "windowing/tree_model.h"

#include "windowing/language.h"

TreeModel::TreeModel(const TreeView& tree, std::function<QIcon(const std::string&)> iconOf, QObject* parent)
    : QAbstractItemModel(parent), tree_(tree), iconOf_(std::move(iconOf))
{}

bool TreeModel::showState()
{
    if (generation_ == tree_.generation()) {
        return false;
    }
    generation_ = tree_.generation();
    beginResetModel();
    root_ = tree_.Root();
    places_.clear();
    note(root_);
    endResetModel();
    return true;
}

void TreeModel::note(const TreeNode& node)
{
    for (std::size_t i = 0; i < node.Children.size(); ++i) {
        places_[&node.Children[i]] = {&node, static_cast<int>(i)};
        note(node.Children[i]);
    }
}

QModelIndex TreeModel::indexOf(const TreeNode& node) const
{
    if (&node == &root_) {
        return createIndex(0, 0, const_cast<TreeNode*>(&root_));
    }
    return createIndex(places_.at(&node).row, 0, const_cast<TreeNode*>(&node));
}

std::vector<std::int32_t> TreeModel::placesOf(const QModelIndex& index) const
{
    std::vector<std::int32_t> places;
    const auto* node = static_cast<const TreeNode*>(index.internalPointer());
    while (node != nullptr && node != &root_) {
        const Place place = places_.at(node);
        places.insert(places.begin(), place.row);
        node = place.parent;
    }
    return places;
}

QModelIndex TreeModel::indexOf(const std::vector<std::int32_t>& places) const
{
    const TreeNode* node = &root_;
    for (const std::int32_t place : places) {
        if (place < 0 || static_cast<std::size_t>(place) >= node->Children.size()) {
            return {};
        }
        node = &node->Children[static_cast<std::size_t>(place)];
    }
    return indexOf(*node);
}

void TreeModel::addExpanded(const TreeNode& node, std::vector<QModelIndex>& found) const
{
    if (node.Expanded) {
        found.push_back(indexOf(node));
    }
    for (const TreeNode& child : node.Children) {
        if (!child.Children.empty()) {
            addExpanded(child, found);
        }
    }
}

std::vector<QModelIndex> TreeModel::expanded() const
{
    std::vector<QModelIndex> found;
    addExpanded(root_, found);
    return found;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || row < 0 || row >= rowCount(parent)) {
        return {};
    }
    if (!parent.isValid()) {
        return createIndex(0, 0, const_cast<TreeNode*>(&root_));
    }
    const auto* const node = static_cast<const TreeNode*>(parent.internalPointer());
    return createIndex(row, 0, const_cast<TreeNode*>(&node->Children[static_cast<std::size_t>(row)]));
}

QModelIndex TreeModel::parent(const QModelIndex& index) const
{
    const auto* const node = static_cast<const TreeNode*>(index.internalPointer());
    if (!index.isValid() || node == &root_) {
        return {};
    }
    return indexOf(*places_.at(node).parent);
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) {
        return root_.Text.empty() ? 0 : 1;
    }
    return static_cast<int>(static_cast<const TreeNode*>(parent.internalPointer())->Children.size());
}

int TreeModel::columnCount(const QModelIndex&) const { return 1; }

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto& node = *static_cast<const TreeNode*>(index.internalPointer());
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        return translatedWord(node.Text);
    }
    return role == Qt::DecorationRole ? QVariant(iconOf_(node.Image)) : QVariant();
}
