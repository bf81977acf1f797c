#pragma once

// Whether files can be made in a folder. Knows files and the system alone.

#include <string>

namespace disk {

/// Why not, as sentences for people; empty when they can. Nothing stays behind.
std::string troubleWithFolder(const std::string& folder);

} // namespace disk
