#pragma once

// The pop-up menus by keyboard. Interface thread only.

#include <string_view>

namespace shell {

/// Pops up the menu that a right press on the control of that name ("lvwMediaList", "picVideo0", "picScale") would
/// open, without the press: nothing else is selected. Nothing happens on a locked row, and for a control without a
/// menu.
void popUpFor(std::string_view control);

} // namespace shell
