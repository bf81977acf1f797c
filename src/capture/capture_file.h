#pragma once

// The place of a recording. Interface thread only. Raises what the engine's calls raise.

#include <string>

namespace capture {

/// The whole path: the one that was given, else one in the working folder.
std::string fileToCapture();

/// Whether a recording may begin there; an old file has made room by then, to which the person has agreed. If not, the
/// person knows why.
bool isPlaceFree(const std::string& path);

} // namespace capture
