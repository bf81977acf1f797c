#include "report/error_log.h"

#include "core/platform.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace error_log {

namespace {

std::array<std::filesystem::path, 2> places()
{
    constexpr std::string_view kName = "/ErrLog.asr";
    return {ports.shell->programFolder().append(kName), ports.shell->stateFolder().append(kName)};
}

/// Whether there is such a file and records could be appended to it: another one is not ours to send and to delete.
bool isOurs(const std::filesystem::path& place)
{
    std::error_code error;
    return std::filesystem::is_regular_file(place, error) && std::ofstream(place, std::ios::app).is_open();
}

/// Sets a log aside that has no room for `more` bytes. False when it stays where it is, full.
bool makeRoom(const std::filesystem::path& place, std::size_t more)
{
    constexpr std::uintmax_t kLongest = 16'000'000;
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(place, error);
    if (error || length + more <= kLongest) {
        return true; // one that is not there yet has room
    }
    std::filesystem::rename(place, std::filesystem::path(place).replace_filename("ErrLog.old.asr"), error);
    return !error;
}

} // namespace

bool append(std::string_view record)
{
    for (const auto& place : places()) {
        if (!makeRoom(place, record.size())) {
            continue;
        }
        std::ofstream file(place, std::ios::binary | std::ios::app);
        file.write(record.data(), static_cast<std::streamsize>(record.size()));
        if (file.flush()) {
            return true;
        }
    }
    return false;
}

std::string read()
{
    std::string records;
    std::filesystem::path before;
    for (const auto& place : places()) {
        if (place != before && isOurs(place)) {
            std::ifstream file(place, std::ios::binary);
            records.append(std::istreambuf_iterator<char>(file), {});
        }
        before = place;
    }
    return records;
}

std::string path()
{
    const auto all = places();
    return (isOurs(all.back()) ? all.back() : all.front()).string();
}

void remove()
{
    for (const auto& place : places()) {
        std::error_code ignored; // what cannot be deleted is sent once more with the next report
        if (isOurs(place)) {
            std::filesystem::remove(place, ignored);
        }
    }
}

} // namespace error_log
