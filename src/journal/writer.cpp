#include "journal/writer.h"

#include "engine/ITWProjectStore.h"
#include "journal/bytes.h"
#include "journal/object_numbers.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>
#include <utility>

namespace journal {

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenSyncs = 400ms;
constexpr auto kPatience = 500ms; // of the interface with a disk that hangs
constexpr std::uint64_t kSlackBytes = 1 << 20;
constexpr std::uint64_t kSlackTimes = 4;

/// Signals are for the threads that wait for them.
void leaveSignals()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

std::int64_t now() { return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()); }

} // namespace

Syncer::Syncer() : thread_([this] { run(); }) {}

Syncer::~Syncer()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Syncer::want(std::shared_ptr<disk::Descriptor> file)
{
    {
        const std::lock_guard lock(mutex_);
        file_ = std::move(file);
    }
    changed_.notify_all();
}

void Syncer::run()
{
    leaveSignals();
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [&] { return file_ || isEnding_; });
        if (!file_) {
            return;
        }
        const auto file = std::exchange(file_, nullptr);
        lock.unlock();
        if (::fdatasync(file->get()) != 0) {
            hasFailed_ = true;
        }
        lock.lock();
        changed_.wait_for(lock, kBetweenSyncs, [&] { return isEnding_; });
    }
}

Writer::Writer(std::unique_ptr<JournalFile> file) : thread_{std::move(file), {}, {}}, worker_([this] { run(); }) {}

Writer::~Writer()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    worker_.join();
}

void Writer::hand(Job job)
{
    {
        std::unique_lock lock(mutex_);
        const auto isFree = [&] { return jobs_.empty(); };
        if (job.image && !changed_.wait_for(lock, kPatience, isFree) && jobs_.back().image) {
            jobs_.pop_back();
        }
        jobs_.push_back(std::move(job));
    }
    changed_.notify_all();
}

void Writer::run()
{
    leaveSignals();
    thread_.file->syncFolder();
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [&] { return !jobs_.empty() || isEnding_; });
        if (jobs_.empty()) {
            return;
        }
        const Job job = std::move(jobs_.front()); // its place stays taken until it is done
        lock.unlock();
        try {
            job.image ? doWrite(*job.image) : job.other();
        } catch (const std::exception&) { // no memory
            thread_.coder.forget();
            hasFailed_ = true;
        }
        lock.lock();
        jobs_.pop_front();
        changed_.notify_all();
    }
}

void Writer::drain()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return jobs_.empty(); });
}

void Writer::write(std::shared_ptr<const StateImage> image) { hand({std::move(image), {}}); }

void Writer::goOnFrom(const Origin& origin)
{
    hand({nullptr, [this, origin] {
              begin();
              thread_.origin = origin;
          }});
}

void Writer::doWrite(const StateImage& image)
{
    if (!thread_.origin) {
        thread_.origin = image.desk.isSaved ? originOf(image.desk.projectPath) : Origin();
    }
    JournalFile& file = *thread_.file;
    if (!file.isWhole()) { // what it held is in memory still, and goes into the new one
        thread_.coder.forget();
        hasFailed_ = !file.renew() || hasFailed_;
    }
    bool isWritten = file.append(thread_.coder.difference(image, *thread_.origin, now()));
    if (isWritten && file.byteCount() > kSlackBytes + kSlackTimes * thread_.coder.byteCount()) {
        thread_.coder.forget();
        // What was appended stands when the shorter file cannot be had.
        (void)file.replace(thread_.coder.difference(image, *thread_.origin, now()));
    }
    if (!isWritten) {
        thread_.coder.forget(); // the next one stands for itself
        hasFailed_ = true;
    }
    syncer_.want(file.descriptor());
}

void Writer::begin()
{
    thread_.coder.forget();
    thread_.origin.reset();
}

void Writer::empty()
{
    hand({nullptr, [this] {
              begin();
              hasFailed_ = !thread_.file->empty() || hasFailed_;
              syncer_.want(thread_.file->descriptor());
          }});
}

void Writer::moveAway(const std::string& path, std::string note, std::int64_t time)
{
    hand({nullptr, [this, path, note = std::move(note), time] {
              ByteWriter difference;
              difference.put(time != 0 ? time : now());
              difference.put(false);
              Objects().set(kNote, 0, note, difference);
              begin();
              const bool isKept = thread_.file->append(difference.bytes) && thread_.file->moveAway(path);
              hasFailed_ = !isKept || hasFailed_;
          }});
}

Origin originOf(const std::string& path)
{
    Origin origin;
    std::error_code none;
    const auto byteCount = std::filesystem::file_size(path, none);
    if (none) {
        return origin;
    }
    origin.isThere = true;
    origin.byteCount = byteCount;
    if (byteCount <= engine::kMostProjectBytes) {
        std::ifstream file(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        origin.hash = checksum(bytes);
    }
    return origin;
}

} // namespace journal
