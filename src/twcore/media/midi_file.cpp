#include "twcore/media/midi_file.h"

#include "engine/file_presence.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <string_view>
#include <unistd.h>

namespace twcore {

namespace {

constexpr double kMaxSeconds = 4 * 3600; // a damaged delta time must not make a song of years

constexpr std::size_t kHeaderBytes = 14;

using Bytes = std::span<const std::uint8_t>;

struct TempoChange {
    std::uint64_t tick;
    std::uint32_t microsecondsPerBeat;
};

std::uint32_t bigEndian(Bytes bytes, std::size_t at, std::size_t count)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = value << 8 | bytes[at + i];
    }
    return value;
}

/// One track's events, read for their times alone.
class TrackReader {
public:
    explicit TrackReader(Bytes bytes) : bytes_(bytes) {}

    /// Adds the tempo changes, and returns the tick of the last event.
    std::uint64_t read(std::vector<TempoChange>& tempos)
    {
        std::uint64_t tick = 0;
        std::uint64_t last = 0;
        std::uint8_t status = 0;
        while (at_ < bytes_.size()) {
            tick += variableLength();
            if (at_ >= bytes_.size()) {
                break;
            }
            if (bytes_[at_] >= 0x80) {
                status = bytes_[at_++];
            } else if (status < 0x80 || status >= 0xF0) {
                break; // no status to run on: damaged from here
            }
            last = tick;
            if (status == 0xFF) {
                if (!readMeta(tick, tempos)) {
                    break;
                }
            } else if (status == 0xF0 || status == 0xF7) {
                skip(variableLength());
            } else {
                const int kind = status >> 4;
                skip(kind == 0xC || kind == 0xD ? 1 : 2);
            }
        }
        return last;
    }

private:
    bool readMeta(std::uint64_t tick, std::vector<TempoChange>& tempos)
    {
        if (at_ >= bytes_.size()) {
            return false;
        }
        const std::uint8_t type = bytes_[at_++];
        const std::uint32_t length = variableLength();
        if (type == 0x51 && length == 3 && at_ + 3 <= bytes_.size()) {
            tempos.push_back({tick, bigEndian(bytes_, at_, 3)});
        }
        skip(length);
        return type != 0x2F;
    }

    std::uint32_t variableLength()
    {
        std::uint32_t value = 0;
        for (int i = 0; i < 4 && at_ < bytes_.size(); ++i) {
            const std::uint8_t byte = bytes_[at_++];
            value = value << 7 | (byte & 0x7F);
            if (byte < 0x80) {
                break;
            }
        }
        return value;
    }

    void skip(std::size_t count) { at_ = std::min(bytes_.size(), at_ + count); }

    Bytes bytes_;
    std::size_t at_ = 0;
};

double secondsAt(std::uint64_t tick, std::vector<TempoChange>& tempos, std::uint32_t division)
{
    if ((division & 0x8000) != 0) { // frames a second, and ticks a frame
        const double fps = 256 - (division >> 8);
        return static_cast<double>(tick) / (fps * std::max<std::uint32_t>(1, division & 0xFF));
    }
    std::ranges::stable_sort(tempos, {}, &TempoChange::tick);
    double seconds = 0;
    std::uint64_t from = 0;
    double perTick = 0.5 / std::max<std::uint32_t>(1, division); // 120 beats a minute until told otherwise
    for (const auto& tempo : tempos) {
        if (tempo.tick >= tick) {
            break;
        }
        seconds += static_cast<double>(tempo.tick - from) * perTick;
        from = tempo.tick;
        perTick = tempo.microsecondsPerBeat * 1e-6 / std::max<std::uint32_t>(1, division);
    }
    return seconds + static_cast<double>(tick - from) * perTick;
}

/// Calls back with the place and length of each chunk of a song, as far as it reaches; answers where the last one ends
/// as it says itself, which may be behind the end.
template <class Callback>
std::size_t walkChunks(Bytes song, Callback callback)
{
    std::size_t at = 8 + std::size_t{bigEndian(song, 4, 4)};
    while (at + 8 <= song.size()) {
        const std::size_t told = bigEndian(song, at + 4, 4);
        callback(at, std::min<std::size_t>(told, song.size() - at - 8));
        at += 8 + told;
    }
    return at;
}

} // namespace

