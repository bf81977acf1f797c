#pragma once

// What the timeline knows of streams: that they exist, and how long they last. It never sees a file or a decoder.

#include "engine/types.h"

#include <cstdint>

namespace twcore {

struct StreamCatalogue {
    virtual ~StreamCatalogue() = default;

    /// True when the stream exists. One whose file was closed is opened afresh under its old handle.
    virtual bool acquire(engine::Handle stream) = 0;
    /// 0 for a stream that does not exist. Fixed from the moment the stream was opened.
    virtual std::int32_t durationMs(engine::Handle stream) const = 0;
};

} // namespace twcore
