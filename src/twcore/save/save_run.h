#pragma once

// One save: a movie file that has been prepared, then written on threads of its own over a plan that does not change.
// The threads own all that they work on: who has stopped a save need not wait for the picture that is in hand, and may
// leave it behind.
//
//     pictures:  decode, fit (, encode), by several workers --+
//                                                             +--> one thread: (encode,) interleave, write
//     sound:     decode, mix, encode -------------------------+

#include "twcore/save/key_numbers.h"
#include "twcore/save/movie_writer.h"
#include "twcore/save/picture_line.h"
#include "twcore/save/sound_line.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace twcore {

/// Saves under way in this process: whoever works ahead for the moment when he is asked waits for them to end.
inline std::atomic<int> savesAtWork = 0;

/// What a movie is to be.
struct SaveOrder {
    std::string path;
    MovieFormat format = MovieFormat::kAvi;
    std::optional<VideoEncoding> picture;           // none: a movie without picture
    std::optional<AudioCompressor> audioCompressor; // none: PCM
    bool hasSound = true;
    int soundRate = 48000;
};

enum class SaveState { kPrepared, kRunning, kComplete, kStopped, kFailed };

class SaveRun : public std::enable_shared_from_this<SaveRun> {
public:
    /// Opens the encoders, then the file, and writes its header. nullptr when that fails, with `error` telling why;
    /// code 0 in it says that a compressor refuses.
    static std::shared_ptr<SaveRun> prepare(SaveOrder order, WriteError& error);

    /// Writes the range of the plan on threads of its own. Once only. A file that is not there is black and silent; one
    /// that cannot be read for any other cause, or goes meanwhile, ends the save.
    void start(PlanPtr plan, std::int32_t startMs, std::int32_t stopMs);
    /// Waits for the end, not longer than told. True when nothing works any more, and the file is closed.
    bool waitUntil(std::chrono::steady_clock::time_point deadline);
    bool isStopped() const noexcept { return cancelled_; }
    bool isThrough() { return waitUntil({}); }
    /// Returns at once. Behind the picture in hand the index is written, so that the file plays as far as it goes.
    /// Again: nothing.
    void stop();
    /// Whether the path names the file that this save writes to.
    bool writesTo(const std::string& path) const { return writer_.writesTo(path); }

    SaveState state() const noexcept { return state_; }
    std::int32_t durationMs() const noexcept { return clock_.stopMs - clock_.startMs; }
    std::int32_t positionMs() const noexcept { return positionMs_; }
    std::int64_t framesWritten() const noexcept { return framesWritten_; }
    /// Of those, as their medium has them.
    std::int64_t framesCopied() const noexcept { return framesCopied_; }
    std::int64_t samplesMeant() const noexcept { return samplesMeant_; }
    /// Good once the state is kFailed.
    const WriteError& error() const noexcept { return error_; }
    const SaveOrder& order() const noexcept { return order_; }

private:
    explicit SaveRun(SaveOrder order) : order_(std::move(order)) {}

    bool open(WriteError& error);
    void work() noexcept;
    SaveState run();
    void writeMovie();
    void writePicture(const MadePicture& picture, std::int64_t number);
    void writeSoundBefore(std::int64_t sample);
    void putPicture(const AVPacket& packet);
    void finishPictures();
    WriteError lack() const;
    std::vector<std::string> readPaths() const;
    void checkReads() const;

    SaveOrder order_;
    MovieClock clock_;
    PlanPtr plan_;
    MovieWriter writer_;
    std::optional<KeyPictureNumbers> keyNumbers_;  // of H.264
    std::unique_ptr<VideoEncoder> pictureEncoder_; // of a movie that is one unit of encoding
    std::unique_ptr<SoundEncoder> soundEncoder_;
    std::unique_ptr<SoundLine> sound_;

    std::mutex mutex_; // guards what follows
    std::condition_variable ended_;
    bool isWorking_ = false;

    ReadFaults faults_;
    std::atomic<bool> cancelled_ = false;
    std::atomic<SaveState> state_ = SaveState::kPrepared;
    std::atomic<std::int32_t> positionMs_ = 0;
    std::atomic<std::int64_t> framesWritten_ = 0;
    std::atomic<std::int64_t> framesCopied_ = 0;
    std::atomic<std::int64_t> samplesMeant_ = 0;
    std::int64_t soundEnd_ = 0; // behind the last sample that was written
    WriteError error_;          // written ahead of state kFailed, read behind it
};

} // namespace twcore
