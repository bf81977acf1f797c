#pragma once

// A capture device's controls as plain data, for a small window that shows them. Interface thread only.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace engine {

/// One thing that can be set on a device. Texts are the driver's own, UTF-8.
struct DeviceControl {
    enum class Kind : std::uint8_t {
        kRange,  // least to most in steps
        kSwitch, // 0 or 1
        kChoice  // the value of one of the choices
    };
    struct Choice {
        std::int32_t value = 0;
        std::string name;
    };

    std::uint32_t id = 0;
    std::string name;
    Kind kind = Kind::kRange;
    std::int32_t least = 0;
    std::int32_t most = 1;
    std::int32_t step = 1;
    std::int32_t normal = 0; // what the device begins with
    std::int32_t value = 0;
    std::string unit = {}; // behind a range's number: "%"; may be empty
    std::vector<Choice> choices = {};
    bool isActive = true; // false: the device takes no value just now, as while another control sets it by itself
};

struct ControlPanel {
    std::string title;
    std::vector<DeviceControl> controls; // empty: the device has none, which the panel says
    /// Hands a value to the device at once and answers all controls as they are then, since one may move others. Empty:
    /// nothing happens before OK.
    std::function<std::vector<DeviceControl>(std::uint32_t id, std::int32_t value)> apply = {};
};

/// Shows a panel to the person, over the window that it was made for.
class ControlPanelHost {
public:
    virtual ~ControlPanelHost() = default;
    /// Modal. True: left with OK, and `panel.controls` hold what the person set. False: cancelled; what was applied is
    /// for the caller to put back.
    virtual bool run(ControlPanel& panel) = 0;
};

} // namespace engine
