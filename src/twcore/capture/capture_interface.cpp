#include "twcore/capture/capture_interface.h"

#include "twcore/capture/library_devices.h"
#include "twcore/capture/test_devices.h"
#include "twcore/files/answered_within.h"
#include "twcore/guard.h"
#include "twcore/play/canvas_frames.h"
#include "twcore/profiles/terminated_text.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace twcore {

using engine::kDone;
using engine::kFalse;
using engine::toBool16;

namespace {

constexpr std::size_t kNameBytes = 127; // of a device, in the buffer that it is told in
constexpr std::chrono::seconds kDriverPatience{6};
constexpr std::chrono::milliseconds kEndPatience{2000}; // for what is queued at the end of a capture
constexpr PictureSize kNoPicture{320, 240};

namespace device_status {
constexpr std::int16_t kUsable = 0;
constexpr std::int16_t kNotFound = 1;
constexpr std::int16_t kCannotBeInitialised = 2;
} // namespace device_status

DeviceList listDevices()
{
    DeviceList devices = answeredWithin<DeviceList>(kDriverPatience, libraryDevices).value_or(DeviceList{});
    if (const char* const wish = std::getenv("QUILLMONT_TEST_DEVICES")) {
        addTestDevices(devices, wish);
    }
    tellApart(devices);
    return devices;
}

template <class Entries>
auto entryNamed(Entries& entries, engine::Text name)
{
    return std::ranges::find_if(entries, [&](const auto& entry) {
        return entry.name == name || cutAtCharacter(entry.name, kNameBytes) == name;
    });
}

template <class Entries>
void tellName(const Entries& entries, std::int16_t index, engine::TextBuffer buffer)
{
    const bool isThere = index >= 0 && static_cast<std::size_t>(index) < entries.size();
    fillTerminated(buffer, isThere ? std::string_view(entries[static_cast<std::size_t>(index)].name) : "");
}

/// Runs a panel over a window. True: left with OK. Meanwhile the session may have been released, or be another.
bool runPanel(std::int32_t window, engine::ControlPanel& panel)
{
    engine::ControlPanelHost* const host = engine::surfaces().controlPanelHost(window);
    return host != nullptr && host->run(panel);
}

int evenSide(int side) { return std::max(2, side & ~1); }

} // namespace

CaptureInterface::Session::Session() = default;

CaptureInterface::~CaptureInterface() { endCapture(); }

CaptureInterface::Session& CaptureInterface::session()
{
    if (!session_) {
        session_.emplace(); // called out of order: a session without devices answers everything
    }
    return *session_;
}

engine::Status CaptureInterface::InitCapture(Bool16& ok)
{
    ok = kFalse;
    return guarded([&]() -> Status {
        endCapture();
        session_.reset();                 // frees devices that the new session may open
        DeviceList found = listDevices(); // events may run meanwhile
        endCapture();
        session_.emplace().devices = std::move(found);
        const auto& devices = session_->devices;
        ok = toBool16(devices.canAsk || !devices.cameras.empty() || !devices.microphones.empty());
        return ok != kFalse ? kDone
                            : Status(kDone.code(), "Capturing needs the library libavdevice, which is not installed.");
    });
}

engine::Status CaptureInterface::ReleaseCapture()
{
    return guarded([&] {
        endCapture();
        session_.reset();
    });
}

engine::Status CaptureInterface::TearDownCapture()
{
    return guarded([&] { endCapture(); });
}

engine::Status CaptureInterface::TearDownPreview()
{
    return guarded([&] {
        view_ = {};
        showLive();
    });
}

/// Without a choice the first of each kind takes part; the screen is none of them before a person has picked it.
void CaptureInterface::chooseFirst()
{
    Session& now = session();
    if (now.isChosen) {
        return;
    }
    const auto& cameras = now.devices.cameras;
    if (!now.video.device && !cameras.empty() && (!cameras.front().isScreen || isScreenPicked_)) {
        now.video.device = cameras.front().camera;
    }
    if (!now.audio.device && !now.devices.microphones.empty()) {
        now.audio.device = now.devices.microphones.front().microphone;
    }
}

