#pragma once

// What the buttons of the toolbar are for, in a sentence each, for the mode in which a click explains a control.

#include <string_view>

namespace shell {

/// By the button's key; empty for an unknown one.
std::string_view whatsThisOf(std::string_view key);

} // namespace shell
