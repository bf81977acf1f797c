#pragma once

// Texts of the engine, which fills buffers of a fixed length.

#include "engine/check.h"
#include "engine/types.h"

#include <algorithm>
#include <string>

namespace engine {

/// What `fill`, a call of the engine, writes into a buffer of so many bytes, without the blanks and the NUL behind it.
/// Raises the call's failure.
template <class Fill>
std::string textFrom(std::size_t bytes, const Fill& fill)
{
    std::string text(bytes, ' ');
    check(fill(TextBuffer(text)));
    text.resize(std::min(text.find('\0'), text.size()));
    text.resize(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace engine
