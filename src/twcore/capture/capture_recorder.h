#pragma once

// A capture being written: pictures and sound come in as devices give them, and go into a movie file on a thread of
// its own.
//
//     readers --> queue --> [place in time, fit, encode] --> [in order of time] --> file
//                 full: the picture is dropped and counted; nobody waits

#include "twcore/capture/capture_clock.h"
#include "twcore/save/movie_writer.h"
#include "twcore/save/sound_encoder.h"
#include "twcore/save/video_encoder.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

enum class SyncMaster : std::uint8_t {
    kSound,   // pictures stand where the sound's clock says
    kPicture, // sound is stretched to the camera's clock
    kNone     // each goes by its own
};

struct CaptureOrder {
    std::string path;
    MovieFormat format = MovieFormat::kAvi;
    std::optional<VideoEncoding> picture;           // none: sound alone
    std::optional<AudioCompressor> audioCompressor; // none: PCM
    bool hasSound = true;
    AVRational cameraRate{0, 1}; // pictures a second as they come; 0: as many as the file's
    int deviceRate = 48000;      // samples a second as they come
    int soundRate = 48000;       // samples a second of the file
    SyncMaster master = SyncMaster::kSound;
};

class CaptureRecorder : public std::enable_shared_from_this<CaptureRecorder> {
public:
    /// Opens the encoders, then the file. nullptr when that fails; code 0 in `error` says that a compressor refuses.
    static std::shared_ptr<CaptureRecorder> prepare(CaptureOrder order, WriteError& error);
    ~CaptureRecorder();

    /// From now on what comes in is captured. A second call does nothing.
    void start();

    /// What a device gave, on its reader's thread; return at once. Samples are interleaved stereo.
    void picture(SharedFrame frame, CaptureTime taken);
    void sound(std::vector<float> samples, CaptureTime taken);

    /// Ends the capture: what is queued is still written, for as long as told, and the rest counted as dropped. Waits
    /// until the file is closed, twice as long at most; false when it is still being written then. Of one that was
    /// never started no file stays.
    bool finish(std::chrono::milliseconds longest);

    std::int32_t captured() const noexcept { return captured_; }
    std::int32_t dropped() const noexcept { return dropped_; }
    /// Pictures that wait to be encoded.
    std::size_t waiting() const;
    /// Why it ended early; code 0: it did not. Good once `finish` has returned true, or `hasFailed`.
    const WriteError& error() const noexcept { return error_; }
    bool hasFailed() const noexcept { return failed_; }
    const CaptureOrder& order() const noexcept { return order_; }

private:
    struct Picture {
        SharedFrame frame;
        CaptureTime taken = 0;
        std::size_t bytes = 0;
    };
    struct Sound {
        std::vector<float> samples;
        CaptureTime taken = 0;
    };

    explicit CaptureRecorder(CaptureOrder order) : order_(std::move(order)) {}

    bool open(WriteError& error);
    void work() noexcept;
    void run();
    void begin(CaptureTime start);
    bool isSoundDue() const;
    bool canPlace(const Picture& picture, bool isEnding) const;
    void takeSound(Sound sound);
    void putSamples(std::span<const float> samples);
    void putSilence(std::int64_t count);
    void takePicture(const Picture& picture);
    std::optional<std::int64_t> frameFor(CaptureTime taken);
    void writeInOrder(bool all);
    void writeNext(bool isPicture);
    void finishEncoders();
    void note(WriteError error);

    CaptureOrder order_;
    MovieWriter writer_;
    std::unique_ptr<VideoEncoder> pictureEncoder_;
    std::unique_ptr<SoundEncoder> soundEncoder_;
    std::unique_ptr<PictureFitter> fitter_;
    SwrPtr resampler_;

    // The worker's own.
    std::optional<CaptureTime> start_;
    std::optional<FrameGrid> grid_;
    std::optional<PictureClock> pictures_;
    std::optional<SampleClock> sounds_;
    std::int64_t samplesOut_ = 0;
    std::deque<PacketPtr> picturePackets_;
    std::deque<PacketPtr> soundPackets_;
    double writtenSeconds_ = 0; // up to which the file is written
    double flushedSeconds_ = 0;

    mutable std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::deque<Picture> waitingPictures_;
    std::deque<Sound> waitingSounds_;
    std::size_t waitingBytes_ = 0;
    bool isStarted_ = false;
    bool isEnding_ = false;
    std::chrono::steady_clock::time_point lastMoment_{}; // of encoding what is queued
    bool isWorking_ = false;

    std::atomic<std::int32_t> captured_ = 0;
    std::atomic<std::int32_t> dropped_ = 0;
    std::atomic<bool> failed_ = false;
    WriteError error_; // written ahead of failed_
};

} // namespace twcore
