#include "twcore/capture/library_devices.h"

#include "twcore/capture/v4l2_device.h"
#include "twcore/media/decoder.h"

extern "C" {
#include <libavdevice/avdevice.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <map>
#include <optional>
#include <thread>
#include <utility>

namespace twcore {

namespace {

/// The library of devices; the functions are good as long as the process.
struct Library {
    decltype(&avdevice_register_all) registerAll = nullptr;
    decltype(&avdevice_list_input_sources) list = nullptr;
    decltype(&avdevice_free_list_devices) free = nullptr;

    bool isThere() const { return registerAll != nullptr && list != nullptr && free != nullptr; }
};

const Library& library()
{
    static const Library loaded = [] {
        Library found;
        const std::string name = "libavdevice.so." + std::to_string(LIBAVDEVICE_VERSION_MAJOR);
        void* const handle = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (handle != nullptr) {
            found.registerAll = reinterpret_cast<decltype(found.registerAll)>(::dlsym(handle, "avdevice_register_all"));
            found.list = reinterpret_cast<decltype(found.list)>(::dlsym(handle, "avdevice_list_input_sources"));
            found.free = reinterpret_cast<decltype(found.free)>(::dlsym(handle, "avdevice_free_list_devices"));
        }
        if (found.isThere()) {
            found.registerAll();
        }
        return found;
    }();
    return loaded;
}

/// Where a device is found: the library's format, the address in it, and how it is to be opened.
struct Address {
    std::string format;
    std::string device;
    std::map<std::string, std::string> options;
};

struct Found {
    std::string device;
    std::string name;
};

std::vector<Found> list(const char* format)
{
    std::vector<Found> found;
    const AVInputFormat* const input = av_find_input_format(format);
    AVDeviceInfoList* devices = nullptr;
    if (input != nullptr && library().list(input, nullptr, nullptr, &devices) >= 0 && devices != nullptr) {
        for (int i = 0; i < devices->nb_devices; ++i) {
            const AVDeviceInfo& info = *devices->devices[i];
            std::string name = info.device_description != nullptr ? info.device_description : "";
            std::ranges::replace(name, '\n', ' ');
            const std::string device = info.device_name != nullptr ? info.device_name : "";
            found.push_back({device, name.empty() ? device : name});
        }
    }
    if (devices != nullptr) {
        library().free(&devices);
    }
    return found;
}

constexpr CaptureTime kReadWait = kCaptureSecond / 20;

/// An open device of the library, and the decoder of what it gives.
class Input {
public:
    static std::unique_ptr<Input> open(const Address& address)
    {
        std::unique_ptr<Input> input(new Input);
        return input->begin(address) ? std::move(input) : nullptr;
    }
    ~Input() { avformat_close_input(&context_); }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    const AVStream& stream() const { return *context_->streams[0]; }

    /// The next decoded frame and the moment of its stamp.
    DeviceNews read(FramePtr& frame, CaptureTime& taken);

private:
    Input() = default;
    bool begin(const Address& address);

    AVFormatContext* context_ = nullptr;
    std::unique_ptr<Decoder> decoder_;
    PacketPtr packet_ = makePacket();
    std::optional<CaptureTime> failingSince_;
};

bool Input::begin(const Address& address)
{
    const AVInputFormat* const format = av_find_input_format(address.format.c_str());
    context_ = avformat_alloc_context();
    if (format == nullptr || context_ == nullptr) {
        return false;
    }
    context_->flags |= AVFMT_FLAG_NONBLOCK;
    AVDictionary* options = nullptr;
    for (const auto& [key, value] : address.options) {
        av_dict_set(&options, key.c_str(), value.c_str(), 0);
    }
    const int result = avformat_open_input(&context_, address.device.c_str(), format, &options);
    av_dict_free(&options);
    if (result < 0 || context_->nb_streams == 0) {
        return false;
    }
    decoder_ = Decoder::open(stream(), 1);
    return decoder_ != nullptr;
}

DeviceNews Input::read(FramePtr& frame, CaptureTime& taken)
{
    const CaptureTime deadline = captureNow() + kReadWait;
    while ((frame = decoder_->receive()) == nullptr) {
        const int result = av_read_frame(context_, packet_.get());
        if (result >= 0) {
            failingSince_.reset();
            decoder_->send(packet_.get());
            av_packet_unref(packet_.get());
            continue;
        }
        if (result != AVERROR(EAGAIN)) {
            constexpr CaptureTime kPatience = kCaptureSecond; // a single fault is passed over
            failingSince_ = failingSince_.value_or(captureNow());
            if (result == AVERROR(ENODEV) || captureNow() - *failingSince_ > kPatience) {
                return DeviceNews::kGone;
            }
        }
        if (captureNow() >= deadline) {
            return DeviceNews::kNothing;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    const std::int64_t stamp =
        frame->best_effort_timestamp != AV_NOPTS_VALUE ? frame->best_effort_timestamp : frame->pts;
    taken = stamp == AV_NOPTS_VALUE ? captureNow()
                                    : fromWallClock(av_rescale_q(stamp, stream().time_base, {1, int(kCaptureSecond)}));
    return DeviceNews::kRead;
}

class LibraryPictures final : public OpenCamera {
public:
    explicit LibraryPictures(std::unique_ptr<Input> input) : input_(std::move(input)) {}

    PictureSize size() const override { return {input_->stream().codecpar->width, input_->stream().codecpar->height}; }
    AVRational rate() const override
    {
        const AVRational told = input_->stream().avg_frame_rate;
        constexpr double kMost = 240;
        return told.num > 0 && told.den > 0 && av_q2d(told) <= kMost ? told : AVRational{30, 1};
    }
    DeviceNews read(SharedFrame& picture, CaptureTime& taken) override
    {
        FramePtr frame;
        const DeviceNews news = input_->read(frame, taken);
        if (news == DeviceNews::kRead) {
            picture = shareFrame(std::move(frame));
        }
        return news;
    }

private:
    std::unique_ptr<Input> input_;
};

class LibrarySound final : public OpenMicrophone {
public:
    explicit LibrarySound(std::unique_ptr<Input> input) : input_(std::move(input)) {}

    int rate() const override { return input_->stream().codecpar->sample_rate; }
    DeviceNews read(std::vector<float>& samples, CaptureTime& taken) override
    {
        FramePtr frame;
        const DeviceNews news = input_->read(frame, taken);
        return news != DeviceNews::kRead || convert(*frame, samples) ? news : DeviceNews::kNothing;
    }

private:
    bool convert(AVFrame& frame, std::vector<float>& samples)
    {
        if (!toStereo_) {
            AVChannelLayout stereo;
            av_channel_layout_default(&stereo, 2);
            SwrContext* made = nullptr;
            swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, frame.sample_rate, &frame.ch_layout,
                                static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
            toStereo_.reset(made);
            if (!toStereo_ || swr_init(toStereo_.get()) < 0) {
                toStereo_.reset();
                return false;
            }
        }
        samples.resize(static_cast<std::size_t>(frame.nb_samples) * 2);
        auto* out = reinterpret_cast<std::uint8_t*>(samples.data());
        const auto** const in = const_cast<const std::uint8_t**>(frame.extended_data);
        const int made = swr_convert(toStereo_.get(), &out, frame.nb_samples, in, frame.nb_samples);
        samples.resize(static_cast<std::size_t>(std::max(0, made)) * 2);
        return made > 0;
    }

    std::unique_ptr<Input> input_;
    SwrPtr toStereo_;
};

std::unique_ptr<OpenCamera> openPictures(const Address& address)
{
    auto input = Input::open(address);
    return input && input->stream().codecpar->width > 1 ? std::make_unique<LibraryPictures>(std::move(input)) : nullptr;
}

std::string rateText(AVRational rate) { return std::to_string(rate.num) + "/" + std::to_string(rate.den); }

/// A camera of Linux. Its driver's way of giving pictures that comes nearest to 640 x 480 at 30 is taken at first.
class LinuxCamera final : public Camera {
public:
    explicit LinuxCamera(std::string path) : device_(path), path_(std::move(path)) {}

    std::unique_ptr<OpenCamera> open() const override
    {
        Address address{"v4l2", path_, {{"timestamps", "abs"}}};
        const auto& formats = known();
        if (!formats.empty()) {
            const CameraFormat& format = formats[chosen()];
            address.options["input_format"] = format.input;
            address.options["video_size"] =
                std::to_string(format.size.width) + "x" + std::to_string(format.size.height);
            address.options["framerate"] = rateText(format.rate);
        }
        auto pictures = openPictures(address);
        // A driver that offers what it then refuses is asked for whatever it gives by itself.
        return pictures || formats.empty() ? std::move(pictures)
                                           : openPictures({"v4l2", path_, {{"timestamps", "abs"}}});
    }

    DeviceControls controls() override { return device_.controls(); }
    void setControl(std::uint32_t id, std::int32_t value) override { device_.set(id, value); }

    DeviceControls formats() override
    {
        const auto& formats = known();
        if (formats.empty()) {
            return {};
        }
        engine::DeviceControl picture{.name = "Picture", .kind = engine::DeviceControl::Kind::kChoice};
        picture.normal = static_cast<std::int32_t>(usual());
        picture.value = static_cast<std::int32_t>(chosen());
        for (std::size_t i = 0; i < formats.size(); ++i) {
            const CameraFormat& format = formats[i];
            std::string rate = std::to_string(av_q2d(format.rate));
            rate.erase(rate.find_last_not_of('0') + 1);
            rate.erase(rate.find_last_not_of('.') + 1);
            picture.choices.push_back({static_cast<std::int32_t>(i), std::to_string(format.size.width) + " x "
                                                                         + std::to_string(format.size.height) + ", "
                                                                         + rate + " frames a second"});
        }
        return {picture};
    }

    void setFormats(const DeviceControls& formats) override
    {
        if (!formats.empty() && std::size_t(formats.front().value) < known().size()) {
            chosen_ = static_cast<std::size_t>(formats.front().value);
        }
    }

private:
    const std::vector<CameraFormat>& known() const
    {
        if (!formats_) {
            formats_ = device_.formats();
        }
        return *formats_;
    }
    std::size_t usual() const
    {
        const auto distance = [](const CameraFormat& format) {
            return std::tuple(std::abs(format.size.width - 640) + std::abs(format.size.height - 480),
                              std::abs(av_q2d(format.rate) - 30));
        };
        return static_cast<std::size_t>(std::ranges::min_element(known(), {}, distance) - known().begin());
    }
    std::size_t chosen() const { return chosen_.value_or(usual()); }

    V4l2Device device_;
    std::string path_;
    mutable std::optional<std::vector<CameraFormat>> formats_; // asked for once
    std::optional<std::size_t> chosen_;
};

class Screen final : public Camera {
public:
    explicit Screen(std::string display) : display_(std::move(display)) {}

    std::unique_ptr<OpenCamera> open() const override
    {
        return openPictures({"x11grab",
                             display_,
                             {{"framerate", std::to_string(rate_)}, {"draw_mouse", std::to_string(withPointer_)}}});
    }
    DeviceControls formats() override
    {
        return {{.id = kRate, .name = "Frames a second", .least = 1, .most = 60, .normal = kUsualRate, .value = rate_},
                {.id = kPointer,
                 .name = "Show the mouse pointer",
                 .kind = engine::DeviceControl::Kind::kSwitch,
                 .normal = 1,
                 .value = withPointer_}};
    }
    void setFormats(const DeviceControls& formats) override
    {
        for (const auto& format : formats) {
            (format.id == kRate ? rate_ : withPointer_) = format.value;
        }
    }

private:
    enum : std::uint32_t { kRate, kPointer };
    static constexpr std::int32_t kUsualRate = 30;

    std::string display_;
    std::int32_t rate_ = kUsualRate;
    std::int32_t withPointer_ = 1;
};

class LibraryMicrophone final : public Microphone {
public:
    LibraryMicrophone(std::string format, std::string device) : format_(std::move(format)), device_(std::move(device))
    {}

    std::unique_ptr<OpenMicrophone> open(int rate) const override
    {
        const int blockBytes = rate / 50 * 4; // a fiftieth of a second in two channels of 16 bits
        Address address{format_, device_, {{"sample_rate", std::to_string(rate)}, {"channels", "2"}}};
        if (format_ == "pulse") {
            address.options["fragment_size"] = std::to_string(blockBytes);
            address.options["name"] = "Quillmont";
        }
        auto input = Input::open(address);
        return input && input->stream().codecpar->sample_rate > 0 ? std::make_unique<LibrarySound>(std::move(input))
                                                                  : nullptr;
    }

private:
    std::string format_;
    std::string device_;
};

void addScreen(DeviceList& devices)
{
    const char* const display = std::getenv("DISPLAY");
    const char* const session = std::getenv("XDG_SESSION_TYPE");
    // There the screen belongs to another server, and this one would show black.
    const bool isForeign = session != nullptr && std::string_view(session) == "wayland";
    if (display != nullptr && *display != '\0' && !isForeign && av_find_input_format("x11grab") != nullptr) {
        devices.cameras.push_back({"Screen", true, std::make_shared<Screen>(display)});
    }
}

template <class Entry>
void tellNamesApart(std::vector<Entry>& entries)
{
    std::map<std::string, int> seen;
    for (auto& entry : entries) {
        const int count = ++seen[entry.name];
        if (count > 1) {
            entry.name += " (" + std::to_string(count) + ")";
        }
    }
}

} // namespace

DeviceList libraryDevices()
{
    DeviceList devices;
    devices.canAsk = library().isThere();
    if (!devices.canAsk) {
        return devices;
    }
    for (const auto& found : list("v4l2")) {
        devices.cameras.push_back({found.name, false, std::make_shared<LinuxCamera>(found.device)});
    }
    addScreen(devices);
    for (const auto& found : list("pulse")) {
        devices.microphones.push_back({found.name, std::make_shared<LibraryMicrophone>("pulse", found.device)});
    }
    const bool hasServer = !devices.microphones.empty();
    for (const auto& found : list("alsa")) {
        // One entry for each card, at any rate; the default one is the server's own where there is a server.
        if (found.device.starts_with("plughw:") || (found.device == "default" && !hasServer)) {
            devices.microphones.push_back({found.name, std::make_shared<LibraryMicrophone>("alsa", found.device)});
        }
    }
    return devices;
}

void tellApart(DeviceList& devices)
{
    tellNamesApart(devices.cameras);
    tellNamesApart(devices.microphones);
}

} // namespace twcore
