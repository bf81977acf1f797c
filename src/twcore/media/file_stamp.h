#pragma once

// What tells that a file is still the same. Any thread; it waits for the disk.

#include <cstdint>
#include <string>

namespace twcore {

struct FileStamp {
    bool isThere = false;
    std::int64_t changed = 0; // nanoseconds since the system's epoch
    std::int64_t byteCount = 0;

    /// Of a file that is not there, or cannot be asked: nothing.
    static FileStamp of(const std::string& path);
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

} // namespace twcore
