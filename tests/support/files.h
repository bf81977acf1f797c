// Files as tests make and compare them: whole ones in a folder of the test's own, and a disk that has no room left.
#pragma once

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <sys/resource.h>

namespace testmedia {

/// Throws when the file cannot be opened.
inline std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot be read: " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeBytes(const std::filesystem::path& path, const std::string& bytes)
{
    if (!(std::ofstream(path, std::ios::binary) << bytes).flush()) {
        throw std::runtime_error("cannot be written: " + path.string());
    }
}

inline std::string bigEndian(std::uint64_t value, int count = 4)
{
    std::string bytes;
    while (count-- > 0) {
        bytes += static_cast<char>(value >> (8 * count) & 0xFF);
    }
    return bytes;
}

inline std::string littleEndian(std::uint64_t value, int count = 4)
{
    const std::string bytes = bigEndian(value, count);
    return {bytes.rbegin(), bytes.rend()};
}

inline std::uint32_t littleEndianAt(const std::string& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    }
    return value;
}

/// A piece of a RIFF file.
inline std::string chunk(const std::string& name, const std::string& body)
{
    return name + littleEndian(body.size()) + body;
}

/// With other bytes so far behind the first such mark.
inline std::string patched(std::string bytes, const std::string& mark, std::size_t behind, const std::string& with)
{
    const auto at = bytes.find(mark);
    if (at == std::string::npos) {
        throw std::runtime_error("no " + mark + " to patch");
    }
    return bytes.replace(at + mark.size() + behind, with.size(), with);
}

/// A folder of a test's own, open to everybody, gone with it.
class TempFolder {
public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "quillmont-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
        std::filesystem::permissions(path_, std::filesystem::perms::all);
    }
    ~TempFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }
    operator const std::filesystem::path&() const { return path_; }
    const std::filesystem::path& path() const { return path_; }

    std::set<std::string> names() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path path_;
};

/// As long as it lives, this process can write no file beyond so many bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before_{};
};

} // namespace testmedia