std::vector<std::uint8_t> readBeginning(const std::string& path, std::size_t most, const Patience& patience)
{
    std::vector<std::uint8_t> bytes;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    int cause = descriptor < 0 ? errno : 0;
    for (bool ended = false; cause == 0 && !ended && bytes.size() < most && !patience.over();) {
        constexpr std::size_t kBlock = 65536;
        const std::size_t known = bytes.size();
        bytes.resize(known + std::min(kBlock, most - known));
        const auto count = ::read(descriptor, bytes.data() + known, bytes.size() - known);
        cause = count < 0 && errno != EINTR ? errno : 0;
        ended = count == 0;
        bytes.resize(known + static_cast<std::size_t>(std::max<ssize_t>(0, count)));
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (cause != 0) {
        bytes.clear();
        if (cause == ENOENT || cause == ENOTDIR) {
            engine::filePresence().tell(path, false);
        }
        if (patience.faults != nullptr) {
            patience.faults->note(path, cause);
        }
    }
    return bytes;
}

bool isMidiFile(const std::string& path, const Patience& patience)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return false;
    }
    const auto head = readBeginning(path, 12, patience);
    return (head.size() >= 4 && std::memcmp(head.data(), "MThd", 4) == 0)
           || (head.size() == 12 && std::memcmp(head.data(), "RIFF", 4) == 0
               && std::memcmp(head.data() + 8, "RMID", 4) == 0);
}

std::vector<std::uint8_t> readMidi(const std::string& path, const Patience& patience)
{
    auto song = readBeginning(path, kMostMidiBytes, patience);
    const bool isCut = song.size() >= kMostMidiBytes;
    const std::string_view signature = "MThd";
    song.erase(song.begin(), std::search(song.begin(), song.end(), signature.begin(), signature.end()));
    if (song.size() < kHeaderBytes) {
        return {};
    }
    std::size_t end = 0; // of the last track; what stands behind it is none of the song
    const std::size_t told = walkChunks(song, [&](std::size_t at, std::size_t length) {
        end = std::memcmp(&song[at], "MTrk", 4) == 0 ? at + 8 + length : end;
    });
    if (isCut && end == song.size() && told > end) {
        return {};
    }
    song.resize(std::max(end, kHeaderBytes));
    song.shrink_to_fit();
    return song;
}

std::optional<std::int32_t> midiLengthMs(const std::vector<std::uint8_t>& song)
{
    if (song.size() < kHeaderBytes) {
        return std::nullopt;
    }
    const Bytes bytes(song);
    const std::uint32_t division = bigEndian(bytes, 12, 2);
    std::vector<TempoChange> tempos;
    std::uint64_t last = 0;
    walkChunks(bytes, [&](std::size_t at, std::size_t length) {
        if (std::memcmp(&bytes[at], "MTrk", 4) == 0) {
            last = std::max(last, TrackReader(bytes.subspan(at + 8, length)).read(tempos));
        }
    });
    if (last == 0) {
        return std::nullopt;
    }
    const double seconds = std::min(secondsAt(last, tempos, division), kMaxSeconds);
    return static_cast<std::int32_t>(std::ceil(seconds * 1000));
}

std::string findSoundFont()
{
    std::error_code error;
    if (const char* const chosen = std::getenv("QUILLMONT_SOUNDFONT");
        chosen != nullptr && std::filesystem::is_regular_file(chosen, error)) {
        return chosen;
    }
    for (const char* const path : {"/usr/share/sounds/sf2/TimGM6mb.sf2", "/usr/share/sounds/sf2/default-GM.sf2",
                                   "/usr/share/sounds/sf3/default-GM.sf3", "/usr/share/sounds/sf2/FluidR3_GM.sf2",
                                   "/usr/share/soundfonts/default.sf2", "/usr/share/soundfonts/FluidR3_GM.sf2",
                                   "/usr/local/share/sounds/sf2/default-GM.sf2"}) {
        if (std::filesystem::is_regular_file(path, error)) {
            return path;
        }
    }
    return {};
}

} // namespace twcore
