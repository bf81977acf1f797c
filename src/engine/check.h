#pragma once

// The one place where a failure status becomes an error of the program.

#include "engine/runtime_error.h"
#include "engine/status.h"

#include <cstdio>

namespace engine {

/// Raises `RuntimeError` when the call failed; else does nothing. Its number is the status code, but for codes that
/// carry one of the program's own numbers (0x800A0000 and the number), where it is that number.
inline void check(const Status& status)
{
    if (!status.failed()) {
        return;
    }
    std::string text = status.text();
    if (text.empty()) {
        char plain[64];
        std::snprintf(plain, sizeof plain, "The timeline engine reports failure 0x%08X.",
                      static_cast<unsigned>(status.code()));
        text = plain;
    }
    const bool carriesNumber = (status.code() & 0xFFFF0000u) == kNumberedFailure;
    throw RuntimeError(static_cast<std::int32_t>(carriesNumber ? status.code() & 0xFFFFu : status.code()), text);
}

} // namespace engine
