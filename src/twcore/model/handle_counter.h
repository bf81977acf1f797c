#pragma once

// Where handles come from: one counter that only rises, so that a handle never names a second thing.

#include "engine/types.h"

#include <limits>

namespace twcore {

class HandleCounter {
public:
    /// The next handle, from 1 upwards; 0 for good once they are used up.
    engine::Handle next() noexcept
    {
        return last_ < std::numeric_limits<engine::Handle>::max() ? ++last_ : engine::Handle{0};
    }

private:
    engine::Handle last_ = 0;
};

} // namespace twcore
