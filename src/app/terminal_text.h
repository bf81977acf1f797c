#pragma once

// Texts of foreign origin on their way to a terminal, which takes orders from what it is shown.

#include <string>
#include <string_view>

namespace app {

/// What is no printable UTF-8 becomes \xNN, byte by byte: control characters and line ends, and what turns the
/// direction of writing. From 5,000 bytes on the middle is left out: beginning and end tell what the matter is.
std::string forTerminal(std::string_view text);

} // namespace app
