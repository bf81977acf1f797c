#pragma once

// An old file makes room for a new one of its name. Knows files and the system alone.

#include <string>

namespace disk {

/// Renames the file, in its folder, to a name that nobody bears: "film (old).avi", else "film (old 2).avi" and so on,
/// which it answers. Raises `Refused` (`whole_file.h`) where it cannot.
std::string setAside(const std::string& path);

/// Gives the name back, over whatever bears it now. False when it could not.
bool putBack(const std::string& aside, const std::string& path);

} // namespace disk
