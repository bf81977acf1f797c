#include "disk/hidden_names.h"

#include "disk/whole_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/file.h>
#include <sys/random.h>
#include <system_error>
#include <unistd.h>

namespace disk {

namespace {

constexpr std::string_view kHead = ".quillmont-";
constexpr std::string_view kTail = ".part";
constexpr std::string_view kDigits = "0123456789abcdef";
using Chance = std::array<std::uint8_t, 16>;

bool isHiddenName(std::string_view name)
{
    const std::size_t digits = Chance().size() * 2;
    return name.size() == kHead.size() + digits + kTail.size() && name.starts_with(kHead) && name.ends_with(kTail)
           && name.substr(kHead.size(), digits).find_first_not_of(kDigits) == std::string_view::npos;
}

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

/// Shared, since a lock against others asks for the right to write on some disks; its holder's is against all.
bool isAbandoned(int file)
{
    struct stat facts {};
    return ::fstat(file, &facts) == 0 && S_ISREG(facts.st_mode) && ::flock(file, LOCK_SH | LOCK_NB) == 0;
}

} // namespace

std::string hiddenName()
{
    Chance chance{};
    if (::getrandom(chance.data(), chance.size(), 0) != static_cast<ssize_t>(chance.size())) {
        throw std::system_error(errno, std::generic_category());
    }
    std::string name(kHead);
    for (const auto byte : chance) {
        name += kDigits[byte >> 4];
        name += kDigits[byte & 15];
    }
    return name.append(kTail);
}

bool isNameOf(int folder, const std::string& name, int file)
{
    struct stat named {};
    struct stat held {};
    return ::fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 && ::fstat(file, &held) == 0
           && named.st_dev == held.st_dev && named.st_ino == held.st_ino;
}

void removeAbandoned(int folder)
{
    const int listed = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, CloseFolder> entries(listed < 0 ? nullptr : ::fdopendir(listed));
    while (const dirent* const entry = entries ? ::readdir(entries.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (!isHiddenName(name)) {
            continue;
        }
        const Descriptor file(::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        // Its maker may have given it its real name before the lock was free; the hidden one is never given again.
        if (file.get() >= 0 && isAbandoned(file.get()) && isNameOf(folder, name, file.get())) {
            ::unlinkat(folder, name.c_str(), 0);
        }
    }
}

} // namespace disk
