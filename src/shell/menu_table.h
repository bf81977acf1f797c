#pragma once

// Every menu and toolbar entry, in the order in which it stands: its name, caption and key, when it is enabled, and
// what it runs. The screens build their menus from these tables; `EnableOrDisableMenuItems` walks them.
//
// An entry whose command is not built yet has no handler: it is neither enabled nor checked. Interface thread only.

#include "core/forms/mdiTarnwick.h"
#include "shell/command_tests.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace shell {

enum class MenuKind : std::uint8_t {
    kTop, // opens a menu of the menu bar, or a pop-up
    kEntry,
    kCheck,   // an entry that shows a check mark
    kChoice,  // one of several that stand together, of which one is chosen
    kSubMenu, // an entry that holds the sub-entries behind it
    kSubEntry,
    kRecent, // an entry that holds an array of paths
    kRule
};

/// Asked of a `CommandTests`; nullptr: always yes.
using CommandTest = bool CommandTests::*;

struct MenuRow {
    MenuKind kind;
    std::string_view name;     // empty for a rule without a name
    std::string_view caption;  // "&" stands before the access key
    std::string_view shortcut; // "Ctrl+I"; empty for none
    Menu* state;               // nullptr for a rule without a name
    void (*handler)() = nullptr;
    CommandTest test = nullptr;
    bool startsChecked = false;
    // Of an array of paths: its entries, and what picking one (from 0) runs.
    std::vector<Menu>* items = nullptr;
    void (*pick)(std::size_t index) = nullptr;

    /// Its command is built, or it holds entries of its own.
    bool hasCommand() const
    {
        return handler != nullptr || pick != nullptr || kind == MenuKind::kTop || kind == MenuKind::kSubMenu;
    }
};

/// The tops "File" to "Help", each with its entries behind it.
std::span<const MenuRow> menuBar();
/// One top, with its entries.
std::span<const MenuRow> mediaListContext();
std::span<const MenuRow> editContext();

/// The entry of that name in one of the three; nullptr when there is none.
const MenuRow* findMenu(std::string_view name);

/// The key that stands beside the caption: the row's own, a second one where it has none, in a pop-up that of the row
/// of the menu bar that does the same. Empty for none.
std::string_view shownKeyOf(const MenuRow& row);

struct ToolRow {
    std::string_view key;
    std::string_view toolTip;
    std::string_view picture; // its key in the image list
    forms::ToolButton* state;
    void (*handler)() = nullptr;
    CommandTest test = nullptr;
    bool opensGroup = false; // stands apart from the button before
    bool isView = false;     // one of the four of which one is down
};

/// In the order of the toolbar.
std::span<const ToolRow> toolBar();

} // namespace shell
