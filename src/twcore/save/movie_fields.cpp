#include "twcore/save/movie_fields.h"

#include "twcore/save/asf_header.h"
#include "twcore/save/avi_header.h"
#include "twcore/save/byte_text.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace twcore {

namespace {

constexpr std::size_t kCopyBytes = 1 << 20;
constexpr std::size_t kNewRoomBytes = 16 * 1024;

class OpenedFile {
public:
    OpenedFile(const std::string& path, int flags) : descriptor_(::open(path.c_str(), flags | O_CLOEXEC)) {}
    explicit OpenedFile(int descriptor) : descriptor_(descriptor) {}
    ~OpenedFile()
    {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    int get() const { return descriptor_; }
    bool isRegular() const
    {
        struct stat facts {};
        return descriptor_ >= 0 && ::fstat(descriptor_, &facts) == 0 && S_ISREG(facts.st_mode);
    }

private:
    int descriptor_;
};

void orThrow(bool good)
{
    if (!good) {
        throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
    }
}

std::uint64_t fileSize(int descriptor)
{
    struct stat facts {};
    orThrow(::fstat(descriptor, &facts) == 0);
    return static_cast<std::uint64_t>(facts.st_size);
}

void copyBytes(int from, std::uint64_t fromAt, int to, std::uint64_t toAt)
{
    std::vector<std::uint8_t> block(kCopyBytes);
    const std::uint64_t end = fileSize(from);
    while (fromAt < end) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), end - fromAt));
        const std::span part(block.data(), count);
        orThrow(readAt(from, fromAt, part) && writeAt(to, toAt, part));
        fromAt += count;
        toAt += count;
    }
}

/// A file that is told by its descriptor may have no name yet: no copy can take it.
bool isDescriptor(const std::string& path) { return path.starts_with("/proc/self/fd/"); }

/// A copy of a file that is being made beside it, gone again unless it takes the file's place.
class Sibling {
public:
    explicit Sibling(const std::string& path)
        : isDescriptor_(isDescriptor(path)),
          target_((isDescriptor_ ? std::filesystem::read_symlink(path) : std::filesystem::canonical(path)).string()),
          path_(target_ + ".XXXXXX"), file_(::mkstemp(path_.data()))
    {
        if (isDescriptor_ && file_.get() >= 0) {
            ::unlink(path_.c_str());
            path_.clear();
            return;
        }
        struct stat facts {};
        const bool isMade = file_.get() >= 0;
        if (isMade && ::stat(target_.c_str(), &facts) == 0 && ::fchmod(file_.get(), facts.st_mode & 07777) == 0) {
            return;
        }
        const int error = errno;
        if (isMade) {
            ::unlink(path_.c_str());
        }
        errno = error;
        orThrow(false);
    }
    ~Sibling()
    {
        if (!path_.empty()) {
            ::unlink(path_.c_str());
        }
    }
    Sibling(const Sibling&) = delete;
    Sibling& operator=(const Sibling&) = delete;

    int get() const { return file_.get(); }
    void takePlaceOf(int original)
    {
        if (isDescriptor_) {
            fill(original);
            return;
        }
        orThrow(::fsync(file_.get()) == 0 && std::rename(path_.c_str(), target_.c_str()) == 0);
        path_.clear();
    }

private:
    /// The room is taken first, so that a full disk leaves the original as it was.
    void fill(int original) const
    {
        const auto before = static_cast<off_t>(fileSize(original));
        if (const int error = ::posix_fallocate(original, 0, static_cast<off_t>(fileSize(get()))); error != 0) {
            const bool isBack = ::ftruncate(original, before) == 0;
            errno = isBack ? error : errno;
            orThrow(false);
        }
        copyBytes(get(), 0, original, 0);
    }

    bool isDescriptor_;
    std::string target_;
    std::string path_;
    OpenedFile file_;
};

void writeAsf(AsfHeader header, int file, const std::string& path, const MovieFields& fields)
{
    header.set(fields);
    const auto inPlace = header.bytes(header.size());
    if (!inPlace.empty()) {
        orThrow(writeAt(file, 0, inPlace));
        return;
    }
    const std::size_t grown = header.leastSize() + kNewRoomBytes;
    header.setFileSize(fileSize(file) - header.size() + grown);
    Sibling sibling(path);
    orThrow(writeAt(sibling.get(), 0, header.bytes(grown)));
    copyBytes(file, header.size(), sibling.get(), grown);
    sibling.takePlaceOf(file);
}

void writeAvi(AviHeader header, int file, const std::string& path, const MovieFields& fields)
{
    header.set(fields);
    const auto inPlace = header.room(header.roomSize());
    if (!inPlace.empty()) {
        orThrow(writeAt(file, header.roomStart(), inPlace));
        return;
    }
    const std::size_t grown = header.leastRoom() + kNewRoomBytes;
    Sibling sibling(path);
    copyBytes(file, 0, sibling.get(), 0);
    orThrow(writeAt(sibling.get(), header.roomStart(), header.room(grown)));
    copyBytes(file, header.roomStart() + header.roomSize(), sibling.get(), header.roomStart() + grown);
    orThrow(header.moveIndexes(sibling.get(), grown - header.roomSize()));
    sibling.takePlaceOf(file);
}

} // namespace

bool canCarryFields(const std::string& path)
{
    const OpenedFile file(path, O_RDWR | O_NONBLOCK);
    return file.isRegular() && (AsfHeader::read(file.get()) || AviHeader::read(file.get()));
}

engine::Status writeFields(const std::string& path, const MovieFields& fields)
{
    const auto failure = [&](const std::string& cause) {
        return engine::Status(engine::kFailed.code(), "The title and the other texts cannot be written to \"" + path
                                                          + "\": " + cause + ". The movie itself is whole.");
    };
    try {
        errno = 0;
        const OpenedFile file(path, O_RDWR | O_NONBLOCK);
        orThrow(file.isRegular());
        if (const auto asf = AsfHeader::read(file.get())) {
            writeAsf(*asf, file.get(), path, fields);
        } else if (const auto avi = AviHeader::read(file.get())) {
            writeAvi(*avi, file.get(), path, fields);
        } else {
            return failure("it is neither AVI nor Windows Media");
        }
        return engine::kDone;
    } catch (const std::system_error& error) {
        return failure(error.code().message());
    }
}

} // namespace twcore