bool CaptureInterface::openVideo()
{
    const auto camera = session().video.device;
    if (camera && (!session().video.feed || session().video.feed->isGone())) {
        session().video.feed.reset();
        auto source = answeredWithin<std::unique_ptr<OpenCamera>>(kDriverPatience, [camera] { return camera->open(); });
        if (source && *source && session().video.device == camera) { // another may have been set meanwhile
            session().video.feed = std::make_unique<PictureFeed>(std::move(*source));
            showLive();
        }
    }
    return session().video.feed != nullptr;
}

bool CaptureInterface::openAudio()
{
    const auto microphone = session().audio.device;
    if (microphone && (!session().audio.feed || session().audio.feed->isGone())) {
        session().audio.feed.reset();
        auto source = answeredWithin<std::unique_ptr<OpenMicrophone>>(
            kDriverPatience, [microphone, rate = session().soundRate] { return microphone->open(rate); });
        if (source && *source && session().audio.device == microphone) {
            session().audio.feed = std::make_unique<SoundFeed>(std::move(*source));
            session().audio.feed->setLevel(session().level);
        }
    }
    return session().audio.feed != nullptr;
}

engine::Status CaptureInterface::GetVideoDeviceStatus(std::int16_t& status)
{
    status = device_status::kNotFound;
    return guarded([&] {
        chooseFirst();
        const auto& video = session().video;
        if (video.device && !(video.feed && video.feed->isGone())) {
            status = openVideo() ? device_status::kUsable : device_status::kCannotBeInitialised;
        }
    });
}

engine::Status CaptureInterface::GetAudioDeviceStatus(std::int16_t& status)
{
    status = device_status::kNotFound;
    return guarded([&] {
        chooseFirst();
        const auto& audio = session().audio;
        if (audio.device && !(audio.feed && audio.feed->isGone())) {
            status = openAudio() ? device_status::kUsable : device_status::kCannotBeInitialised;
        }
    });
}

engine::Status CaptureInterface::SetVideoDevice(Text name)
{
    return guarded([&] {
        Session& now = session();
        if (!std::exchange(now.isChosen, true)) {
            now.audio = {}; // what nobody set takes part no more
        }
        const auto found = entryNamed(now.devices.cameras, name);
        const bool isThere = found != now.devices.cameras.end();
        isScreenPicked_ = isScreenPicked_ || (isThere && found->isScreen);
        const auto camera = isThere ? found->camera : nullptr;
        if (now.video.device != camera) {
            now.video = {camera, nullptr};
        }
    });
}

engine::Status CaptureInterface::SetAudioDevice(Text name)
{
    return guarded([&] {
        Session& now = session();
        if (!std::exchange(now.isChosen, true)) {
            now.video = {};
        }
        const auto found = entryNamed(now.devices.microphones, name);
        const auto microphone = found != now.devices.microphones.end() ? found->microphone : nullptr;
        if (now.audio.device != microphone) {
            now.audio = {microphone, nullptr};
        }
    });
}

engine::Status CaptureInterface::SetCaptureVideoCompressor(Text name)
{
    return guarded([&] { session().videoCompressor = name; });
}

engine::Status CaptureInterface::SetCaptureAudioCompressor(Text name)
{
    return guarded([&] { session().audioCompressor = name; });
}

engine::Status CaptureInterface::GetVideoDeviceName(std::int16_t index, TextBuffer buffer)
{
    return guarded([&] { tellName(session().devices.cameras, index, buffer); });
}

engine::Status CaptureInterface::GetAudioDeviceName(std::int16_t index, TextBuffer buffer)
{
    return guarded([&] { tellName(session().devices.microphones, index, buffer); });
}

engine::Status CaptureInterface::BuildGraph(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        chooseFirst();
        const bool hasVideo = openVideo();
        const bool hasAudio = openAudio();
        const Session& now = session();
        // Of devices that nobody has set, those take part that can; one that a person set has to.
        const bool lacks = (now.video.device && !hasVideo) || (now.audio.device && !hasAudio);
        ok = toBool16((hasVideo || hasAudio) && !(now.isChosen && lacks));
    });
}

void CaptureInterface::showLive()
{
    if (session_ && session_->video.feed) {
        session_->video.feed->show(view_);
    }
}

