#pragma once

// What an encoder tells a movie file of its stream.

#include "twcore/media/ff.h"

namespace twcore {

struct FreeParameters {
    void operator()(AVCodecParameters* parameters) const noexcept { avcodec_parameters_free(&parameters); }
};
using ParametersPtr = std::unique_ptr<AVCodecParameters, FreeParameters>;

/// Throws std::bad_alloc.
template <class Encoder>
ParametersPtr described(const Encoder& encoder)
{
    ParametersPtr parameters(avcodec_parameters_alloc());
    if (!parameters || !encoder.describe(*parameters)) {
        throw std::bad_alloc();
    }
    return parameters;
}

} // namespace twcore
