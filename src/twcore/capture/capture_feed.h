#pragma once

// Open devices at work: one reader for each gives what it reads to the live picture and to the capture that is on.
//
//     camera --> reader --+--> newest picture --> painter --> surface
//                         +--> capture, when one is on
//
// Nobody waits for another: a painter that is slow leaves pictures out, a capture that is slow counts them.

#include "twcore/capture/capture_device.h"
#include "twcore/capture/capture_recorder.h"
#include "twcore/play/left_thread.h"
#include "twcore/render/picture_place.h"

#include <atomic>
#include <memory>
#include <optional>

namespace twcore {

/// Where the live picture is to be seen.
struct LiveView {
    std::int32_t surface = 0;        // number of a sink; 0: nowhere
    std::optional<PictureRect> area; // of it, logical pixels; none: all of it
    bool isOn = true;
};

class PictureFeed {
public:
    explicit PictureFeed(std::unique_ptr<OpenCamera> source);
    ~PictureFeed();
    PictureFeed(const PictureFeed&) = delete;
    PictureFeed& operator=(const PictureFeed&) = delete;

    PictureSize size() const noexcept { return size_; }
    AVRational rate() const noexcept { return rate_; }
    /// The device is there no more.
    bool isGone() const;
    /// From the next picture on; nullptr: nobody.
    void captureTo(std::shared_ptr<CaptureRecorder> recorder);
    void show(const LiveView& view);
    /// nullptr while none has come.
    SharedFrame newest() const;

private:
    struct Room;

    PictureSize size_;
    AVRational rate_;
    std::shared_ptr<Room> room_;
    std::optional<LeftThread> reader_;
    std::optional<LeftThread> painter_;
};

/// How loud a microphone is taken.
struct SoundLevel {
    std::int32_t percent = 100; // 0 to 400
    bool isMuted = false;
};

class SoundFeed {
public:
    explicit SoundFeed(std::unique_ptr<OpenMicrophone> source);
    ~SoundFeed();
    SoundFeed(const SoundFeed&) = delete;
    SoundFeed& operator=(const SoundFeed&) = delete;

    int rate() const noexcept { return rate_; }
    bool isGone() const;
    void captureTo(std::shared_ptr<CaptureRecorder> recorder);
    void setLevel(const SoundLevel& level);

private:
    struct Room;

    int rate_;
    std::shared_ptr<Room> room_;
    std::optional<LeftThread> reader_;
};

} // namespace twcore
