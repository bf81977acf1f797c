// A disk that fails, preloaded into a program under test: one kind of call on one file fails, after so many of them.
//
//     FAILING_DISK="read 3 5 /media/clip.mp4"     call, how many are let through, errno, path

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

struct Order {
    char call[16] = "";
    int allowed = 0;
    int cause = 0;
    char path[1024] = "";
    struct stat file {};

    Order()
    {
        const char* const text = std::getenv("FAILING_DISK");
        if (text != nullptr && std::sscanf(text, "%15s %d %d %1023[^\n]", call, &allowed, &cause, path) == 4) {
            ::stat(path, &file);
        }
    }
};

std::atomic<int> calls = 0;

bool fails(const char* call, const struct stat& used)
{
    static const Order order;
    if (std::strcmp(call, order.call) != 0 || used.st_ino != order.file.st_ino || used.st_dev != order.file.st_dev
        || calls++ < order.allowed) {
        return false;
    }
    errno = order.cause;
    return true;
}

bool fails(const char* call, int descriptor)
{
    struct stat used {};
    return ::fstat(descriptor, &used) == 0 && fails(call, used);
}

bool fails(const char* call, const char* path)
{
    struct stat used {};
    return ::stat(path, &used) == 0 && fails(call, used);
}

template <class Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

ssize_t read(int descriptor, void* target, size_t size)
{
    static auto* const next = real<ssize_t(int, void*, size_t)>("read");
    return fails("read", descriptor) ? -1 : next(descriptor, target, size);
}

ssize_t pread(int descriptor, void* target, size_t size, off_t at)
{
    static auto* const next = real<ssize_t(int, void*, size_t, off_t)>("pread");
    return fails("read", descriptor) ? -1 : next(descriptor, target, size, at);
}

off_t lseek(int descriptor, off_t offset, int whence) noexcept
{
    static auto* const next = real<off_t(int, off_t, int)>("lseek");
    return fails("lseek", descriptor) ? -1 : next(descriptor, offset, whence);
}

int open(const char* path, int flags, ...)
{
    static auto* const next = real<int(const char*, int, ...)>("open");
    va_list rest;
    va_start(rest, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
    va_end(rest);
    return fails("open", path) ? -1 : next(path, flags, mode);
}

} // extern "C"
