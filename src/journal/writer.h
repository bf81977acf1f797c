#pragma once

// The thread that keeps the journal: it works out what has changed since the image before, and appends that. A second
// thread sees that it reaches the disk within a second, so that nobody waits for a disk.
//
// All operations come from one thread, the interface's, and return at once. Only one image waits at a time: whoever
// hands over the next one waits until that is written, so that a kill at any moment loses the last command at most; but
// not for long, then the newer image takes its place.

#include "journal/journal_file.h"
#include "journal/state_coding.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace journal {

/// Syncs files in the background.
class Syncer {
public:
    Syncer();
    ~Syncer();
    Syncer(const Syncer&) = delete;
    Syncer& operator=(const Syncer&) = delete;

    /// Within a second. From any thread.
    void want(std::shared_ptr<disk::Descriptor> file);
    bool hasFailed() const { return hasFailed_; }

private:
    void run();

    std::mutex mutex_; // guards the next three
    std::condition_variable changed_;
    std::shared_ptr<disk::Descriptor> file_;
    bool isEnding_ = false;
    std::atomic<bool> hasFailed_ = false;
    std::thread thread_;
};

class Writer {
public:
    /// The file stands behind its last whole difference.
    explicit Writer(std::unique_ptr<JournalFile> file);
    /// All that was handed over is written.
    ~Writer();
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void write(std::shared_ptr<const StateImage> image);
    /// What comes next goes on with older work, which was begun over this.
    void goOnFrom(const Origin& origin);
    /// There is nothing to bring back any more.
    void empty();
    /// What it holds gets that name, with a note and the time of its last change.
    void moveAway(const std::string& path, std::string note, std::int64_t time);
    /// Waits until all is written that was handed over.
    void drain();
    /// Work was not written, or did not reach the disk.
    bool hasFailed() const { return hasFailed_ || syncer_.hasFailed(); }

private:
    struct Job {
        std::shared_ptr<const StateImage> image; // nothing: the other
        std::function<void()> other;
    };

    void hand(Job job);
    void run();
    // On the thread.
    void doWrite(const StateImage& image);
    void begin();

    struct {
        std::unique_ptr<JournalFile> file;
        StateWriter coder;
        std::optional<Origin> origin;
    } thread_;         // its own
    std::mutex mutex_; // guards the next three
    std::condition_variable changed_;
    std::deque<Job> jobs_;
    bool isEnding_ = false;
    std::atomic<bool> hasFailed_ = false;
    Syncer syncer_;
    std::thread worker_;
};

/// What stands at a path now. A file too large for a project is told by its length alone.
Origin originOf(const std::string& path);

} // namespace journal
