#pragma once

// The list of works that were set aside, of which one can be brought back.

#include <optional>
#include <string>
#include <vector>

namespace journal {

/// Modal, over the main window. Nothing when none is wanted. For `journal::chooseLeftover`.
std::optional<std::size_t> showLeftovers(const std::vector<std::string>& descriptions);

} // namespace journal