engine::Status CaptureInterface::SetVideoWindow(std::int32_t windowHandle, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        view_.surface = windowHandle;
        view_.isOn = true; // as a new graph begins
        engine::surfaces().watch(windowHandle, [this] { showLive(); });
        showLive();
        ok = toBool16(session().video.feed != nullptr);
    });
}

engine::Status CaptureInterface::SetVideoPosition(std::int32_t x, std::int32_t y, std::int32_t width,
                                                  std::int32_t height)
{
    return guarded([&] {
        view_.area = PictureRect{x, y, width, height};
        showLive();
    });
}

engine::Status CaptureInterface::SetPreviewing(Bool16& on)
{
    return guarded([&] {
        view_.isOn = on != kFalse;
        showLive();
    });
}

engine::Status CaptureInterface::GetCaptureSize(std::int32_t& width, std::int32_t& height)
{
    const bool isOpen = session_ && session_->video.feed;
    const PictureSize size = isOpen ? session_->video.feed->size() : kNoPicture;
    width = size.width;
    height = size.height;
    return kDone;
}

bool CaptureInterface::fillAvi(CaptureOrder& order) const
{
    const int video = videoCompressorIndex(session_->videoCompressor);
    const int audio = audioCompressorIndex(session_->audioCompressor);
    const auto isRefused = [](int index, const std::string& name) {
        return index < 0 && !name.empty() && name != kUncompressed;
    };
    if (isRefused(video, session_->videoCompressor) || isRefused(audio, session_->audioCompressor)) {
        return false;
    }
    if (session_->video.feed) {
        order.picture.emplace();
        if (video >= 0) {
            order.picture->compressor = videoCompressors()[static_cast<std::size_t>(video)];
        }
        const PictureSize size = session_->video.feed->size();
        order.picture->size = {evenSide(size.width), evenSide(size.height)};
        order.picture->fps = session_->video.feed->rate();
    }
    order.hasSound = session_->audio.feed != nullptr;
    if (order.hasSound) {
        constexpr int kMostRate = 48000; // of what all compressors take
        order.soundRate = std::min(order.deviceRate, kMostRate);
        if (audio >= 0) {
            order.audioCompressor = audioCompressors()[static_cast<std::size_t>(audio)];
        } else if (session_->channels == 1) {
            order.audioCompressor = AudioCompressor{.name = "PCM", .encoder = "pcm_s16le", .bitRate = 0};
        }
        if (order.audioCompressor) {
            order.audioCompressor->channels = session_->channels;
        }
    }
    return true;
}

bool CaptureInterface::fillWindowsMedia(CaptureOrder& order) const
{
    const auto& profile = profiles_.opened();
    if (!profile || (!profile->picture && !profile->sound)) {
        return false;
    }
    if (profile->picture && session_->video.feed) {
        const ProfilePicture& wanted = *profile->picture;
        const PictureSize size = session_->video.feed->size();
        VideoEncoding& encoding = order.picture.emplace();
        encoding.compressor = windowsMediaVideo();
        encoding.size = {evenSide(wanted.width > 0 ? wanted.width : size.width),
                         evenSide(wanted.height > 0 ? wanted.height : size.height)};
        encoding.fps = wanted.fpsNumerator > 0 ? AVRational{wanted.fpsNumerator, wanted.fpsDenominator}
                                               : session_->video.feed->rate();
        encoding.bitRate = wanted.bitRate;
        encoding.quality = wanted.quality;
        encoding.keyFrameRate =
            std::max(1, static_cast<int>(std::lround(wanted.keyFrameSeconds * av_q2d(encoding.fps))));
    }
    order.hasSound = profile->sound && session_->audio.feed;
    if (order.hasSound) {
        order.soundRate = profile->sound->sampleRate;
        order.audioCompressor = windowsMediaAudio(profile->sound->bitRate, profile->sound->channels);
    }
    return order.picture || order.hasSound;
}

