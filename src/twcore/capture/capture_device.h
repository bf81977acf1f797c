#pragma once

// Cameras and microphones as the engine sees them, whatever stands behind: a device that can be opened and set, and the
// source of pictures or samples that it is while it is open.

#include "engine/control_panel.h"
#include "twcore/capture/capture_clock.h"
#include "twcore/media/orientation.h"

#include <memory>
#include <string>
#include <vector>

namespace twcore {

enum class DeviceNews {
    kNothing, // not yet
    kRead,
    kGone // it has been pulled out, or gives errors only
};

/// An open camera. One thread reads; `size` and `rate` stay what they were at the opening.
class OpenCamera {
public:
    virtual ~OpenCamera() = default;
    virtual PictureSize size() const = 0;
    /// Frames a second as told by the driver.
    virtual AVRational rate() const = 0;
    /// The next picture and when it was taken. Waits a little, 50 ms at most.
    virtual DeviceNews read(SharedFrame& picture, CaptureTime& taken) = 0;
};

/// An open microphone, likewise.
class OpenMicrophone {
public:
    virtual ~OpenMicrophone() = default;
    /// Samples a second.
    virtual int rate() const = 0;
    /// The next samples, interleaved stereo whatever the device has, and when the first was taken.
    virtual DeviceNews read(std::vector<float>& samples, CaptureTime& taken) = 0;
};

using DeviceControls = std::vector<engine::DeviceControl>;

/// A camera that may be opened. Interface thread, but for `open`, which may be called on another and waits as long as
/// the driver does. What is set holds until the object is gone.
class Camera {
public:
    virtual ~Camera() = default;
    /// nullptr when the driver refuses.
    virtual std::unique_ptr<OpenCamera> open() const = 0;
    /// What takes effect at once; empty where the driver offers nothing.
    virtual DeviceControls controls() { return {}; }
    virtual void setControl(std::uint32_t, std::int32_t) {}
    /// What is chosen ahead of the opening: the size, the rate.
    virtual DeviceControls formats() { return {}; }
    virtual void setFormats(const DeviceControls&) {}
};

/// A microphone that may be opened, likewise.
class Microphone {
public:
    virtual ~Microphone() = default;
    /// At a rate of 8,000 to 192,000; a device that has another is opened at what it has.
    virtual std::unique_ptr<OpenMicrophone> open(int rate) const = 0;
};

/// Names are what people see, no two alike in a list.
struct CameraEntry {
    std::string name;
    bool isScreen = false;
    std::shared_ptr<Camera> camera = nullptr;
};
struct MicrophoneEntry {
    std::string name;
    std::shared_ptr<Microphone> microphone = nullptr;
};
struct DeviceList {
    std::vector<CameraEntry> cameras; // the screen last
    std::vector<MicrophoneEntry> microphones;
    bool canAsk = true; // false: this machine lacks the library that knows devices
};

} // namespace twcore
