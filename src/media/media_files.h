#pragma once

// Small helpers of the media room. They raise what the engine's calls raise.

#include "engine/types.h"

#include <string>

namespace media {

/// The whole path of an open file, however long; empty when there is no such file.
std::string pathOf(engine::Handle file);
/// Whether a row of the media list is of that file, by this path or another one.
bool isListed(const std::string& path);
/// What stands behind the last "."; the whole text when it holds none.
std::string lastPiece(const std::string& name);

/// Whether any row of the media list is selected.
bool isAnyRowSelected();

/// Text of the status bar's first panel.
void say(std::string text);

/// Marks the program busy with opening for as long as it lives. A cancel asked for earlier is forgotten.
class OpeningSpan {
public:
    OpeningSpan();
    ~OpeningSpan();
    OpeningSpan(const OpeningSpan&) = delete;
    OpeningSpan& operator=(const OpeningSpan&) = delete;
};

} // namespace media
