#pragma once

// The devices that sound goes out by: the system's by way of SDL, and the one that plays to nobody.

#include "twcore/play/audio_sink.h"

#include <memory>

namespace twcore {

/// The system's sound device, or, where there is none, one that plays to nobody at a steady pace.
std::unique_ptr<AudioSink> openAudio(AudioSource& source);

} // namespace twcore
