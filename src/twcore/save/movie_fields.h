#pragma once

// The descriptive fields of a movie file, and how they are written into one that is finished.
//
// Fields go into room that the header has, in place. A file whose header has not enough room is copied once beside
// itself with a larger header, byte for byte otherwise, and takes its own name when it is whole; one that is told by
// its descriptor (/proc/self/fd/7) is filled with the copy.

#include "engine/status.h"

#include <string>

namespace twcore {

/// UTF-8. A blank text leaves what the file has.
struct MovieFields {
    std::string title;
    std::string author;
    std::string rating;
    std::string copyright;
    std::string description;

    bool isBlank() const
    {
        return title.empty() && author.empty() && rating.empty() && copyright.empty() && description.empty();
    }
};

/// Whether the file is one that can carry the fields and may be written to.
bool canCarryFields(const std::string& path);

/// Writes them. A failure tells the cause and the path, and leaves the file as it was.
engine::Status writeFields(const std::string& path, const MovieFields& fields);

} // namespace twcore
