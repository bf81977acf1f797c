#pragma once

// Which files the engine looked for in vain, and which it found again: news from its threads for the interface thread.
//
// A reader that plays or saves tells a file that is no longer there; `ITWMediaFiles::LookForFiles` tells of every open
// one. Nobody waits for anything here, and reading a file that is there costs nothing.

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace engine {

class FilePresence {
public:
    /// From any thread. The last word on a path counts. Raises nothing: news that finds no memory is lost.
    void tell(const std::string& path, bool isThere) noexcept
    {
        try {
            const std::lock_guard lock(mutex_);
            news_[path] = isThere;
            if (listener_) {
                listener_();
            }
        } catch (...) { // NOLINT: the news is lost, as said above
        }
    }
    /// What was told since the last time, by path. Interface thread.
    std::map<std::string, bool> take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(news_, {});
    }
    /// Run on the telling thread behind each word: it only passes on that there is news. Empty: nobody listens; once
    /// this has returned, the one before is run no more.
    void listen(std::function<void()> listener)
    {
        const std::lock_guard lock(mutex_);
        listener_ = std::move(listener);
    }

private:
    std::mutex mutex_; // guards what follows
    std::map<std::string, bool> news_;
    std::function<void()> listener_;
};

/// Of the process. It is never destroyed: a look at a disk that does not answer may outlive everything else.
inline FilePresence& filePresence()
{
    static auto& presence = *new FilePresence;
    return presence;
}

} // namespace engine
