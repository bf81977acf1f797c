// A camera's driver as the engine reads it, from answers that the test gives in its place.

#include "twcore/capture/library_devices.h"
#include "twcore/capture/v4l2_device.h"

#include <gtest/gtest.h>

#if __has_include(<linux/videodev2.h>)
#include <cstring>
#include <linux/videodev2.h>
#include <map>
#include <vector>

using namespace twcore;
using Kind = engine::DeviceControl::Kind;

namespace {

std::map<unsigned, int> setOnDevice;

template <class Entry>
int answer(const std::vector<Entry>& all, unsigned index, Entry& told)
{
    if (index >= all.size()) {
        return -1;
    }
    told = all[index];
    return 0;
}

v4l2_queryctrl control(unsigned id, unsigned type, const char* name, int least, int most, int normal,
                       unsigned flags = 0)
{
    v4l2_queryctrl made{};
    made.id = id;
    made.type = type;
    std::strcpy(reinterpret_cast<char*>(made.name), name);
    made.minimum = least;
    made.maximum = most;
    made.step = 1;
    made.default_value = normal;
    made.flags = flags;
    return made;
}

int queryControl(v4l2_queryctrl& asked)
{
    static const std::vector<v4l2_queryctrl> controls{
        control(10, V4L2_CTRL_TYPE_CTRL_CLASS, "User Controls", 0, 0, 0),
        control(11, V4L2_CTRL_TYPE_INTEGER, "Brightness", -64, 64, 5),
        control(12, V4L2_CTRL_TYPE_BOOLEAN, "White Balance, Automatic", 0, 1, 1),
        control(13, V4L2_CTRL_TYPE_INTEGER, "Exposure Time", 1, 5000, 157, V4L2_CTRL_FLAG_INACTIVE),
        control(14, V4L2_CTRL_TYPE_MENU, "Auto Exposure", 0, 3, 3),
        control(15, V4L2_CTRL_TYPE_BUTTON, "Reset", 0, 0, 0),
        control(16, V4L2_CTRL_TYPE_INTEGER, "Broken", 0, 1, 0, V4L2_CTRL_FLAG_DISABLED)};
    const unsigned behind = asked.id & ~unsigned(V4L2_CTRL_FLAG_NEXT_CTRL);
    for (const auto& known : controls) {
        if (known.id > behind) {
            asked = known;
            return 0;
        }
    }
    return -1;
}

int queryMenu(v4l2_querymenu& asked)
{
    const char* const name = asked.index == 1 ? "Manual Mode" : asked.index == 3 ? "Aperture Priority Mode" : nullptr;
    if (name == nullptr) {
        return -1;
    }
    std::strcpy(reinterpret_cast<char*>(asked.name), name);
    return 0;
}

int frameSize(v4l2_frmsizeenum& asked)
{
    const unsigned index = asked.index;
    if (asked.pixel_format == V4L2_PIX_FMT_NV12) { // by steps
        asked.type = V4L2_FRMSIZE_TYPE_STEPWISE;
        asked.stepwise = {320, 700, 2, 240, 500, 2};
        return index == 0 ? 0 : -1;
    }
    asked.type = V4L2_FRMSIZE_TYPE_DISCRETE;
    asked.discrete = index == 0 ? v4l2_frmsize_discrete{1280, 720} : v4l2_frmsize_discrete{640, 480};
    return index < 2 ? 0 : -1;
}

int frameInterval(v4l2_frmivalenum& asked)
{
    const bool isSlow = asked.pixel_format == V4L2_PIX_FMT_YUYV && asked.width == 1280;
    const std::vector<v4l2_fract> intervals =
        isSlow ? std::vector<v4l2_fract>{{1, 10}} : std::vector<v4l2_fract>{{1, 30}, {0, 0}, {1, 15}};
    asked.type = V4L2_FRMIVAL_TYPE_DISCRETE;
    return answer(intervals, asked.index, asked.discrete);
}

int format(v4l2_fmtdesc& asked)
{
    const std::vector<unsigned> codes{V4L2_PIX_FMT_MJPEG, v4l2_fourcc('O', 'D', 'D', ' '), V4L2_PIX_FMT_YUYV,
                                      V4L2_PIX_FMT_NV12};
    return answer(codes, asked.index, asked.pixelformat);
}

int driver(int, unsigned long request, void* argument)
{
    switch (request) {
    case VIDIOC_QUERYCTRL:
        return queryControl(*static_cast<v4l2_queryctrl*>(argument));
    case VIDIOC_QUERYMENU:
        return queryMenu(*static_cast<v4l2_querymenu*>(argument));
    case VIDIOC_G_CTRL: {
        auto& value = *static_cast<v4l2_control*>(argument);
        value.value = setOnDevice.contains(value.id) ? setOnDevice[value.id] : 1;
        return 0;
    }
    case VIDIOC_S_CTRL: {
        const auto& value = *static_cast<v4l2_control*>(argument);
        setOnDevice[value.id] = value.value;
        return 0;
    }
    case VIDIOC_ENUM_FMT:
        return format(*static_cast<v4l2_fmtdesc*>(argument));
    case VIDIOC_ENUM_FRAMESIZES:
        return frameSize(*static_cast<v4l2_frmsizeenum*>(argument));
    case VIDIOC_ENUM_FRAMEINTERVALS:
        return frameInterval(*static_cast<v4l2_frmivalenum*>(argument));
    default:
        return -1;
    }
}

} // namespace

TEST(V4l2Device, ControlsWithTheirRangesAndChoices)
{
    const V4l2Device device("/dev/null", driver);
    const DeviceControls controls = device.controls();
    ASSERT_EQ(controls.size(), 4u);
    EXPECT_EQ(std::tuple(controls[0].name, controls[0].least, controls[0].most, controls[0].normal, controls[0].value),
              std::tuple("Brightness", -64, 64, 5, 1));
    EXPECT_EQ(controls[1].kind, Kind::kSwitch);
    EXPECT_FALSE(controls[2].isActive);
    ASSERT_EQ(controls[3].choices.size(), 2u);
    EXPECT_EQ(std::pair(controls[3].choices[1].value, controls[3].choices[1].name),
              std::pair(3, std::string("Aperture Priority Mode")));
    device.set(11, -20);
    EXPECT_EQ(device.controls()[0].value, -20);
    EXPECT_TRUE(V4l2Device("/no/such/device", driver).controls().empty());
}

TEST(V4l2Device, EachSizeAndRateOnceUncompressedWhereItCanBe)
{
    std::string all;
    for (const auto& format : V4l2Device("/dev/null", driver).formats()) {
        all += format.input + " " + std::to_string(format.size.width) + "@" + std::to_string(format.rate.num) + "\n";
    }
    EXPECT_EQ(all, "nv12 320@15\nnv12 320@30\nyuyv422 640@15\nyuyv422 640@30\n"
                   "yuyv422 1280@10\nmjpeg 1280@15\nmjpeg 1280@30\n");
}
#endif

TEST(Devices, NamesThatStandTwiceAreToldApart)
{
    twcore::DeviceList devices;
    devices.cameras = {{"Camera"}, {"Camera"}, {"Screen"}, {"Camera"}};
    twcore::tellApart(devices);
    EXPECT_EQ(devices.cameras[1].name, "Camera (2)");
    EXPECT_EQ(devices.cameras[2].name, "Screen");
    EXPECT_EQ(devices.cameras[3].name, "Camera (3)");
}
