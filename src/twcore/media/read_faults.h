#pragma once

// Disks that fail while they are read. What is damaged in a file plays as far as it goes; but a file that is whole and
// cannot be read must not become black film without a word, so whoever needs every byte gives his readers one of these
// (Patience) and asks it at the end.

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace twcore {

struct ReadFault {
    std::string path;
    int cause = 0; // errno; 0: it has become shorter

    /// A failure code of the engine.
    std::uint32_t code() const;
    /// For people: what happened, to which file, and what to do about it before it is tried again.
    std::string text(const char* again = "save") const;
};

/// The first read that failed. Any thread.
class ReadFaults {
public:
    /// Notes which of these files are not there: they are black and silent. Any other that is missing later has gone
    /// meanwhile, which is a failure. Unless this is called, no missing file is one.
    void expect(const std::vector<std::string>& paths);
    /// A read, or an opening, that failed with this errno.
    void note(const std::string& path, int cause);
    /// Notes one of the expected files that has become shorter since: what is gone of it was film and not damage.
    void noteShorter();

    bool any() const noexcept { return any_; }
    std::optional<ReadFault> first() const;

private:
    std::atomic<bool> any_ = false;
    mutable std::mutex mutex_; // guards what follows
    bool expects_ = false;
    std::set<std::string> missing_;
    std::map<std::string, struct stat> present_;
    std::optional<ReadFault> first_;
};

} // namespace twcore
