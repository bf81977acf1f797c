#pragma once

// Texts as the interfaces of saving and of profiles hand them out.

#include "twcore/model/names.h"

#include <algorithm>
#include <string_view>

namespace twcore {

/// The text and a NUL, then blanks: callers drop the last character that is no blank. Nothing to say is all blanks.
inline void fillTerminated(engine::TextBuffer buffer, std::string_view text)
{
    fillBuffer(buffer, {});
    if (!text.empty() && !buffer.empty()) {
        const auto shown = cutAtCharacter(text, buffer.size() - 1);
        *std::ranges::copy(shown, buffer.begin()).out = '\0';
    }
}

} // namespace twcore
