#pragma once

// What the program shows is its own state, kept in plain structs; a form copies that state into its widgets.
//
// Changing a value that stands on a screen marks the screens. The windowing layer is told of the first mark and
// answers with one show pass at the next turn of the event loop, however many values change until then. Showing is
// idempotent, and nothing in the logic ever reads a widget. Interface thread only.

#include <functional>

namespace show {

/// Called at the first mark since the last pass. Set by the windowing layer; without one, marks only add up.
inline std::function<void()> wanted;

/// Whether something has changed since the last pass.
inline bool marked = false;

inline void mark()
{
    if (!marked) {
        marked = true;
        if (wanted) {
            wanted();
        }
    }
}

/// A value that stands on a screen: assigning another one marks the screens.
template <class T>
class Shown {
public:
    Shown() = default;
    Shown(T value) : value_(std::move(value)) {} // NOLINT: a value becomes a shown one without a word
    Shown(const Shown&) = default;
    Shown& operator=(const Shown& other) { return *this = other.value_; }
    Shown& operator=(T value)
    {
        if (!(value == value_)) {
            value_ = std::move(value);
            mark();
        }
        return *this;
    }

    operator const T&() const noexcept { return value_; } // NOLINT
    const T& get() const noexcept { return value_; }

private:
    T value_{};
};

/// A shown value with a change handler, which runs at once when another value is assigned.
template <class T>
class Observed {
public:
    Observed() = default;
    Observed(T value) : value_(std::move(value)) {} // NOLINT
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed& other) { return *this = other.value_; }
    Observed& operator=(T value)
    {
        if (!(value == value_)) {
            value_ = std::move(value);
            mark();
            if (changed) {
                changed();
            }
        }
        return *this;
    }

    operator const T&() const noexcept { return value_; } // NOLINT
    const T& get() const noexcept { return value_; }

    /// Set by the room that owns the control's behaviour.
    std::function<void()> changed;

private:
    T value_{};
};

} // namespace show
