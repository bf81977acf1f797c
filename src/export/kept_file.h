#pragma once

// The file that stands under a movie's name before the movie does. Interface thread only.

#include <string>

namespace exporting {

/// Asks whether the movie may be written there at all, as for any file that is replaced: raises `disk::Refused`, whose
/// text is for people, ahead of any change.
void askForPlace(const std::string& path);

/// Nobody is to lose a file unasked: it is renamed beside itself while the object lives, and gets its name back with
/// the object's end, unless `letGo` was called. Of links the file that they lead to is meant. Nothing happens where
/// there is no file.
class KeptFile {
public:
    /// Raises `disk::Refused`.
    explicit KeptFile(const std::string& path);
    ~KeptFile();
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

    /// The movie is being written: the old file goes to the trash, or stays beside it where there is none.
    void letGo();

private:
    std::string path_;  // without links
    std::string aside_; // empty: none
};

} // namespace exporting
