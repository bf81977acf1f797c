#pragma once

// A media file opened for demuxing, under guard.
//
// Bytes come from one local, regular file through our own reader; whatever else a format would like to open (another
// file, the network) is refused, and so are play lists, image sequences and the like. What a format claims of itself
// is bounded before memory is taken for it. A reader may be told to give up, by a flag or by a deadline.

#include "twcore/media/ff.h"
#include "twcore/media/read_faults.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace twcore {

/// Pictures larger than this are refused before they are decoded.
inline constexpr std::int64_t kMaxPixels = std::int64_t{1} << 27;

/// Asks a reader to stop between two pictures, and to go on from there when it is asked again.
struct Pause {
    std::atomic<bool> isAsked = false;                                                        // by any thread
    std::chrono::steady_clock::time_point end = std::chrono::steady_clock::time_point::max(); // of the reader's turn

    /// A turn begins that lasts until somebody asks.
    void begin() noexcept
    {
        isAsked = false;
        end = std::chrono::steady_clock::time_point::max();
    }
    bool isDue() const noexcept
    {
        return isAsked.load(std::memory_order_relaxed)
               || (end != std::chrono::steady_clock::time_point::max() && std::chrono::steady_clock::now() >= end);
    }
};

/// When to give up, and where to tell of a disk that fails. Copied into a reader; what it points to must outlive it.
struct Patience {
    const std::atomic<bool>* cancelled = nullptr;
    std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::time_point::max();
    ReadFaults* faults = nullptr; // none: nobody wants to know
    /// While a file's pictures are still being listed: a key frame near the time is better than waiting for the list.
    bool takesNear = false;
    const Pause* pause = nullptr; // none: readers never stop on the way

    bool isPaused() const noexcept { return pause != nullptr && pause->isDue(); }
    bool over() const noexcept
    {
        return (cancelled != nullptr && cancelled->load(std::memory_order_relaxed))
               || (deadline != std::chrono::steady_clock::time_point::max()
                   && std::chrono::steady_clock::now() > deadline);
    }
};

class InputFile {
public:
    /// Opens the file and reads its header. nullptr when that fails, with `error` one of engine::media_error.
    static std::unique_ptr<InputFile> open(const std::string& path, const Patience& patience, std::uint32_t& error);

    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    AVFormatContext* context() const noexcept { return context_; }
    const AVStream* stream(int index) const noexcept { return context_->streams[index]; }
    std::string formatName() const { return context_->iformat->name; }
    std::int64_t byteCount() const noexcept { return byteCount_; }

    /// Reads enough packets to know every stream. False on failure.
    bool readStreamInfo();
    /// Lets only packets of this stream through.
    void keepOnly(int streamIndex) noexcept;
    /// The next packet; false at the end, on an error and when patience is over.
    bool read(AVPacket& packet) noexcept;
    /// Bytes from a place in the file, beside what is being demuxed; how many there are. Any thread.
    std::size_t readAt(std::int64_t position, std::span<std::uint8_t> target) const noexcept;

    bool gaveUp() const noexcept { return patience_.over(); }
    /// Some of it could not be read, for a cause that is not in the file: what was made of it is not whole.
    bool hasFailed() const noexcept { return failed_; }

private:
    InputFile(std::string path, Patience patience) : patience_(patience), path_(std::move(path)) {}

    static int readBytes(void* self, std::uint8_t* target, int size) noexcept;
    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence) noexcept;
    const AVInputFormat* findFormat() const;
    bool openBytes(std::uint32_t& error);
    int fail(int cause) noexcept;

    Patience patience_;
    std::string path_;
    bool failed_ = false;
    int descriptor_ = -1;
    std::int64_t byteCount_ = 0;
    AVIOContext* bytes_ = nullptr;
    AVFormatContext* context_ = nullptr;
};

} // namespace twcore
