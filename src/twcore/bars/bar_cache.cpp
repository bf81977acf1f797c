#include "twcore/bars/bar_cache.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace twcore {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kMark = 0x31524251; // also tells the version
constexpr auto kSubject = static_cast<BarCache::Kind>(0);
constexpr std::uint32_t kMostBytes = 16u << 20; // of a record
constexpr std::size_t kMostOpen = 8;
constexpr std::string_view kEnding = ".bars";

struct Head {
    std::uint32_t mark = kMark;
    std::uint32_t kind = 0;
    std::int32_t number = 0;
    std::uint32_t byteCount = 0;
    std::uint64_t sum = 0;
};

std::uint64_t sumOf(std::span<const std::uint8_t> bytes, std::uint64_t sum = 0xcbf29ce484222325u)
{
    constexpr std::uint64_t kPrime = 0x100000001b3u; // of the FNV-1a sum, here over eight bytes at once
    std::size_t i = 0;
    for (; i + sizeof sum <= bytes.size(); i += sizeof sum) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, sizeof word);
        sum = (sum ^ word) * kPrime;
        sum ^= sum >> 32;
    }
    for (; i < bytes.size(); ++i) {
        sum = (sum ^ bytes[i]) * kPrime;
    }
    return sum ^ bytes.size();
}

std::span<const std::uint8_t> bytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

bool readAll(int descriptor, std::int64_t position, void* target, std::size_t count)
{
    auto* bytes = static_cast<std::uint8_t*>(target);
    while (count > 0) {
        const auto got = ::pread(descriptor, bytes, count, position);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        bytes += got;
        position += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

std::int64_t lengthOf(int descriptor)
{
    struct stat facts {};
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) ? facts.st_size : -1;
}

} // namespace

BarCache::~BarCache() { close(); }

void BarCache::close()
{
    for (const OpenFile& file : files_) {
        ::close(file.descriptor);
    }
    files_.clear();
}

/// Brings the file to the front; nullptr when there is none, and with `makes` when it cannot be made.
BarCache::OpenFile* BarCache::open(const std::string& path, const FileStamp& stamp, bool makes)
{
    if (folder_.empty() || !stamp.isThere || hasFailed_) {
        return nullptr;
    }
    const std::string subject = path + '\n' + std::to_string(stamp.changed) + ' ' + std::to_string(stamp.byteCount);
    char name[32];
    std::snprintf(name, sizeof name, "/%016llx%s", static_cast<unsigned long long>(sumOf(bytesOf(subject))),
                  kEnding.data());
    const std::string file = folder_ + name;
    const auto found = std::ranges::find(files_, file, &OpenFile::name);
    if (found != files_.end()) {
        files_.splice(files_.begin(), files_, found);
        return &files_.front();
    }
    if (makes && !isMade_) {
        std::error_code error;
        fs::create_directories(folder_, error);
        isMade_ = true;
        makeRoom();
    }
    const int descriptor =
        ::open(file.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | (makes ? O_CREAT : 0), 0600);
    if (descriptor < 0) {
        hasFailed_ = makes;
        return nullptr;
    }
    files_.push_front({file, descriptor, {}});
    if (!readRecords(files_.front(), subject)) {
        remove(files_.front());
        return makes ? open(path, stamp, makes) : nullptr;
    }
    (void)::futimens(descriptor, nullptr); // used now
    if (files_.size() > kMostOpen) {
        ::close(files_.back().descriptor);
        files_.pop_back();
    }
    return &files_.front();
}

/// Walks over the heads of the records. False when one is not as it must be.
bool BarCache::readRecords(OpenFile& file, const std::string& subject)
{
    const std::int64_t length = lengthOf(file.descriptor);
    if (length == 0) {
        return append(file, kSubject, 0, bytesOf(subject));
    }
    std::int64_t position = 0;
    while (position < length) {
        Head head;
        if (!readAll(file.descriptor, position, &head, sizeof head) || head.mark != kMark
            || head.byteCount > kMostBytes) {
            return false;
        }
        position += static_cast<std::int64_t>(sizeof head);
        file.records[{static_cast<Kind>(head.kind), head.number}] = {position, head.byteCount, head.sum};
        position += head.byteCount;
    }
    const auto own = file.records.find({kSubject, 0});
    if (position != length || own == file.records.end() || own->second.byteCount != subject.size()) {
        return false;
    }
    std::string told(subject.size(), '\0');
    return readAll(file.descriptor, own->second.position, told.data(), told.size()) && told == subject;
}

