#pragma once

// Capture as the program calls it. Between InitCapture and ReleaseCapture stands a session: the devices there are,
// those that take part, and the open ones. A device stays open from its first use on, through captures, until another
// is set or it is to be opened otherwise.

#include "engine/ITWCapture.h"
#include "twcore/capture/capture_feed.h"
#include "twcore/capture/capture_recorder.h"
#include "twcore/profiles/profiles_interface.h"

#include <memory>
#include <optional>
#include <string>

namespace twcore {

class CaptureInterface final : public engine::ITWCapture {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;

    explicit CaptureInterface(const ProfilesInterface& profiles) : profiles_(profiles) {}
    ~CaptureInterface() override;
    CaptureInterface(const CaptureInterface&) = delete;
    CaptureInterface& operator=(const CaptureInterface&) = delete;

    Status InitCapture(Bool16& ok) override;
    Status ReleaseCapture() override;
    Status GetVideoDeviceStatus(std::int16_t& status) override;
    Status GetAudioDeviceStatus(std::int16_t& status) override;
    Status TearDownCapture() override;
    Status TearDownPreview() override;
    Status SetVideoDevice(Text name) override;
    Status SetAudioDevice(Text name) override;
    Status SetCaptureAudioCompressor(Text name) override;
    Status SetCaptureVideoCompressor(Text name) override;
    Status GetVideoDeviceName(std::int16_t index, TextBuffer buffer) override;
    Status GetAudioDeviceName(std::int16_t index, TextBuffer buffer) override;
    Status StartCaptureToFile(Text path, std::int16_t format, std::int16_t syncMaster, Bool16& ok) override;
    Status GetFramesCaptured(std::int32_t& count) override;
    Status GetFramesDropped(std::int32_t& count) override;
    Status SetVideoPosition(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override;
    Status GetCaptureSize(std::int32_t& width, std::int32_t& height) override;
    Status ShowCameraSettings(std::int32_t parentWindow) override;
    Status ShowVideoSettings(std::int32_t parentWindow, std::int16_t& result) override;
    Status ShowAudioSettings(std::int32_t parentWindow) override;
    Status ShowAudioFormats(std::int32_t parentWindow) override;
    Status SetPreviewing(Bool16& on) override;
    Status BuildGraph(Bool16& ok) override;
    Status SetVideoWindow(std::int32_t windowHandle, Bool16& ok) override;
    Status RunGraph(Bool16& ok) override;
    Status StopCapture() override;
    Status TakeSnap(Text path, std::int16_t width, std::int16_t height) override;

private:
    /// A device that takes part, and what it is once it is open.
    template <class Device, class Feed>
    struct Part {
        std::shared_ptr<Device> device; // none: no such stream
        std::unique_ptr<Feed> feed;     // open
    };

    struct Session {
        Session();

        DeviceList devices;
        bool isChosen = false; // a device has been set: only what was set takes part
        Part<Camera, PictureFeed> video;
        Part<Microphone, SoundFeed> audio;
        std::string videoCompressor;
        std::string audioCompressor;
        int soundRate = 48000; // asked of the microphone
        int channels = 2;      // of the file
        SoundLevel level;
    };

    Session& session();
    void chooseFirst();
    bool openVideo();
    bool openAudio();
    void endCapture();
    std::optional<CaptureOrder> orderFor(Text path, std::int16_t format, std::int16_t syncMaster);
    bool fillAvi(CaptureOrder& order) const;
    bool fillWindowsMedia(CaptureOrder& order) const;
    void showLive();

    const ProfilesInterface& profiles_;
    bool isScreenPicked_ = false; // for as long as the engine lives
    std::optional<Session> session_;
    LiveView view_;
    std::shared_ptr<CaptureRecorder> recorder_; // prepared or at work
    bool lacksDevice_ = false;                  // for a stream that the profile wants
    std::int32_t captured_ = 0;                 // of the last capture
    std::int32_t dropped_ = 0;
    WriteError lastError_;
};

} // namespace twcore
