#pragma once

// What the program does while a call of the engine waits for a disk that is slow to answer.

#include <functional>

namespace engine {

/// Asked about every 40 ms on the calling thread, the interface thread, while a call waits for a disk: it may let
/// events run, and these may call the engine. False gives the waiting up, and the call answers as if its time had run
/// out. Unset: the whole time is waited.
inline std::function<bool()> whileWaiting;

} // namespace engine
