#pragma once

// The trap of the routines of `moduleEdit`.

#include "core/trap.h"

#include <functional>

namespace editing {

/// What came of a step over a range.
struct Answer {
    bool flag = true;    // the engine's, of the last change; true when there was none to make
    bool isWhole = true; // no error was trapped on the way
};

/// True when the body came to its end.
inline bool trapped(const char* routine, const std::function<void()>& body)
{
    return Trapped("moduleEdit", routine, body);
}

} // namespace editing
