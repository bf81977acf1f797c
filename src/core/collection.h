#pragma once

// An ordered list counted from 1, as the program's lists of handles are.

#include "engine/runtime_error.h"

#include <cstdint>
#include <vector>

template <class T>
class Collection {
public:
    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(items_.size()); }
    void Add(T item) { items_.push_back(std::move(item)); }
    /// Raises error 9 for a place outside 1 to Count.
    const T& Item(std::int32_t place) const { return items_[checked(place)]; }
    T& Item(std::int32_t place) { return items_[checked(place)]; }
    /// Later items move up. Raises error 9.
    void Remove(std::int32_t place) { items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(checked(place))); }
    void Clear() noexcept { items_.clear(); }
    /// The first place of an item, 0 when it is not there.
    std::int32_t PlaceOf(const T& item) const
    {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (items_[i] == item) {
                return static_cast<std::int32_t>(i) + 1;
            }
        }
        return 0;
    }

    auto begin() const noexcept { return items_.begin(); }
    auto end() const noexcept { return items_.end(); }

private:
    std::size_t checked(std::int32_t place) const
    {
        if (place < 1 || place > Count()) {
            throw engine::RuntimeError(9, "Subscript out of range");
        }
        return static_cast<std::size_t>(place) - 1;
    }

    std::vector<T> items_;
};
