#pragma once

// A camera and a microphone without hardware: a moving pattern with the number of each picture in bars, and a tone with
// a short higher one at each full second, when the pattern flashes. For machines that have no devices, and for tests.

#include "twcore/capture/capture_device.h"

#include <string_view>

namespace twcore {

/// Puts them ahead of the others, as the words in `wish` tell, separated by commas: "camera", "microphone"; "busy" for
/// a camera that does not open, "deaf" for such a microphone; "leaves=N" for a camera that is pulled out N pictures
/// after its opening.
void addTestDevices(DeviceList& devices, std::string_view wish);

} // namespace twcore
