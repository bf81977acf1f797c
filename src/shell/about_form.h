#pragma once

// Help > About: which program this is, under which licence, and what it is built on.

#include "engine/library_facts.h"

#include <QString>
#include <functional>
#include <vector>

class QWidget;

namespace about {

/// What the engine is built on; without it only what the screens are built on is told.
inline std::function<std::vector<engine::LibraryFacts>()> engineLibraries;

/// Comes back when the dialogue has been left.
void show(QWidget* owner);

} // namespace about