/// In one piece, so that records of two programs do not mingle.
bool BarCache::append(OpenFile& file, Kind kind, std::int32_t number, std::span<const std::uint8_t> bytes)
{
    const Head head{kMark, static_cast<std::uint32_t>(kind), number, static_cast<std::uint32_t>(bytes.size()),
                    sumOf(bytes)};
    Bytes record(sizeof head + bytes.size());
    std::memcpy(record.data(), &head, sizeof head);
    std::ranges::copy(bytes, record.begin() + sizeof head);
    const auto written = ::write(file.descriptor, record.data(), record.size());
    if (written != static_cast<std::int64_t>(record.size())) {
        hasFailed_ = true; // the disk is full, or gone; what stands torn is found out by whoever opens it next
        return false;
    }
    const std::int64_t end = ::lseek(file.descriptor, 0, SEEK_CUR);
    file.records[{kind, number}] = {end - static_cast<std::int64_t>(bytes.size()), head.byteCount, head.sum};
    added_ += static_cast<std::int64_t>(record.size());
    return true;
}

void BarCache::remove(OpenFile& file)
{
    if (::unlink(file.name.c_str()) != 0 && errno != ENOENT) {
        hasFailed_ = true; // it would be found damaged again and again
    }
    ::close(file.descriptor);
    files_.remove_if([&](const OpenFile& other) { return &other == &file; });
}

std::optional<BarCache::Bytes> BarCache::find(const std::string& path, const FileStamp& stamp, Kind kind,
                                              std::int32_t number)
{
    OpenFile* const file = open(path, stamp, false);
    const auto found = file != nullptr ? file->records.find({kind, number}) : decltype(file->records.end()){};
    if (file == nullptr || found == file->records.end()) {
        return std::nullopt;
    }
    Bytes bytes(found->second.byteCount);
    if (!readAll(file->descriptor, found->second.position, bytes.data(), bytes.size())
        || sumOf(bytes) != found->second.sum) {
        remove(*file);
        return std::nullopt;
    }
    return bytes;
}

void BarCache::keep(const std::string& path, const FileStamp& stamp, Kind kind, std::int32_t number,
                    std::span<const std::uint8_t> bytes)
{
    OpenFile* const file = bytes.size() <= kMostBytes ? open(path, stamp, true) : nullptr;
    if (file != nullptr && append(*file, kind, number, bytes) && added_ > mostBytes_ / 8) {
        makeRoom();
    }
}

/// Down to seven eighths of what it may take: the files that were used longest ago go.
void BarCache::makeRoom()
{
    struct Old {
        fs::file_time_type used;
        std::int64_t byteCount;
        fs::path path;
    };
    std::vector<Old> all;
    std::int64_t bytes = 0;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code gone;
        if (entry->path().extension() == kEnding && entry->is_regular_file(gone) && !gone) {
            all.push_back(
                {entry->last_write_time(gone), static_cast<std::int64_t>(entry->file_size(gone)), entry->path()});
            bytes += std::max<std::int64_t>(0, all.back().byteCount);
        }
    }
    added_ = 0;
    std::ranges::sort(all, {}, &Old::used);
    for (const Old& old : all) {
        if (bytes <= mostBytes_ / 8 * 7) {
            break;
        }
        fs::remove(old.path, error);
        bytes -= old.byteCount;
        const auto open = std::ranges::find(files_, old.path.string(), &OpenFile::name);
        if (open != files_.end()) {
            ::close(open->descriptor);
            files_.erase(open);
        }
    }
}

} // namespace twcore
