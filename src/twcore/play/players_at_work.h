#pragma once

// When a player worked last, so that who works in the background lets it have the machine.

#include <atomic>
#include <chrono>

namespace twcore {

inline std::atomic<std::chrono::steady_clock::rep> playersWorkedAt = 0;

/// Any thread of a player, for each picture and each piece of sound.
inline void notePlayerWork() noexcept
{
    playersWorkedAt.store(std::chrono::steady_clock::now().time_since_epoch().count(), std::memory_order_relaxed);
}

/// Any thread.
inline bool hasPlayerWorked(std::chrono::steady_clock::duration within) noexcept
{
    const std::chrono::steady_clock::duration at(playersWorkedAt.load(std::memory_order_relaxed));
    return at.count() != 0 && std::chrono::steady_clock::now().time_since_epoch() - at < within;
}

} // namespace twcore
