#pragma once

// What the help says of commands and windows: for each command of the menus and the toolbar a sentence, for the mode in
// which a click explains a control, and the page that tells more; for each window and part of one the page that F1, or
// the answer to a click, leads to.

#include "shell/menu_table.h"

#include <span>
#include <string_view>

namespace shell {

struct CommandHelp {
    std::string_view name;  // of the row of the menus, or the key of the button that has no such row
    std::string_view topic; // "page.htm#part"
    std::string_view text;  // one sentence or two
};

/// Of a row of the menus, a pop-up's by the row of the menu bar that does the same; nullptr when there is none.
const CommandHelp* helpOf(const MenuRow& row);
/// Of a button of the toolbar.
const CommandHelp* helpOf(const ToolRow& row);

struct FormTopic {
    std::string_view form; // the name of a dialogue, a panel or a part of one
    std::string_view topic;
};

std::span<const FormTopic> formTopics();
/// Empty for a form that the table does not know.
std::string_view topicOfForm(std::string_view form);

} // namespace shell
