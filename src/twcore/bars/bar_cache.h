#pragma once

// What was made for bars, kept in the user's cache from one run to the next: one file a medium, named after the
// medium's path, time and size, so that a medium that has changed finds nothing of the old one.
//
//     head: what it is of | record | record | ...          a record: kind, number, size, sum, bytes
//
// Records are added at the end, also by several programs at once. A file in which anything is not as it must be is
// removed and made anew; a folder or disk that cannot be written is not tried again in this run. Files that were used
// longest ago make room for others. Not thread safe; it may wait for the disk.

#include "twcore/media/file_stamp.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace twcore {

class BarCache {
public:
    enum class Kind : std::uint32_t { kTimes = 1, kPicture = 2, kPeaks = 3 };
    using Bytes = std::vector<std::uint8_t>;

    /// The folder is made when something is to be kept; empty: nothing is.
    BarCache(std::string folder, std::int64_t mostBytes) : folder_(std::move(folder)), mostBytes_(mostBytes) {}
    ~BarCache();
    BarCache(const BarCache&) = delete;
    BarCache& operator=(const BarCache&) = delete;

    /// Nothing when it is not there, or is damaged.
    std::optional<Bytes> find(const std::string& path, const FileStamp& stamp, Kind kind, std::int32_t number);
    void keep(const std::string& path, const FileStamp& stamp, Kind kind, std::int32_t number,
              std::span<const std::uint8_t> bytes);
    /// Lets go of the files that are open.
    void close();

private:
    struct Place {
        std::int64_t position;
        std::uint32_t byteCount;
        std::uint64_t sum;
    };
    struct OpenFile {
        std::string name;
        int descriptor = -1;
        std::map<std::pair<Kind, std::int32_t>, Place> records;
    };

    OpenFile* open(const std::string& path, const FileStamp& stamp, bool makes);
    bool readRecords(OpenFile& file, const std::string& subject);
    bool append(OpenFile& file, Kind kind, std::int32_t number, std::span<const std::uint8_t> bytes);
    void remove(OpenFile& file);
    void makeRoom();

    std::string folder_;
    std::int64_t mostBytes_;
    std::int64_t added_ = 0; // bytes since the folder was last looked through
    bool isMade_ = false;
    bool hasFailed_ = false;
    std::list<OpenFile> files_; // the one that was used last is in front
};

} // namespace twcore
