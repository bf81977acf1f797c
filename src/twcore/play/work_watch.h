#pragma once

// What a player's thread is working on, and whether that is still wanted. Work for an old wish is first asked to pause
// between two pictures; what does not come through in a while hangs in a file, and is told to give up with it.
//
// Everything but `flag` is used under the owner's lock.

#include <atomic>
#include <chrono>
#include <cstdint>

namespace twcore {

class WorkWatch {
public:
    using Clock = std::chrono::steady_clock;

    /// For readers: set while work is to be given up.
    const std::atomic<bool>* flag() const noexcept { return &givenUp_; }

    void begin(std::uint64_t wish) noexcept
    {
        isBusy_ = true;
        isAsked_ = false;
        wish_ = wish;
        since_ = Clock::now();
    }
    /// Whether the work was given up, so that neither its result nor what it read from is worth anything.
    bool end() noexcept
    {
        isBusy_ = false;
        return closed_ || givenUp_.exchange(false);
    }
    /// The work has been asked to pause: however long it took before, it is given time for that.
    void ask() noexcept
    {
        if (isBusy_ && !isAsked_) {
            isAsked_ = true;
            since_ = Clock::now();
        }
    }
    /// Gives the work up when it is for another wish and has taken its time.
    void hurry(std::uint64_t wish) noexcept
    {
        if (isBusy_ && wish_ != wish && Clock::now() - since_ > kPatience) {
            givenUp_ = true;
        }
    }
    bool isLate(std::uint64_t wish) const noexcept { return isBusy_ && wish_ != wish; }
    /// Gives everything up for good.
    void close() noexcept
    {
        closed_ = true;
        givenUp_ = true;
    }

    static constexpr std::chrono::milliseconds kPatience{250};

private:
    std::atomic<bool> givenUp_ = false;
    bool closed_ = false;
    bool isBusy_ = false;
    bool isAsked_ = false;
    std::uint64_t wish_ = 0;
    Clock::time_point since_;
};

} // namespace twcore