std::optional<CaptureOrder> CaptureInterface::orderFor(Text path, std::int16_t format, std::int16_t syncMaster)
{
    CaptureOrder order;
    order.path = path;
    order.format = format == 1 ? MovieFormat::kWindowsMedia : MovieFormat::kAvi;
    order.master = syncMaster == 1 ? SyncMaster::kSound : syncMaster == 0 ? SyncMaster::kPicture : SyncMaster::kNone;
    order.cameraRate = session_->video.feed ? session_->video.feed->rate() : order.cameraRate;
    order.deviceRate = session_->audio.feed ? session_->audio.feed->rate() : order.deviceRate;
    const bool isGood = format == 1 ? fillWindowsMedia(order) : fillAvi(order);
    return isGood ? std::optional(std::move(order)) : std::nullopt;
}

engine::Status CaptureInterface::StartCaptureToFile(Text path, std::int16_t format, std::int16_t syncMaster, Bool16& ok)
{
    ok = kFalse;
    return guarded([&]() -> Status {
        endCapture();
        captured_ = dropped_ = 0;
        lastError_ = {};
        chooseFirst();
        openVideo();
        openAudio();
        lacksDevice_ = !session_->video.feed && !session_->audio.feed;
        if (lacksDevice_) { // all that took part are gone
            ok = engine::kTrue;
            return kDone;
        }
        const auto order = orderFor(path, format, syncMaster);
        if (!order) {
            return kDone; // refused
        }
        // What a profile wants and no device gives is told by running the graph.
        const auto& profile = profiles_.opened();
        lacksDevice_ =
            format == 1 && ((profile->picture && !session_->video.feed) || (profile->sound && !session_->audio.feed));
        if (lacksDevice_) {
            ok = engine::kTrue;
            return kDone;
        }
        WriteError error;
        recorder_ = CaptureRecorder::prepare(*order, error);
        if (!recorder_ && error.code != 0) {
            return Status(error.code, error.text);
        }
        ok = toBool16(recorder_ != nullptr);
        return Status(kDone.code(), error.text);
    });
}

engine::Status CaptureInterface::RunGraph(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        Session& now = session();
        if (std::exchange(lacksDevice_, false) || (!now.video.feed && !now.audio.feed)) {
            return;
        }
        if (recorder_) {
            recorder_->start();
            if (now.audio.feed) { // first: sound ahead of the first picture is kept until that comes
                now.audio.feed->captureTo(recorder_);
            }
            if (now.video.feed) {
                now.video.feed->captureTo(recorder_);
            }
        }
        ok = engine::kTrue;
    });
}

/// What is being captured is written to its end; what was prepared only leaves no file.
void CaptureInterface::endCapture()
{
    if (session_ && session_->video.feed) {
        session_->video.feed->captureTo(nullptr);
    }
    if (session_ && session_->audio.feed) {
        session_->audio.feed->captureTo(nullptr);
    }
    lacksDevice_ = false;
    if (const auto ended = std::exchange(recorder_, nullptr)) {
        const bool isThrough = ended->finish(kEndPatience);
        captured_ = ended->captured();
        dropped_ = ended->dropped();
        if (!isThrough) { // it goes on by itself, as soon as the disk takes it
            lastError_ = {engine::kFailed.code(),
                          "The disk has not taken the whole capture yet. Wait a moment before you use the file."};
        } else if (ended->hasFailed()) {
            lastError_ = ended->error();
        }
    }
}

engine::Status CaptureInterface::StopCapture()
{
    return guarded([&]() -> Status {
        lastError_ = {};
        endCapture();
        return Status(kDone.code(), lastError_.text);
    });
}

engine::Status CaptureInterface::GetFramesCaptured(std::int32_t& count)
{
    count = recorder_ ? recorder_->captured() : captured_;
    return recorder_ && recorder_->hasFailed() ? Status(kDone.code(), recorder_->error().text) : kDone;
}

engine::Status CaptureInterface::GetFramesDropped(std::int32_t& count)
{
    count = recorder_ ? recorder_->dropped() : dropped_;
    return kDone;
}

engine::Status CaptureInterface::ShowCameraSettings(std::int32_t parentWindow)
{
    return guarded([&] {
        const auto camera = session().video.device;
        const DeviceControls before = camera ? camera->controls() : DeviceControls{};
        engine::ControlPanel panel{"Camera Settings", before, [&](std::uint32_t id, std::int32_t value) {
                                       camera->setControl(id, value);
                                       return camera->controls();
                                   }};
        if (!runPanel(parentWindow, panel)) {
            for (const auto& control : before) {
                camera->setControl(control.id, control.value);
            }
        }
    });
}

