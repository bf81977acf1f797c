#pragma once

// Files that stand under their name only when they are whole.
//
//     WholeFile file(path);         asks whether the name may be taken, and makes a file beside it that nobody can name
//     ... write to file.path() ...
//     file.takeName();              on the disk, under the name, with the old file's mode and owner
//
// A file that takes no name is gone with its object, and the old one stands as it was. Where the file system can, the
// new file has no name at all meanwhile, so that a kill leaves nothing. Else, and for the moment in which it replaces
// an old one, it has a hidden name out of chance in the same folder, and its maker holds a lock on it: what a killed
// run left there is held by nobody, and is removed when the next file is made in that folder. On a disk without locks
// it stays.
//
// Knows files and the system alone. One object is used by one thread at a time.

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace disk {

enum class Why {
    kFolder,       // the name is a folder's
    kNoFile,       // ... a pipe's or a device's
    kLinks,        // a ring of links
    kTooLong,      // longer than names may be
    kNoFolder,     // no folder to stand in
    kFolderClosed, // which may not be written to
    kReadOnly,     // an old file that may not be written over
    kMoved,        // the folder has moved: the file is whole in it, elsewhere
    kDisk          // anything else that the system says
};

/// A name that cannot be taken. The text is a sentence for people: the cause, the path, the next step.
struct Refused : std::runtime_error {
    Refused(Why cause, const std::string& text, int systemError = 0)
        : std::runtime_error(text), why(cause), error(systemError)
    {}

    Why why;
    int error; // errno; 0 where the rule is our own
};

/// A descriptor that is closed with its owner; -1 is none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }

    int get() const { return number_; }

private:
    int number_;
};

class WholeFile {
public:
    /// Raises `Refused` ahead of any change when the name may not be taken: of a folder, a pipe or a device, of an old
    /// file that is read-only by its mode (root is asked the same) or not ours to replace, in a folder that is not
    /// there or closed. Of links the file that they lead to is meant, which need not be there yet.
    explicit WholeFile(const std::string& path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// Where to write, as often as one likes: it may be opened and truncated, but neither removed nor renamed.
    const std::string& path() const { return path_; }
    /// As it was asked for, for people.
    const std::string& name() const { return asked_; }

    /// Whether `other` names the file that is to be replaced: through links, as another name of it, or before either is
    /// there.
    bool isFor(const std::string& other) const;

    /// Synced and in place, the folder synced too. Once. Raises `Refused`; then the old file stands as it was, except
    /// after `kMoved`, and after `kDisk` from the folder's sync, whose texts say that the file is whole.
    void takeName();

private:
    std::optional<struct stat> askForPlace() const;
    bool makeWithoutName(mode_t mode);
    void makeHidden(mode_t mode);
    void usePath();
    bool link(const std::string& name) const;
    void replaceOld(const struct stat* old);
    void keepRights(const struct stat& old) const;
    void sync() const;
    void syncFolder() const;
    [[noreturn]] void refuse(int error) const;
    [[noreturn]] void failAtEnd(int error) const;

    std::string asked_;            // the path as it was named
    std::filesystem::path target_; // what links of that name lead to
    std::filesystem::path inside_; // the target's folder
    Descriptor folder_;            // stays that folder when it is moved
    Descriptor file_;
    std::string hidden_; // its name in the folder; empty: none
    std::string path_;
};

} // namespace disk
