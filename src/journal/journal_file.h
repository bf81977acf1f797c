#pragma once

// The file of a journal: differences behind one another, each with its length and its checksum, so that what a kill or
// a power cut has torn off is cut at the last whole one. It is only ever appended to.
//
//     "QMJRNL01" | u32 length | u64 checksum of length and bytes | bytes | u32 length | ...
//
// One process at a time holds a file: a lock that goes with it. One object is used by one thread at a time.

#include "disk/whole_file.h"
#include "journal/objects.h"

#include <filesystem>
#include <memory>
#include <string>

namespace journal {

/// A folder for journals, for the user alone. Errors show when a file is made in it.
void makeFolder(const std::filesystem::path& folder);

/// Takes in the differences of a file up to the first that is not whole. False when it cannot be read, or is none.
bool readJournal(const std::string& path, Objects& objects);

class JournalFile {
public:
    /// Makes the file, for the user alone, when it is not there. Nothing when another process holds it, or the system
    /// refuses.
    static std::unique_ptr<JournalFile> open(const std::string& path);

    /// What it holds. What is torn off behind it goes with the next `append`.
    void read(Objects& objects);
    /// It was made by a program that this one does not understand.
    bool isForeign() const;
    /// False when somebody removed it, put another one in its place or cut it: what it held is gone then.
    bool isWhole() const;
    /// An empty one under the name, also where its folder has gone.
    bool renew();
    /// In the system's hands when it comes back: a kill of the process loses nothing of it. False when it could not be
    /// written whole; the file ends as before then. So do the others.
    bool append(std::string_view difference);
    bool empty();
    /// In place of all that it holds, on the disk; there is always the old or the new under its name.
    bool replace(std::string_view difference);
    /// The file gets another name, and an empty one takes its place.
    bool moveAway(const std::string& path);

    /// A new file's name reaches the disk.
    void syncFolder() const;

    std::uint64_t byteCount() const { return end_; }
    /// For a thread that syncs.
    std::shared_ptr<disk::Descriptor> descriptor() const { return file_; }

private:
    JournalFile(std::string path, std::shared_ptr<disk::Descriptor> file);

    std::string path_;
    std::shared_ptr<disk::Descriptor> file_;
    std::uint64_t end_ = 0;
};

} // namespace journal
