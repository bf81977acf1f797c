#include "twcore/trace.h"

#include <cstdio>
#include <map>
#include <new>
#include <thread>

namespace twcore {

namespace {

struct Event {
    const char* name;
    char phase; // X a span, C a value
    int thread;
    std::int64_t startUs;
    std::int64_t lengthUs;
    std::int64_t number; // frame or value
};

struct Collected {
    std::mutex mutex; // guards all of it
    Trace::Clock::time_point begin;
    std::vector<Event> events;
    std::map<std::thread::id, int> threads;
    std::map<int, std::string> names;

    int threadNumber()
    {
        return threads.try_emplace(std::this_thread::get_id(), static_cast<int>(threads.size()) + 1).first->second;
    }
};

Collected& collected()
{
    static Collected all;
    return all;
}

constexpr std::size_t kMaxEvents = 8'000'000; // an hour of movie with all its spans

std::int64_t microseconds(Trace::Clock::duration duration)
{
    return std::chrono::duration_cast<std::chrono::microseconds>(duration).count();
}

void add(Collected& all, const Event& event)
{
    try {
        if (all.events.size() < kMaxEvents) {
            all.events.push_back(event);
        }
    } catch (const std::bad_alloc&) {
        // A trace with a hole must not cost the movie.
    }
}

} // namespace

std::atomic<bool> Trace::on_ = false;

void Trace::start()
{
    auto& all = collected();
    const std::lock_guard lock(all.mutex);
    all.events.clear();
    all.threads.clear();
    all.names.clear();
    all.begin = Clock::now();
    on_ = true;
}

void Trace::addSpan(const char* name, Clock::time_point begin, Clock::time_point end, std::int64_t frame)
{
    auto& all = collected();
    const std::lock_guard lock(all.mutex);
    add(all, {name, 'X', all.threadNumber(), microseconds(begin - all.begin), microseconds(end - begin), frame});
}

void Trace::addValue(const char* name, std::int64_t value)
{
    if (isOn()) {
        auto& all = collected();
        const std::lock_guard lock(all.mutex);
        add(all, {name, 'C', all.threadNumber(), microseconds(Clock::now() - all.begin), 0, value});
    }
}

void Trace::nameThread(const std::string& name)
{
    if (isOn()) {
        auto& all = collected();
        const std::lock_guard lock(all.mutex);
        all.names[all.threadNumber()] = name;
    }
}

bool Trace::finish(const std::string& path)
{
    auto& all = collected();
    const std::lock_guard lock(all.mutex);
    on_ = false;
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    std::fputs("{\"displayTimeUnit\":\"ms\",\"traceEvents\":[\n", file);
    const char* comma = "";
    for (const auto& [thread, name] : all.names) {
        std::fprintf(file, "%s{\"ph\":\"M\",\"pid\":1,\"tid\":%d,\"name\":\"thread_name\",\"args\":{\"name\":\"%s\"}}",
                     comma, thread, name.c_str());
        comma = ",\n";
    }
    for (const auto& event : all.events) {
        std::fprintf(file, "%s{\"ph\":\"%c\",\"pid\":1,\"tid\":%d,\"name\":\"%s\",\"ts\":%lld", comma, event.phase,
                     event.thread, event.name, static_cast<long long>(event.startUs));
        if (event.phase == 'X') {
            std::fprintf(file, ",\"dur\":%lld", static_cast<long long>(event.lengthUs));
        }
        if (event.number >= 0) {
            std::fprintf(file, ",\"args\":{\"%s\":%lld}", event.phase == 'X' ? "frame" : "value",
                         static_cast<long long>(event.number));
        }
        std::fputc('}', file);
        comma = ",\n";
    }
    std::fputs("\n]}\n", file);
    all.events.clear();
    all.events.shrink_to_fit();
    const bool written = std::ferror(file) == 0;
    return std::fclose(file) == 0 && written;
}

} // namespace twcore
