#pragma once

// Work that may be stuck in the kernel, on a disk that does not answer: it runs on a thread of its own, which may be
// left behind with what it owns.

#include "engine/waiting.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace twcore {

/// Work under way, begun with the object. It may be waited for once, on the interface thread, or left behind.
template <class Answer>
class UnderWay {
public:
    /// `work` owns all that it touches.
    template <class Work>
    explicit UnderWay(Work work) : shared_(std::make_shared<Shared>())
    {
        std::thread([shared = shared_, work = std::move(work)]() mutable {
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
    }

    /// What it answers; nothing when it takes longer, when waiting was given up, or when it raised.
    std::optional<Answer> within(std::chrono::steady_clock::duration longest)
    {
        constexpr auto kSlice = std::chrono::milliseconds(40);
        const auto deadline = std::chrono::steady_clock::now() + longest;
        std::unique_lock lock(shared_->mutex);
        while (!shared_->finished.wait_until(lock, std::min(deadline, std::chrono::steady_clock::now() + kSlice),
                                             [&] { return shared_->done; })) {
            lock.unlock();
            if (std::chrono::steady_clock::now() >= deadline || (engine::whileWaiting && !engine::whileWaiting())) {
                return std::nullopt;
            }
            lock.lock();
        }
        return std::move(shared_->answer);
    }

private:
    struct Shared {
        std::mutex mutex;
        std::condition_variable finished;
        bool done = false;
        std::optional<Answer> answer;
    };
    std::shared_ptr<Shared> shared_;
};

/// The same at once.
template <class Answer, class Work>
std::optional<Answer> answeredWithin(std::chrono::steady_clock::duration longest, Work work)
{
    return UnderWay<Answer>(std::move(work)).within(longest);
}

} // namespace twcore
