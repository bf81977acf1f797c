// Steps on the disk that fail, preloaded into a program under test: of all calls that change something there, or open a
// file of the test's, one fails, or kills the process ahead of itself.
//
//     FAILING_STEP="12 28"     how many are let through, errno; 0 kills

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::atomic<int> steps = 0;

bool fails()
{
    static const char* const order = std::getenv("FAILING_STEP");
    int allowed = 0;
    int cause = 0;
    if (order == nullptr || std::sscanf(order, "%d %d", &allowed, &cause) != 2 || steps++ != allowed) {
        return false;
    }
    if (cause == 0) {
        ::raise(SIGKILL);
    }
    errno = cause;
    return true;
}

/// A call by its own name, when it changes something and is not to fail.
template <class Result, class... Arguments>
Result step(bool changes, Result failure, const char* name, Arguments... arguments)
{
    auto* const next = reinterpret_cast<Result (*)(Arguments...)>(::dlsym(RTLD_NEXT, name));
    return changes && fails() ? failure : next(arguments...);
}

bool isFile(int descriptor)
{
    struct stat used {};
    return ::fstat(descriptor, &used) == 0 && S_ISREG(used.st_mode);
}

} // namespace

extern "C" {

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    return step(isFile(descriptor), ssize_t{-1}, "write", descriptor, bytes, size);
}

ssize_t writev(int descriptor, const iovec* parts, int count)
{
    return step(isFile(descriptor), ssize_t{-1}, "writev", descriptor, parts, count);
}

int fsync(int descriptor) { return step(true, -1, "fsync", descriptor); }

int openat(int folder, const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return step((flags & (O_CREAT | __O_TMPFILE)) != 0, -1, "openat", folder, path, flags, mode);
}

FILE* fopen64(const char* path, const char* mode)
{
    const bool isOfSystem = std::strncmp(path, "/etc/", 5) == 0;
    return step(!isOfSystem, static_cast<FILE*>(nullptr), "fopen64", path, mode);
}

int mkostemp(char* pattern, int flags) { return step(true, -1, "mkostemp", pattern, flags); }

char* mkdtemp(char* pattern) { return step(true, static_cast<char*>(nullptr), "mkdtemp", pattern); }

int rename(const char* from, const char* to) noexcept { return step(true, -1, "rename", from, to); }

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return step(true, -1, "renameat", fromFolder, from, toFolder, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return step(true, -1, "linkat", fromFolder, from, toFolder, to, flags);
}

} // extern "C"