engine::Status CaptureInterface::ShowVideoSettings(std::int32_t parentWindow, std::int16_t& result)
{
    enum : std::int16_t { kNothingDone, kDoneSo, kNoDialogue };
    result = kNothingDone;
    return guarded([&] {
        const auto camera = session().video.device;
        const DeviceControls formats = camera ? camera->formats() : DeviceControls{};
        if (formats.empty()) {
            result = kNoDialogue;
            return;
        }
        engine::ControlPanel panel{"Video Settings", formats};
        if (runPanel(parentWindow, panel)) {
            camera->setFormats(panel.controls);
            if (session().video.device == camera) {
                session().video.feed.reset(); // to be opened anew
            }
            result = kDoneSo;
        }
    });
}

engine::Status CaptureInterface::ShowAudioSettings(std::int32_t parentWindow)
{
    enum : std::uint32_t { kLevel, kMute };
    return guarded([&] {
        const auto controls = [](const SoundLevel& level) -> DeviceControls {
            return {{.id = kLevel, .name = "Level", .most = 400, .normal = 100, .value = level.percent, .unit = "%"},
                    {.id = kMute,
                     .name = "Mute",
                     .kind = engine::DeviceControl::Kind::kSwitch,
                     .value = level.isMuted ? 1 : 0}};
        };
        const auto take = [&](const SoundLevel& level) {
            session().level = level;
            if (session().audio.feed) {
                session().audio.feed->setLevel(level);
            }
        };
        const SoundLevel before = session().level;
        engine::ControlPanel panel{"Audio Settings", controls(before), [&](std::uint32_t id, std::int32_t value) {
                                       SoundLevel level = session().level;
                                       level.percent = id == kLevel ? value : level.percent;
                                       level.isMuted = id == kMute ? value != 0 : level.isMuted;
                                       take(level);
                                       return controls(level);
                                   }};
        if (!runPanel(parentWindow, panel)) {
            take(before);
        }
    });
}

engine::Status CaptureInterface::ShowAudioFormats(std::int32_t parentWindow)
{
    return guarded([&] {
        using Control = engine::DeviceControl;
        Control rate{.id = 0, .name = "Samples a second", .kind = Control::Kind::kChoice, .normal = 48000};
        rate.value = session().soundRate;
        for (const int hertz : {8000, 11025, 16000, 22050, 32000, 44100, 48000, 96000}) {
            rate.choices.push_back({hertz, std::to_string(hertz)});
        }
        Control channels{.id = 1, .name = "Channels", .kind = Control::Kind::kChoice, .normal = 2};
        channels.value = session().channels;
        channels.choices = {{1, "Mono"}, {2, "Stereo"}};
        engine::ControlPanel panel{"Audio Formats", {rate, channels}};
        if (runPanel(parentWindow, panel)) {
            Session& now = session();
            now.channels = panel.controls[1].value;
            if (std::exchange(now.soundRate, panel.controls[0].value) != now.soundRate && now.audio.feed) {
                now.audio.feed.reset();
                openAudio();
            }
        }
    });
}

engine::Status CaptureInterface::TakeSnap(Text path, std::int16_t width, std::int16_t height)
{
    return guarded([&]() -> Status {
        const SharedFrame frame = session().video.feed ? session().video.feed->newest() : nullptr;
        if (!frame) {
            return Status(engine::kFailed.code(), "There is no picture to take a snap of.");
        }
        const PictureSize size =
            width > 0 && height > 0 ? PictureSize{width, height} : PictureSize{frame->width, frame->height};
        PictureFacts facts;
        facts.width = frame->width;
        facts.height = frame->height;
        engine::PixelCanvas canvas;
        canvas.take(size.width, size.height, pixelsOf(frame, facts, size));
        errno = 0;
        if (!saveBitmap(canvas, size, std::string(path))) {
            const WriteError refusal = refusedBy(errno != 0 ? errno : EIO, std::string(path));
            return Status(refusal.code, refusal.text);
        }
        return kDone;
    });
}

} // namespace twcore
