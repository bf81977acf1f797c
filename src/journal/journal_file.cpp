#include "journal/journal_file.h"

#include "journal/bytes.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace journal {

using disk::Descriptor;

namespace {

constexpr std::string_view kMark = "QMJRNL01";
constexpr std::size_t kHeadBytes = sizeof(std::uint32_t) + sizeof(std::uint64_t);

std::string framed(std::string_view difference)
{
    ByteWriter frame;
    frame.bytes.reserve(kHeadBytes + difference.size());
    frame.put(static_cast<std::uint32_t>(difference.size()));
    frame.put(checksum(difference));
    frame.bytes += difference;
    return std::move(frame.bytes);
}

bool writeAt(int file, std::string_view bytes, std::uint64_t place)
{
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(place));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
        place += static_cast<std::uint64_t>(count);
    }
    return true;
}

bool readAt(int file, std::string& bytes, std::uint64_t place)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = ::pread(file, bytes.data() + done, bytes.size() - done, static_cast<off_t>(place + done));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(count);
    }
    return true;
}

std::uint64_t byteCountOf(int file)
{
    struct stat facts {};
    return ::fstat(file, &facts) == 0 ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

/// Takes the next difference in. False at the end of what is whole.
bool readNext(int file, std::uint64_t& place, std::uint64_t end, Objects& objects)
{
    std::string head(kHeadBytes, '\0');
    if (end - place < kHeadBytes || !readAt(file, head, place)) {
        return false;
    }
    ByteReader reader(head);
    const auto length = reader.take<std::uint32_t>();
    const auto sum = reader.take<std::uint64_t>();
    if (length > end - place - kHeadBytes || length > kMostBytes) {
        return false;
    }
    std::string difference(length, '\0');
    if (!readAt(file, difference, place + kHeadBytes) || checksum(difference) != sum) {
        return false;
    }
    try {
        objects.apply(difference);
    } catch (const Broken&) {
        return false;
    }
    place += kHeadBytes + length;
    return true;
}

/// Where what is whole ends; 0 when the file is no journal.
std::uint64_t readAll(int file, Objects& objects)
{
    const std::uint64_t end = byteCountOf(file);
    std::string mark(kMark.size(), '\0');
    if (end < kMark.size() || !readAt(file, mark, 0) || mark != kMark) {
        return 0;
    }
    std::uint64_t place = kMark.size();
    while (readNext(file, place, end, objects)) {
    }
    return place;
}

/// Locked; -1 when it cannot be had.
std::shared_ptr<Descriptor> openLocked(const std::string& path, int flags)
{
    constexpr mode_t kUserAlone = 0600;
    auto file = std::make_shared<Descriptor>(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | flags, kUserAlone));
    const bool isHeld = file->get() >= 0 && ::flock(file->get(), LOCK_EX | LOCK_NB) == 0;
    return isHeld ? file : std::make_shared<Descriptor>();
}

/// Whether the name still leads to the file that was opened under it.
bool isUnder(const std::string& path, int file)
{
    struct stat opened {};
    struct stat named {};
    return ::fstat(file, &opened) == 0 && ::stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino
           && opened.st_dev == named.st_dev && S_ISREG(opened.st_mode);
}

} // namespace

void makeFolder(const std::filesystem::path& folder)
{
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
}

bool readJournal(const std::string& path, Objects& objects)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    return file.get() >= 0 && readAll(file.get(), objects) > 0;
}

JournalFile::JournalFile(std::string path, std::shared_ptr<Descriptor> file)
    : path_(std::move(path)), file_(std::move(file))
{}

std::unique_ptr<JournalFile> JournalFile::open(const std::string& path)
{
    auto file = openLocked(path, O_NONBLOCK);
    if (file->get() < 0 || !isUnder(path, file->get())) {
        return nullptr;
    }
    return std::unique_ptr<JournalFile>(new JournalFile(path, std::move(file)));
}

void JournalFile::read(Objects& objects) { end_ = readAll(file_->get(), objects); }

bool JournalFile::isForeign() const
{
    std::string mark(kMark.size(), '\0');
    return byteCountOf(file_->get()) > kMark.size() && readAt(file_->get(), mark, 0) && mark != kMark;
}

bool JournalFile::isWhole() const { return byteCountOf(file_->get()) >= end_ && isUnder(path_, file_->get()); }

bool JournalFile::renew()
{
    if (!isUnder(path_, file_->get())) {
        makeFolder(std::filesystem::path(path_).parent_path());
        auto fresh = openLocked(path_, O_NONBLOCK);
        if (!isUnder(path_, fresh->get())) {
            return false;
        }
        file_ = std::move(fresh);
        syncFolder();
    }
    return empty();
}

bool JournalFile::append(std::string_view difference)
{
    if (end_ == 0 && !empty()) {
        return false;
    }
    const std::string frame = framed(difference);
    const bool isCut = byteCountOf(file_->get()) == end_ || ::ftruncate(file_->get(), static_cast<off_t>(end_)) == 0;
    if (!isCut || !writeAt(file_->get(), frame, end_)) {
        (void)!::ftruncate(file_->get(), static_cast<off_t>(end_));
        return false;
    }
    end_ += frame.size();
    return true;
}

bool JournalFile::empty()
{
    if (::ftruncate(file_->get(), 0) != 0 || !writeAt(file_->get(), kMark, 0)) {
        end_ = 0;
        return false;
    }
    end_ = kMark.size();
    return true;
}

bool JournalFile::replace(std::string_view difference)
{
    const std::string fresh = path_ + ".new";
    JournalFile other(fresh, openLocked(fresh, O_TRUNC));
    if (other.file_->get() < 0 || !other.append(difference) || ::fdatasync(other.file_->get()) != 0
        || ::rename(fresh.c_str(), path_.c_str()) != 0) {
        ::unlink(fresh.c_str());
        return false;
    }
    file_ = other.file_;
    end_ = other.end_;
    syncFolder();
    return true;
}

bool JournalFile::moveAway(const std::string& path)
{
    if (::fdatasync(file_->get()) != 0 || ::rename(path_.c_str(), path.c_str()) != 0) {
        return false;
    }
    end_ = 0;
    file_ = openLocked(path_, 0);
    syncFolder();
    return file_->get() >= 0 && empty();
}

void JournalFile::syncFolder() const
{
    const Descriptor folder(
        ::open(std::filesystem::path(path_).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() >= 0) {
        ::fsync(folder.get());
    }
}

} // namespace journal
