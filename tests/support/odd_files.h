// Test media that no encoder writes: made byte by byte, cut off, misnamed, or lying about themselves.
#pragma once

#include "support/manifest.h"

#include <filesystem>
#include <vector>

namespace testmedia {

// Writes them all into `folder`, where the encoder's files already stand (some are cut or copied), and tells them.
std::vector<MediaEntry> writeOddFiles(const std::filesystem::path& folder);

} // namespace testmedia
