#pragma once

// What a camera of Linux tells of itself beside its pictures: the driver's controls, and the sizes and rates it offers.

#include "twcore/capture/capture_device.h"

#include <string>
#include <vector>

namespace twcore {

/// One way in which a camera gives pictures.
struct CameraFormat {
    std::string input; // as the device library names the form of the pictures
    bool isCompressed = false;
    PictureSize size;
    AVRational rate{30, 1};
};

class V4l2Device {
public:
    /// Like ioctl: 0, or -1 with errno.
    using Ask = int (*)(int descriptor, unsigned long request, void* argument);

    /// path: of the device's file. `ask` stands in for the system's own.
    explicit V4l2Device(std::string path, Ask ask = nullptr);

    /// As they are now; those that nobody can set by a number are left out. Empty when the driver does not answer.
    DeviceControls controls() const;
    void set(std::uint32_t id, std::int32_t value) const;
    /// Each size and rate once, uncompressed where the driver offers that, small pictures first. Sizes that a driver
    /// offers by steps are told by the usual ones.
    std::vector<CameraFormat> formats() const;

private:
    class Descriptor;

    std::string path_;
    Ask ask_;
};

} // namespace twcore
