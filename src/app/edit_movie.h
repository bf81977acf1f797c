#pragma once

// The timeline saved as a movie, through the dialogues of the program as a person would. Interface thread only.

#include <string>

namespace app {

/// Windows Media where the name ends in .wmv or .wma, else AVI; all tracks that are on, by the usual settings. Comes
/// back at the end of the save. Raises `WrongWords` where there is nothing to save, and std::runtime_error with the
/// cause of a save that failed.
void saveMovie(const std::string& path);

} // namespace app
