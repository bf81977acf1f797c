#pragma once

// Where a title stands: by name, by keys and by hand. The rest of it is in `frmAddText.h`. Interface thread only.

#include "tools/frmAddText.h"

namespace frmAddText {

/// The position is the last that was named; nothing moves.
void showPosition(Position position);

} // namespace frmAddText
