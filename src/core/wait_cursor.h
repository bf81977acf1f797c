#pragma once

// The pointer says that the program is at work, for as long as the object lives. Interface thread only.

#include "core/forms/mdiTarnwick.h"

class WaitCursor {
public:
    WaitCursor() { forms::mdiTarnwick.MousePointer = kHourglass; }
    ~WaitCursor() { forms::mdiTarnwick.MousePointer = before_; }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    static constexpr std::int16_t kHourglass = 11;

    std::int16_t before_ = forms::mdiTarnwick.MousePointer;
};
