#pragma once

// A folder of this process alone, for files that nobody keeps. It goes with its object; what a killed run left is held
// by nobody, and goes when the next one is made beside it. Knows files and the system alone.

#include "disk/whole_file.h"

#include <string>

namespace disk {

class RunFolder {
public:
    /// beside: the folder in which it is made. kind: the beginning of its name, which nobody gives a folder of his own.
    /// Raises `Refused`.
    RunFolder(const std::string& beside, const std::string& kind);
    ~RunFolder();
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

    /// Without a separator at its end.
    const std::string& path() const { return path_; }

private:
    std::string path_;
    Descriptor lock_; // on the folder: while it is held, nobody takes it for what a killed run left
};

} // namespace disk
