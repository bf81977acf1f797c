#include "media/working_folder.h"

#include "core/platform.h"
#include "core/shared_state.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <filesystem>

namespace media {

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t kLongestWaitMs = 5000; // for a disk that may have gone to sleep

bool doesFileExist(const std::string& path)
{
    engine::Bool16 exists = engine::kFalse;
    engine::check(engine::Engine->FileExists(path, exists));
    return exists != engine::kFalse;
}

} // namespace

std::string inWorkingFolder(const std::string& name)
{
    return name.empty() ? name : (fs::path(state::WorkingFolder) / name).string();
}

std::string freeNameInWorkingFolder(const std::string& name, const std::string& extension)
{
    std::string path = inWorkingFolder(name + "." + extension);
    if (!ports.machine->askVolume(path, kLongestWaitMs).hasAnswered) {
        return path;
    }
    for (int number = 1; doesFileExist(path); ++number) {
        path = inWorkingFolder(std::string(name).append(std::to_string(number)).append(".").append(extension));
    }
    return path;
}

} // namespace media
