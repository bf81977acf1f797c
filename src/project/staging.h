#pragma once

// Where a project is worked on: a copy in a folder of the program's own, so that what goes wrong on the way is met
// there, and the file under the project's name is whole at any moment.
//
//     save    rounds over the copy  ->  disk::WholeFile  ->  the project's name
//     open    the project  ->  copy  ->  rounds over the copy; nothing on the disk changes
//
// Errors are raised by the numbers that the same steps would meet at the real place: 53 no such file, 58 the temporary
// name is taken, 76 no such folder, 0x80070005 no permission, 75 no file at all; 61 the disk is full, 57 it fails; 321
// what cannot be a project. Interface thread only.

#include "disk/run_folder.h"
#include "disk/whole_file.h"

#include <cstdint>
#include <string>

namespace project {

inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kDiskFails = 57;
inline constexpr std::int32_t kFileExists = 58;
inline constexpr std::int32_t kDiskFull = 61;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kInvalidFormat = 321;
inline constexpr std::int32_t kNoPermission = static_cast<std::int32_t>(0x80070005u);

/// The name that a file of this path bears while it is worked on: each "qpj" in it, small letters, is "xml".
std::string temporaryNameOf(const std::string& path);

/// Whether the file could bear its temporary name. Raises 58 and 76.
void askForTemporaryName(const std::string& path);

/// The project's name, asked for ahead of all work. Raises what a new file there would.
disk::WholeFile placeOf(const std::string& path);

class Staging {
public:
    /// Makes the folder, which goes with the object, and removes those of runs that were killed.
    Staging();

    /// Of the copy; there is no file yet.
    const std::string& path() const { return path_; }

    /// Fills the copy from a project on the disk, which must be a plain file of at most `engine::kMostProjectBytes`.
    void copyFrom(const std::string& project) const;
    /// Puts the copy under the name, synced.
    void putIn(disk::WholeFile& place) const;

private:
    static disk::RunFolder makeFolder();

    disk::RunFolder folder_;
    std::string path_;
};

} // namespace project
