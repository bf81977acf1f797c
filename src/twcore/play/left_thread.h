#pragma once

// A thread that may be left behind: it owns what it works on, so that a disk that does not answer holds up nobody.

#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace twcore {

class LeftThread {
public:
    /// `work` holds all that it needs, and throws nothing.
    template <class Work>
    explicit LeftThread(Work work)
    {
        std::promise<void> promise;
        done_ = promise.get_future();
        thread_ = std::thread([work = std::move(work), promise = std::move(promise)]() mutable {
            work();
            promise.set_value();
        });
    }
    /// The work has been told to end. Waits a little for that, and no longer.
    ~LeftThread()
    {
        if (done_.wait_for(std::chrono::milliseconds(500)) == std::future_status::ready) {
            thread_.join();
        } else {
            thread_.detach();
        }
    }
    LeftThread(const LeftThread&) = delete;
    LeftThread& operator=(const LeftThread&) = delete;

private:
    std::future<void> done_;
    std::thread thread_;
};

} // namespace twcore
