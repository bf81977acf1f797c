#pragma once

// The controls of the screens, as plain state.
//
// Each stands under its own name in a form's struct (`core/forms/`). Setting a value clamps it where the control has a
// range and, when it differs, runs the control's change handler at once; drawing waits for the show pass. Places and
// sizes are logical pixels. A form copies this state into its widgets and writes back what the person did, through the
// same assignments.

#include "core/draw_list.h"
#include "core/show.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using show::Observed;
using show::Shown;

struct CheckBox {
    Observed<std::int16_t> Value{std::int16_t{0}}; // 0 or 1
    Shown<bool> Visible{true};
    Shown<bool> Enabled{true};
};

struct TextBox {
    Observed<std::string> Text;
    Shown<bool> Enabled{true};
    std::function<void()> SetFocus; // puts the caret there, with all of it selected; set by the screens
};

/// A picture that may be clicked. `Picture` is a key of the form's image list.
struct ImageBox {
    Shown<std::string> Picture;
    Shown<std::string> ToolTipText;
    Shown<std::int32_t> Left{0};
    Shown<bool> Visible{true};
};

/// A thin line or a shape that is only placed and shown.
struct Marker {
    Shown<std::int32_t> Left{0};
    Shown<std::int32_t> Width{1};
    Shown<bool> Visible{false};
};

struct Label {
    Shown<std::string> Caption;
    Shown<std::int32_t> Left{0};
    Shown<bool> Visible{true};
};

struct Button {
    Shown<std::string> Picture;
    Shown<std::string> ToolTipText;
    Shown<bool> Visible{true};
    Shown<bool> Enabled{true};
};

/// Minimum, maximum and a value between them. The maximum wins over a minimum above it, as the value is clamped last by
/// it.
class Range {
public:
    std::int32_t Min() const noexcept { return min_; }
    std::int32_t Max() const noexcept { return max_; }
    std::int32_t Value() const noexcept { return value_; }
    void SetMin(std::int32_t min) { set(min, max_, value_); }
    void SetMax(std::int32_t max) { set(min_, max, value_); }
    void SetValue(std::int32_t value) { set(min_, max_, value); }

    /// Runs at once when the value has become another one.
    std::function<void()> changed;

private:
    void set(std::int32_t min, std::int32_t max, std::int32_t value)
    {
        value = std::min(std::max(value, min), max);
        const bool moved = value != value_;
        if (moved || min != min_ || max != max_) {
            show::mark();
        }
        min_ = min;
        max_ = max;
        value_ = value;
        if (moved && changed) {
            changed();
        }
    }

    std::int32_t min_ = 0;
    std::int32_t max_ = 100;
    std::int32_t value_ = 0;
};

struct ScrollBar : Range {
    Shown<bool> Enabled{true};
};

struct Slider : Range {
    Shown<bool> Visible{true};
    Shown<bool> Enabled{true};
};

struct ProgressBar : Range {
    Shown<bool> Visible{false};
};

/// Ticks on the interface thread while it is enabled. The form drives it.
struct Timer {
    Shown<bool> Enabled{false};
    std::int32_t Interval = 0; // ms
    std::function<void()> tick;
};

/// A picture that is drawn by hand. The form tells its size and replays its drawing.
struct PictureBox {
    Shown<std::int32_t> ScaleWidth{0};
    Shown<std::int32_t> ScaleHeight{0};
    Shown<std::int32_t> Left{0};
    DrawList drawing;
};

struct Menu {
    Shown<std::string> Caption;
    Shown<bool> Enabled{true};
    Shown<bool> Checked{false};
    Shown<bool> Visible{true};
};

/// Panels counted from 1; some have a key besides.
class StatusBar {
public:
    explicit StatusBar(std::initializer_list<const char*> keys)
    {
        for (const char* const key : keys) {
            panels_.push_back({key, {}});
        }
    }

    Shown<std::string>& Panel(std::int32_t place) { return panels_.at(static_cast<std::size_t>(place) - 1).text; }
    Shown<std::string>& Panel(std::string_view key)
    {
        return std::ranges::find(panels_, key, &OnePanel::key)->text; // a key that is not there is a programmer's fault
    }
    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(panels_.size()); }

private:
    struct OnePanel {
        std::string key;
        Shown<std::string> text;
    };
    std::vector<OnePanel> panels_;
};

struct ListItem {
    std::string Text;
    std::array<std::string, 4> SubItems; // the second column on; sub-item 1 is SubItems[0]
    std::int16_t Icon = 0;               // 1-based place in the image lists
    bool Selected = false;
    bool Missing = false; // what it stands for has gone
};

/// A list with columns. Rows are counted from 1; changing one marks the screens.
class ListView {
public:
    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(rows_.size()); }
    /// Raises error 35600 for a row that does not exist.
    const ListItem& Row(std::int32_t place) const;
    /// The same, to be changed.
    ListItem& Change(std::int32_t place);
    void Add(ListItem row);
    void Remove(std::int32_t place);
    void Clear();

    /// Changes with every change of the rows, so that a form knows when to look.
    std::uint64_t generation() const noexcept { return generation_; }

    Shown<std::int32_t> SelectedItem{0};       // the row with the focus, 0 none
    Shown<std::int16_t> View{std::int16_t{3}}; // 0 large icons, 1 small icons, 2 list, 3 detail

private:
    std::vector<ListItem> rows_;
    std::uint64_t generation_ = 0;
};

/// A list from which one text is chosen.
struct ComboBox {
    Shown<std::vector<std::string>> List;
    Observed<std::int32_t> ListIndex{-1}; // counted from 0; -1: nothing is chosen
    Shown<bool> Visible{true};
    Shown<bool> Enabled{true};
};
/// The text that is chosen; empty: none.
std::string chosenText(const ComboBox& box);
/// Chooses it; false, and nothing is done, when the list does not hold it.
bool chooseText(ComboBox& box, std::string_view text);

struct TreeNode {
    std::string Text;
    std::string Image; // a key of the form's image list
    std::int32_t Tag = 0;
    bool Expanded = false;
    std::vector<TreeNode> Children;
};

/// A tree. `Root` has a text once the tree is made.
class TreeView {
public:
    const TreeNode& Root() const noexcept { return root_; }
    /// The same, to be changed.
    TreeNode& Change();
    std::uint64_t generation() const noexcept { return generation_; }

    /// Places from 0 below the root, level by level; empty: nothing is selected.
    Shown<std::vector<std::int32_t>> Selected;

private:
    TreeNode root_;
    std::uint64_t generation_ = 0;
};
