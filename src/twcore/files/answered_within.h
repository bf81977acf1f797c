#pragma once

// Work that may be stuck in the kernel, on a disk that does not answer: it runs on a thread of its own, which may be
// left behind with what it owns.

#include "engine/waiting.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace twcore {

/// What `work` answers; nothing when it takes longer, when waiting was given up, or when it raised. `work` owns all
/// that it touches. Called on the interface thread.
template <class Answer, class Work>
std::optional<Answer> answeredWithin(std::chrono::steady_clock::duration longest, Work work)
{
    struct Shared {
        std::mutex mutex;
        std::condition_variable finished;
        bool done = false;
        std::optional<Answer> answer;
    };
    auto shared = std::make_shared<Shared>();
    const auto deadline = std::chrono::steady_clock::now() + longest;
    std::thread([shared, work = std::move(work)]() mutable {
        std::optional<Answer> answer;
        try {
            answer = work();
        } catch (const std::exception&) {
        }
        const std::lock_guard lock(shared->mutex);
        shared->answer = std::move(answer);
        shared->done = true;
        shared->finished.notify_one();
    }).detach();
    constexpr auto kSlice = std::chrono::milliseconds(40);
    std::unique_lock lock(shared->mutex);
    while (!shared->finished.wait_until(lock, std::min(deadline, std::chrono::steady_clock::now() + kSlice),
                                        [&] { return shared->done; })) {
        lock.unlock();
        if (std::chrono::steady_clock::now() >= deadline || (engine::whileWaiting && !engine::whileWaiting())) {
            return std::nullopt;
        }
        lock.lock();
    }
    return std::move(shared->answer);
}

} // namespace twcore
