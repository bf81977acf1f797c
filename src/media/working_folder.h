#pragma once

// New files and the folder for them. They raise what the engine's calls raise.

#include <string>

namespace media {

/// A name without a folder, or with a part of a path, goes below the working folder; a whole path stays, and the empty
/// name.
std::string inWorkingFolder(const std::string& name);

/// The first of NAME.EXT, NAME1.EXT and so on in the working folder that is not there. A folder that keeps silent is
/// not asked again.
std::string freeNameInWorkingFolder(const std::string& name, const std::string& extension);

} // namespace media
