#pragma once

// Devices of the machine, through the media libraries' own library of devices. It is loaded when it is first asked for:
// nobody who captures nothing waits for it or needs it.

#include "twcore/capture/capture_device.h"

namespace twcore {

/// Cameras, then the screen; sound servers' sources, then the sound cards' own. Takes what drivers and servers take to
/// answer; any thread. `canAsk` is false where the library is missing.
DeviceList libraryDevices();

/// Makes names that stand twice different: "Camera", "Camera (2)".
void tellApart(DeviceList& devices);

} // namespace twcore
