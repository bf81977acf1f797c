#include "report/error_log.h"

#include "core/platform.h"

#include <array>
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

} // namespace

bool append(std::string_view record)
{
    for (const auto& place : places()) {
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
