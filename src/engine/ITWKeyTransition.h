#pragma once

// The key colour of an overlay, held by the "DxtKey" transition of the same sequence number: what has this colour is
// transparent over the whole overlay, whatever the transition's times. An overlay without transition is opaque.
// All operations come from the interface thread and return at once.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWKeyTransition {
public:
    virtual ~ITWKeyTransition() = default;

    /// Each value 0 to 255.
    virtual Status SetKeyColor(Handle track, std::int16_t seq, std::int16_t red, std::int16_t green, std::int16_t blue,
                               Bool16& ok) = 0;
    /// 0 when there is no such transition.
    virtual Status GetKeyRed(Handle track, std::int16_t seq, std::int16_t& value) = 0;
    virtual Status GetKeyGreen(Handle track, std::int16_t seq, std::int16_t& value) = 0;
    virtual Status GetKeyBlue(Handle track, std::int16_t seq, std::int16_t& value) = 0;
    /// "KeyType" 0 is the key by colour, the only one; other names are kept and mean nothing.
    virtual Status SetKeyParameter(Handle track, std::int16_t seq, Text name, std::int32_t value, Bool16& ok) = 0;
    /// Drops the parameters and puts the colour back to black.
    virtual Status ClearKeyParameters(Handle track, std::int16_t seq) = 0;
};

} // namespace engine
