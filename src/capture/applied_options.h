#pragma once

// What the dialogue of capture options holds goes to the engine and the window. Interface thread only.

#include <cstdint>

namespace capture {

/// The devices, their compressors and the snaps; or the format with its profile and file besides.
enum class Options : std::uint8_t { kDevices, kAll };

/// True when the window runs with it. Where the engine refuses, the person is told, all of it is as it was before, and
/// the picture goes on. Raises what else the engine's calls raise.
bool applyOptions(Options options);

} // namespace capture
