#pragma once

// What the engine is built on.

#include "engine/library_facts.h"

#include <vector>

namespace twcore {

/// In the order in which they are told. Any thread.
std::vector<engine::LibraryFacts> libraries();

} // namespace twcore
