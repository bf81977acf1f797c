#pragma once

// What a file is that cannot be taken although nothing is wrong with it.

#include "twcore/media/input_file.h"

#include <string>

namespace twcore {

/// A sentence for people about a file that was refused: its path, what it is, and what to do. `opened` is nullptr when
/// its format was not even opened. Empty when it is none of the kinds that are known here.
std::string troubleWith(const std::string& path, const InputFile* opened);

} // namespace twcore
