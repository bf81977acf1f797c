#include "twcore/capture/v4l2_device.h"

#if __has_include(<linux/videodev2.h>)

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <tuple>
#include <unistd.h>

namespace twcore {

namespace {

using engine::DeviceControl;

int askSystem(int descriptor, unsigned long request, void* argument)
{
    int result = 0;
    do {
        result = ::ioctl(descriptor, request, argument);
    } while (result < 0 && errno == EINTR);
    return result;
}

template <std::size_t size>
std::string textOf(const __u8 (&bytes)[size])
{
    const auto* const text = reinterpret_cast<const char*>(bytes);
    return {text, ::strnlen(text, size)};
}

struct InputName {
    std::uint32_t code;
    const char* name;
    bool isCompressed;
};
constexpr std::array<InputName, 9> kInputs{{{V4L2_PIX_FMT_YUYV, "yuyv422", false},
                                            {V4L2_PIX_FMT_UYVY, "uyvy422", false},
                                            {V4L2_PIX_FMT_NV12, "nv12", false},
                                            {V4L2_PIX_FMT_YUV420, "yuv420p", false},
                                            {V4L2_PIX_FMT_BGR24, "bgr24", false},
                                            {V4L2_PIX_FMT_RGB24, "rgb24", false},
                                            {V4L2_PIX_FMT_GREY, "gray", false},
                                            {V4L2_PIX_FMT_MJPEG, "mjpeg", true},
                                            {V4L2_PIX_FMT_JPEG, "mjpeg", true}}};

bool hasChoices(const v4l2_queryctrl& told)
{
    return told.type == V4L2_CTRL_TYPE_MENU || told.type == V4L2_CTRL_TYPE_INTEGER_MENU;
}

DeviceControl controlOf(const v4l2_queryctrl& told)
{
    DeviceControl control;
    control.id = told.id;
    control.name = textOf(told.name);
    control.least = told.minimum;
    control.most = told.maximum;
    control.step = std::max(1, told.step);
    control.normal = control.value = told.default_value;
    control.isActive =
        (told.flags & (V4L2_CTRL_FLAG_INACTIVE | V4L2_CTRL_FLAG_READ_ONLY | V4L2_CTRL_FLAG_GRABBED)) == 0;
    control.kind = told.type == V4L2_CTRL_TYPE_BOOLEAN ? DeviceControl::Kind::kSwitch
                   : hasChoices(told)                  ? DeviceControl::Kind::kChoice
                                                       : DeviceControl::Kind::kRange;
    return control;
}

/// Drivers have been seen that offer a rate of nothing at all.
bool isRate(const v4l2_fract& interval) { return interval.numerator > 0 && interval.denominator > 0; }

} // namespace

class V4l2Device::Descriptor {
public:
    Descriptor(const V4l2Device& device)
        : ask_(device.ask_), descriptor_(::open(device.path_.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC))
    {}
    ~Descriptor()
    {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    template <class Argument>
    bool ask(unsigned long request, Argument& argument) const
    {
        return descriptor_ >= 0 && ask_(descriptor_, request, &argument) == 0;
    }

    std::vector<PictureSize> sizes(std::uint32_t code) const;
    std::vector<AVRational> rates(std::uint32_t code, PictureSize size) const;
    std::vector<DeviceControl::Choice> choices(const v4l2_queryctrl& told) const;

private:
    Ask ask_;
    int descriptor_;
};

std::vector<PictureSize> V4l2Device::Descriptor::sizes(std::uint32_t code) const
{
    constexpr std::array<PictureSize, 7> kUsual{
        {{160, 120}, {320, 240}, {640, 480}, {720, 480}, {720, 576}, {1280, 720}, {1920, 1080}}};
    std::vector<PictureSize> sizes;
    v4l2_frmsizeenum told{};
    for (told.pixel_format = code; ask(VIDIOC_ENUM_FRAMESIZES, told); ++told.index) {
        if (told.type == V4L2_FRMSIZE_TYPE_DISCRETE) {
            sizes.push_back({static_cast<int>(told.discrete.width), static_cast<int>(told.discrete.height)});
            continue;
        }
        const auto& step = told.stepwise;
        const auto fits = [](unsigned value, unsigned least, unsigned most, unsigned by) {
            return value >= least && value <= most && (by < 2 || (value - least) % by == 0);
        };
        for (const auto& size : kUsual) {
            if (fits(unsigned(size.width), step.min_width, step.max_width, step.step_width)
                && fits(unsigned(size.height), step.min_height, step.max_height, step.step_height)) {
                sizes.push_back(size);
            }
        }
        break;
    }
    return sizes;
}

std::vector<AVRational> V4l2Device::Descriptor::rates(std::uint32_t code, PictureSize size) const
{
    std::vector<AVRational> rates;
    v4l2_frmivalenum told{};
    told.pixel_format = code;
    told.width = static_cast<__u32>(size.width);
    told.height = static_cast<__u32>(size.height);
    for (; ask(VIDIOC_ENUM_FRAMEINTERVALS, told); ++told.index) {
        const v4l2_fract& interval = told.type == V4L2_FRMIVAL_TYPE_DISCRETE ? told.discrete : told.stepwise.min;
        if (isRate(interval)) {
            rates.push_back({static_cast<int>(interval.denominator), static_cast<int>(interval.numerator)});
        }
        if (told.type != V4L2_FRMIVAL_TYPE_DISCRETE) {
            break;
        }
    }
    return rates;
}

std::vector<DeviceControl::Choice> V4l2Device::Descriptor::choices(const v4l2_queryctrl& told) const
{
    std::vector<DeviceControl::Choice> choices;
    constexpr std::int64_t kMost = 256;
    const std::int64_t last = std::min<std::int64_t>(told.maximum, std::int64_t{told.minimum} + kMost);
    for (std::int64_t index = told.minimum; index <= last; ++index) {
        v4l2_querymenu entry{};
        entry.id = told.id;
        entry.index = static_cast<__u32>(index);
        if (ask(VIDIOC_QUERYMENU, entry)) { // menus have holes
            choices.push_back({static_cast<std::int32_t>(index),
                               told.type == V4L2_CTRL_TYPE_MENU ? textOf(entry.name) : std::to_string(entry.value)});
        }
    }
    return choices;
}

V4l2Device::V4l2Device(std::string path, Ask ask) : path_(std::move(path)), ask_(ask != nullptr ? ask : askSystem) {}

DeviceControls V4l2Device::controls() const
{
    const Descriptor device(*this);
    DeviceControls controls;
    v4l2_queryctrl told{};
    for (told.id = V4L2_CTRL_FLAG_NEXT_CTRL; device.ask(VIDIOC_QUERYCTRL, told); told.id |= V4L2_CTRL_FLAG_NEXT_CTRL) {
        const bool isNumber = told.type == V4L2_CTRL_TYPE_INTEGER || told.type == V4L2_CTRL_TYPE_BOOLEAN;
        if ((told.flags & V4L2_CTRL_FLAG_DISABLED) != 0 || (!isNumber && !hasChoices(told))) {
            continue;
        }
        DeviceControl control = controlOf(told);
        if (hasChoices(told)) {
            control.choices = device.choices(told);
        }
        v4l2_control value{told.id, 0};
        if (device.ask(VIDIOC_G_CTRL, value)) {
            control.value = value.value;
        }
        controls.push_back(std::move(control));
    }
    return controls;
}

void V4l2Device::set(std::uint32_t id, std::int32_t value) const
{
    v4l2_control told{id, value};
    (void)Descriptor(*this).ask(VIDIOC_S_CTRL, told); // one that refuses keeps its value, which is read again
}

std::vector<CameraFormat> V4l2Device::formats() const
{
    const Descriptor device(*this);
    std::vector<CameraFormat> formats;
    v4l2_fmtdesc told{};
    for (told.type = V4L2_BUF_TYPE_VIDEO_CAPTURE; device.ask(VIDIOC_ENUM_FMT, told); ++told.index) {
        const auto input = std::ranges::find(kInputs, told.pixelformat, &InputName::code);
        if (input == kInputs.end()) {
            continue;
        }
        for (const auto& size : device.sizes(told.pixelformat)) {
            for (const auto& rate : device.rates(told.pixelformat, size)) {
                formats.push_back({input->name, input->isCompressed, size, rate});
            }
        }
    }
    const auto rank = [](const CameraFormat& format) {
        return std::tuple(format.size.width * format.size.height, format.size.width, av_q2d(format.rate));
    };
    std::ranges::stable_sort(formats, [&](const auto& a, const auto& b) {
        return std::tuple(rank(a), a.isCompressed) < std::tuple(rank(b), b.isCompressed);
    });
    const auto isSame = [&](const CameraFormat& a, const CameraFormat& b) { return rank(a) == rank(b); };
    formats.erase(std::unique(formats.begin(), formats.end(), isSame), formats.end());
    return formats;
}

} // namespace twcore

#else // no system that has such cameras

namespace twcore {

V4l2Device::V4l2Device(std::string path, Ask ask) : path_(std::move(path)), ask_(ask) {}
DeviceControls V4l2Device::controls() const { return {}; }
void V4l2Device::set(std::uint32_t, std::int32_t) const {}
std::vector<CameraFormat> V4l2Device::formats() const { return {}; }

} // namespace twcore

#endif
