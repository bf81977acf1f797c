#pragma once

// What the engine offers by name: compressors and profiles.

#include <string>
#include <vector>

namespace app {

std::vector<std::string> videoCompressorNames();
std::vector<std::string> audioCompressorNames();

/// Print the names, one a line.
void listCompressors();
void listProfiles();

} // namespace app
