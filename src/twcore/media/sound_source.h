#pragma once

// The sound of one stream as samples of the mix: interleaved stereo floats, full scale 1, at the rate of the mix.
//
// Sample n is the one at media time n / rate, however the reader came there. Outside the stream there is silence.
// A source serves one thread.

#include "twcore/media/media_file.h"

#include <cstdint>
#include <memory>
#include <span>

namespace twcore {

class SoundSource {
public:
    virtual ~SoundSource() = default;

    /// Fills `out`, two floats a sample, from sample number `first`, which may be below 0.
    virtual void read(std::int64_t first, std::span<float> out) = 0;

    /// The file could not be opened, or its disk failed: what is read from here on may be silent for no better cause.
    virtual bool isBroken() const noexcept = 0;
};

/// A reader of the file's sound at `rate` samples a second. The file offers sound.
std::unique_ptr<SoundSource> openSound(MediaFilePtr media, int rate, const Patience& patience);

} // namespace twcore
