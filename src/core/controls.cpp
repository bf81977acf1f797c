#include "core/controls.h"

#include "engine/runtime_error.h"

namespace {

std::size_t indexOf(std::int32_t place, std::size_t count)
{
    constexpr std::int32_t kIndexOutOfBounds = 35600;
    if (place < 1 || static_cast<std::size_t>(place) > count) {
        throw engine::RuntimeError(kIndexOutOfBounds, "Index out of bounds");
    }
    return static_cast<std::size_t>(place) - 1;
}

} // namespace

const ListItem& ListView::Row(std::int32_t place) const { return rows_[indexOf(place, rows_.size())]; }

ListItem& ListView::Change(std::int32_t place)
{
    ++generation_;
    show::mark();
    return rows_[indexOf(place, rows_.size())];
}

void ListView::Add(ListItem row)
{
    rows_.push_back(std::move(row));
    ++generation_;
    show::mark();
}

void ListView::Remove(std::int32_t place)
{
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(indexOf(place, rows_.size())));
    SelectedItem = std::min<std::int32_t>(SelectedItem, Count());
    ++generation_;
    show::mark();
}

void ListView::Clear()
{
    rows_.clear();
    SelectedItem = 0;
    ++generation_;
    show::mark();
}

TreeNode& TreeView::Change()
{
    ++generation_;
    show::mark();
    return root_;
}

std::string chosenText(const ComboBox& box)
{
    const auto& list = box.List.get();
    const auto place = static_cast<std::size_t>(box.ListIndex.get());
    return place < list.size() ? list[place] : std::string();
}

bool chooseText(ComboBox& box, std::string_view text)
{
    const auto& list = box.List.get();
    const auto found = std::ranges::find(list, text);
    if (found == list.end()) {
        return false;
    }
    box.ListIndex = static_cast<std::int32_t>(found - list.begin());
    return true;
}
