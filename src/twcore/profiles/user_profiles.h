#pragma once

// The profiles that people made for themselves: small XML files in a folder of theirs, read anew each time, so that a
// file that is put there counts at once. docs/profiles.md tells the format. A damaged file is left out.

#include "twcore/profiles/profile.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

/// QUILLMONT_PROFILES, else quillmont/profiles under the user's data folder. Empty when there is no home.
std::filesystem::path profileFolder();

/// One file; nullopt when anything in it is not as the format has it.
std::optional<Profile> readProfile(const std::filesystem::path& file);

/// All good files of the folder by their names.
std::vector<Profile> userProfiles(const std::filesystem::path& folder = profileFolder());

/// The first of that name, of the system's and then the user's.
std::optional<Profile> findProfile(const std::string& name);

} // namespace twcore
