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
    if (cause == 0) {
        return "\"" + path + "\" has become shorter while it was read. Put the whole file back, and " + again
               + " again.";
    }
    return "Cannot read \"" + path + "\": " + std::generic_category().message(cause)
           + ". The file itself is not damaged. " + adviceOn(cause) + ", and " + again + " again.";
}

void ReadFaults::expect(const std::vector<std::string>& paths)
{
    std::set<std::string> missing;
    std::map<std::string, struct stat> present;
    for (const auto& path : paths) {
        struct stat facts {};
        if (::stat(path.c_str(), &facts) == 0) {
            present.emplace(path, facts);
        } else if (isMissing(errno)) {
            missing.insert(path);
        }
    }
    const std::lock_guard lock(mutex_);
    expects_ = true;
    missing_ = std::move(missing);
    present_ = std::move(present);
}

void ReadFaults::noteShorter()
{
    std::map<std::string, struct stat> before;
    {
        const std::lock_guard lock(mutex_);
        before = present_;
    }
    for (const auto& [path, old] : before) {
        struct stat now {};
        // Another file under that name is none of ours: what is read stays open.
        if (::stat(path.c_str(), &now) == 0 && now.st_ino == old.st_ino && now.st_dev == old.st_dev
            && now.st_size < old.st_size) {
            note(path, 0);
        }
    }
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
