#pragma once

// Where the time of a save goes: spans of work and of waiting, by thread and frame, written as a file of the trace
// event format that browsers open. While nobody traces, a span costs one look at a flag.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace twcore {

class Trace {
public:
    using Clock = std::chrono::steady_clock;

    /// Begins to collect; what was collected before is forgotten.
    static void start();
    static bool isOn() noexcept { return on_.load(std::memory_order_relaxed); }
    /// Ends collecting and writes the file. False when it cannot be written.
    static bool finish(const std::string& path);

    /// Names are literals. `frame` -1 says nothing.
    static void addSpan(const char* name, Clock::time_point begin, Clock::time_point end, std::int64_t frame);
    /// A value at this moment, such as the depth of a queue.
    static void addValue(const char* name, std::int64_t value);
    /// What this thread is called.
    static void nameThread(const std::string& name);

private:
    static std::atomic<bool> on_;
};

/// A span from its making to its end.
class TraceSpan {
public:
    explicit TraceSpan(const char* name, std::int64_t frame = -1) noexcept
        : name_(Trace::isOn() ? name : nullptr), frame_(frame)
    {
        if (name_ != nullptr) {
            begin_ = Trace::Clock::now();
        }
    }
    ~TraceSpan()
    {
        if (name_ != nullptr) {
            Trace::addSpan(name_, begin_, Trace::Clock::now(), frame_);
        }
    }
    TraceSpan(const TraceSpan&) = delete;
    TraceSpan& operator=(const TraceSpan&) = delete;

private:
    const char* name_;
    std::int64_t frame_;
    Trace::Clock::time_point begin_;
};

} // namespace twcore
