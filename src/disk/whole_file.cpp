#include "disk/whole_file.h"

#include "disk/hidden_names.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

namespace disk {

namespace fs = std::filesystem;

namespace {

std::string textOf(int error) { return std::generic_category().message(error); }

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Follows links by hand, since the last one may lead to a file that is not there yet.
fs::path behindLinks(const fs::path& path)
{
    constexpr int kMostLinks = 40;
    std::error_code error;
    fs::path target = path;
    for (int i = 0; fs::is_symlink(target, error); ++i) {
        if (i == kMostLinks) {
            throw Refused(Why::kLinks, "\"" + path.string() + "\" is a ring of links. Name the file itself.");
        }
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    struct stat meant {};
    struct stat named {};
    if (target != path && ::stat(path.c_str(), &meant) == 0
        && (::stat(target.c_str(), &named) != 0 || !isSame(meant, named))) {
        // Links of the system's own, such as those to what a process has open.
        throw Refused(Why::kLinks, "\"" + path.string() + "\" leads to a file that has no name. Name a file.");
    }
    return target;
}

fs::path folderOf(const fs::path& path) { return path.has_parent_path() ? path.parent_path() : fs::path("."); }

/// Opened as a place alone, which asks for no right to list it.
Descriptor openFolder(const fs::path& folder)
{
    Descriptor opened(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const std::string name = "The folder \"" + folder.string() + "\"";
    if (opened.get() < 0) {
        const int error = errno;
        if (error == ENAMETOOLONG) {
            throw Refused(Why::kTooLong, name + " is too long for a name. Choose a shorter one.", error);
        }
        if (error == EACCES) {
            throw Refused(Why::kFolderClosed, name + " may not be opened. Choose another.", error);
        }
        throw Refused(Why::kNoFolder, name + " is not there. Create it, or choose another.", error);
    }
    if (::faccessat(opened.get(), ".", W_OK | X_OK, 0) != 0) {
        throw Refused(Why::kFolderClosed, name + " may not be written to. Choose another.", errno);
    }
    return opened;
}

/// In a folder like /tmp a file gives way to its owner and to the folder's alone.
bool isSomebodyElses(const struct stat& old, int folder)
{
    struct stat around {};
    const uid_t we = ::geteuid();
    return ::fstat(folder, &around) == 0 && (around.st_mode & S_ISVTX) != 0 && we != 0 && we != old.st_uid
           && we != around.st_uid;
}

/// Whether the disk gives a file that was made without a name one later. Some do not, which must be found out ahead of
/// hours of work. Tried on a file of its own: one that has lost its only name gets no other.
bool namesLater(int folder)
{
    const Descriptor file(::openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    if (file.get() < 0) {
        return false;
    }
    ::flock(file.get(), LOCK_EX | LOCK_NB);
    const std::string path = "/proc/self/fd/" + std::to_string(file.get());
    const std::string name = hiddenName();
    return ::linkat(AT_FDCWD, path.c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0
           && ::unlinkat(folder, name.c_str(), 0) == 0;
}

} // namespace

Descriptor::~Descriptor()
{
    if (number_ >= 0) {
        ::close(number_);
    }
}

WholeFile::WholeFile(const std::string& path)
    : asked_(path), target_(behindLinks(path)), inside_(folderOf(target_)), folder_(openFolder(inside_))
{
    // What is to replace a private file is private from its first byte; else the system's own rule for new files.
    const mode_t mode = askForPlace() ? 0600 : 0666;
    removeAbandoned(folder_.get());
    if (!makeWithoutName(mode)) {
        makeHidden(mode);
    }
}

WholeFile::~WholeFile()
{
    if (!hidden_.empty()) {
        ::unlinkat(folder_.get(), hidden_.c_str(), 0);
    }
}

void WholeFile::refuse(int error) const
{
    throw Refused(Why::kDisk, "\"" + asked_ + "\" cannot be made: " + textOf(error) + ". Choose another place.", error);
}

void WholeFile::failAtEnd(int error) const
{
    throw Refused(Why::kDisk,
                  "\"" + asked_ + "\" could not be brought to the disk: " + textOf(error)
                      + ". Check the disk, or choose another place.",
                  error);
}

/// The old file, where there is one and it may be replaced.
std::optional<struct stat> WholeFile::askForPlace() const
{
    struct stat old {};
    const std::string name = target_.filename().string();
    const std::string quoted = "\"" + asked_ + "\"";
    if (name.empty()) {
        throw Refused(Why::kFolder, quoted + " is a folder. Name a file in it.");
    }
    if (::fstatat(folder_.get(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENAMETOOLONG) {
            throw Refused(Why::kTooLong, quoted + " is too long for a name. Choose a shorter one.", errno);
        }
        if (errno != ENOENT) {
            refuse(errno);
        }
        return std::nullopt;
    }
    if (S_ISDIR(old.st_mode)) {
        throw Refused(Why::kFolder, quoted + " is a folder. Name a file in it.");
    }
    if (!S_ISREG(old.st_mode)) {
        throw Refused(Why::kNoFile, quoted + " is a pipe or a device. Name a file.");
    }
    // Root may write everywhere, and would be told so: the owner's own mark counts, whoever asks.
    if ((old.st_mode & S_IWUSR) == 0 || ::faccessat(folder_.get(), name.c_str(), W_OK, 0) != 0) {
        throw Refused(Why::kReadOnly, quoted + " is read-only. Change its permissions, or choose another name.");
    }
    if (isSomebodyElses(old, folder_.get())) {
        throw Refused(Why::kReadOnly, quoted + " belongs to somebody else. Choose another name.");
    }
    return old;
}

bool WholeFile::makeWithoutName(mode_t mode)
{
    if (!namesLater(folder_.get())) {
        return false;
    }
    file_ = Descriptor(::openat(folder_.get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
    if (file_.get() < 0) {
        return false;
    }
    ::flock(file_.get(), LOCK_EX | LOCK_NB); // for the moment of its hidden name
    usePath();
    return !path_.empty();
}

void WholeFile::makeHidden(mode_t mode)
{
    constexpr int kMostTries = 100;
    for (int i = 0; i < kMostTries; ++i) {
        const std::string name = hiddenName();
        file_ =
            Descriptor(::openat(folder_.get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (file_.get() < 0 && errno != EEXIST) {
            refuse(errno);
        }
        // Before it was locked, another run may have taken it for abandoned.
        if (file_.get() >= 0 && (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            && isNameOf(folder_.get(), name, file_.get())) {
            hidden_ = name;
            usePath();
            path_ = path_.empty() ? (inside_ / name).string() : path_;
            return;
        }
        if (file_.get() >= 0) {
            ::unlinkat(folder_.get(), name.c_str(), 0); // ours, or gone: nobody else has this name
        }
    }
    refuse(EAGAIN);
}

/// The file by its descriptor, where the system shows descriptors as files: that needs no name.
void WholeFile::usePath()
{
    path_ = "/proc/self/fd/" + std::to_string(file_.get());
    struct stat shown {};
    struct stat own {};
    if (::stat(path_.c_str(), &shown) != 0 || ::fstat(file_.get(), &own) != 0 || !isSame(shown, own)) {
        path_.clear();
    }
}

bool WholeFile::isFor(const std::string& other) const
{
    struct stat theirs {};
    struct stat ours {};
    const std::string name = target_.filename().string();
    if (::stat(other.c_str(), &theirs) == 0) {
        return ::fstatat(folder_.get(), name.c_str(), &ours, AT_SYMLINK_NOFOLLOW) == 0 && isSame(theirs, ours);
    }
    try {
        const fs::path target = behindLinks(other);
        return target.filename() == name && ::stat(folderOf(target).c_str(), &theirs) == 0
               && ::fstat(folder_.get(), &ours) == 0 && isSame(theirs, ours);
    } catch (const Refused&) {
        return false;
    }
}

void WholeFile::takeName()
{
    sync();
    const auto old = askForPlace(); // once more: much may have happened since
    const bool isLinked = !old && hidden_.empty() && link(target_.filename().string());
    if (!isLinked) {
        replaceOld(old ? &*old : nullptr);
    }
    syncFolder();
    struct stat there {};
    struct stat held {};
    if (::fstat(folder_.get(), &held) == 0 && (::stat(inside_.c_str(), &there) != 0 || !isSame(there, held))) {
        std::error_code error;
        const auto now = fs::read_symlink("/proc/self/fd/" + std::to_string(folder_.get()), error);
        throw Refused(Why::kMoved, "The folder \"" + inside_.string() + "\" was moved meanwhile. The file is whole: \""
                                       + (now / target_.filename()).string() + "\".");
    }
}

/// False when the name is taken.
bool WholeFile::link(const std::string& name) const
{
    if (::linkat(AT_FDCWD, path_.c_str(), folder_.get(), name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        failAtEnd(errno);
    }
    return false;
}

void WholeFile::replaceOld(const struct stat* old)
{
    while (hidden_.empty()) {
        const std::string name = hiddenName();
        if (link(name)) {
            hidden_ = name;
        }
    }
    if (old != nullptr) {
        keepRights(*old);
        sync();
    }
    if (::renameat(folder_.get(), hidden_.c_str(), folder_.get(), target_.filename().c_str()) != 0) {
        failAtEnd(errno);
    }
    hidden_.clear();
}

/// As far as the system lets us.
void WholeFile::keepRights(const struct stat& old) const
{
    mode_t mode = old.st_mode & 0777;
    if (::fchown(file_.get(), old.st_uid, old.st_gid) != 0 && ::fchown(file_.get(), uid_t(-1), old.st_gid) != 0) {
        mode &= ~mode_t{070} | (mode << 3); // it belongs to another group now, which may do no more than everybody
    }
    ::fchmod(file_.get(), mode);
}

void WholeFile::sync() const
{
    if (::fsync(file_.get()) != 0) {
        failAtEnd(errno);
    }
}

void WholeFile::syncFolder() const
{
    const Descriptor opened(::openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that may not be listed, and file systems that know no such thing, are left to themselves.
    if (opened.get() >= 0 && ::fsync(opened.get()) != 0 && errno != EINVAL && errno != EROFS) {
        const int error = errno;
        throw Refused(Why::kDisk,
                      "\"" + asked_ + "\" is whole, but its folder could not be brought to the disk: " + textOf(error)
                          + ". Check the disk.",
                      error);
    }
}

} // namespace disk
