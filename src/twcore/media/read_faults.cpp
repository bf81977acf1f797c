#include "twcore/media/read_faults.h"

#include "engine/status.h"

#include <cerrno>
#include <sys/stat.h>
#include <system_error>

namespace twcore {

namespace {

bool isMissing(int cause) { return cause == ENOENT || cause == ENOTDIR; }

std::string adviceOn(int cause)
{
    switch (cause) {
    case ENOENT:
    case ENOTDIR:
        return "Put it back";
    case EACCES:
    case EPERM:
        return "Let it be read";
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return "Close other programs";
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return "Free some space for temporary files";
    default:
        return "Check its disk or its connection";
    }
}

} // namespace

std::uint32_t ReadFault::code() const
{
    return (cause == EACCES || cause == EPERM ? engine::kAccessDenied : engine::kFailed).code();
}

std::string ReadFault::text(const char* again) const
{
    return "Cannot read \"" + path + "\": " + std::generic_category().message(cause)
           + ". The file itself is not damaged. " + adviceOn(cause) + ", and " + again + " again.";
}

void ReadFaults::expect(const std::vector<std::string>& paths)
{
    std::set<std::string> missing;
    for (const auto& path : paths) {
        struct stat facts {};
        if (::stat(path.c_str(), &facts) != 0 && isMissing(errno)) {
            missing.insert(path);
        }
    }
    const std::lock_guard lock(mutex_);
    expects_ = true;
    missing_ = std::move(missing);
}

void ReadFaults::note(const std::string& path, int cause)
{
    const std::lock_guard lock(mutex_);
    if (first_ || (isMissing(cause) && (!expects_ || missing_.contains(path)))) {
        return;
    }
    first_ = ReadFault{path, cause};
    any_ = true;
}

std::optional<ReadFault> ReadFaults::first() const
{
    const std::lock_guard lock(mutex_);
    return first_;
}

} // namespace twcore
