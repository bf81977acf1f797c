#pragma once

// The names of files that are not whole yet: hidden, of 128 bits of chance, so that nobody can lay a file or a link
// there first.
//
// Who makes such a file holds a lock on it as long as it lives.

#include <string>

namespace disk {

/// A new one. Raises `std::system_error` where the system has no chance to give.
std::string hiddenName();

/// Whether the name in the folder is the open file's. Both are descriptors.
bool isNameOf(int folder, const std::string& name, int file);

/// Removes from a folder, given as a descriptor, the files of such names that nobody holds. What cannot be removed
/// stays.
void removeAbandoned(int folder);

} // namespace disk
