#pragma once

// The media files of a project that is being opened: each is opened where the project says that it is, or where the
// person finds it. Interface thread only.

#include <cstdint>
#include <string>

namespace project {

enum class Found : std::uint8_t {
    kOpened,
    kElsewhere, // opened, but in another place than the project says
    kRefused,   // the engine cannot render it, and the person knows
    kDeclined,  // the person does not want to search for it, and was told the end of it
    kCancelled  // the person ended the opening
};

class MediaSearch {
public:
    /// Of the project at that path, beside which files are looked for too when their names are not whole paths.
    explicit MediaSearch(const std::string& project);

    /// Which file is being opened, in the status bar: "Opening file 01 of 12 (a.avi) from project "p.qpj"".
    void sayProgress(std::int32_t number, std::int32_t count, const std::string& source) const;

    /// Opens one with its streams and its row. Raises 32755 when the person cancels the search, and what the engine
    /// raises.
    Found open(const std::string& source);

    /// Whether any file was found elsewhere.
    bool hasSearched() const { return hasSearched_; }

private:
    Found search(const std::string& source);

    std::string project_;
    std::string folder_; // where the last one was found
    bool hasSearched_ = false;
};

} // namespace project
