#include "twcore/media/avi_index.h"

#include "twcore/media/picture_kind.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace twcore {

namespace {

constexpr std::int64_t kHeadBytes = 8;  // a chunk's name and the number of its bytes
constexpr std::int64_t kListBytes = 12; // and the kind of what is listed
constexpr int kMostHeads = 1 << 14;     // with more to look at, reading all packets is no slower
constexpr std::int64_t kLongestGroup = 600;

/// A chunk as the file's list tells it.
struct Listed {
    std::int64_t position; // of its head
    std::int64_t time;     // of decoding
    std::int32_t byteCount;
    int stream;
    bool isKey;
};

std::vector<Listed> listedChunks(const AVFormatContext& context)
{
    std::vector<Listed> chunks;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        AVStream* const stream = context.streams[i];
        const int count = avformat_index_get_entries_count(stream);
        for (int k = 0; k < count; ++k) {
            const AVIndexEntry& entry = *avformat_index_get_entry(stream, k);
            chunks.push_back(
                {entry.pos, entry.timestamp, entry.size, static_cast<int>(i), (entry.flags & AVINDEX_KEYFRAME) != 0});
        }
    }
    std::ranges::sort(chunks, {}, &Listed::position);
    return chunks;
}

/// The number of the stream that a chunk's name begins with; -1 for a chunk of another kind.
int streamOf(std::string_view name)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return isDigit(name[0]) && isDigit(name[1]) ? (name[0] - '0') * 10 + (name[1] - '0') : -1;
}

/// Walks over what is not listed.
class Gaps {
public:
    Gaps(const InputFile& file, int stream) : file_(file), stream_(stream) {}

    /// Whether nothing that should be listed lies from `at` up to a chunk's head.
    bool leadsTo(std::int64_t at, std::int64_t end)
    {
        while (at < end) {
            const std::int64_t next = behind(at);
            if (next <= at) {
                return false;
            }
            at = next;
        }
        return at == end;
    }
    /// Whether nothing that should be listed lies from `at` to the end of the file.
    bool endsBehind(std::int64_t at)
    {
        while (at + kHeadBytes <= file_.byteCount()) {
            const std::int64_t next = behind(at);
            if (next <= at) {
                return false;
            }
            at = next;
        }
        return true;
    }
    /// Empty chunks of the stream so far: each is a picture that stays.
    std::int64_t emptyCount() const noexcept { return emptyCount_; }
    /// Whether a chunk of picture with so many bytes begins here.
    bool isPicture(const Listed& chunk)
    {
        return read(chunk.position) && streamOf(name()) == stream_ && (head_[2] == 'd' || head_[2] == 'D')
               && byteCount() == chunk.byteCount;
    }

private:
    bool read(std::int64_t at)
    {
        head_.fill(0);
        return ++heads_ <= kMostHeads && file_.readAt(at, head_) >= static_cast<std::size_t>(kHeadBytes);
    }
    std::string_view name() const { return {reinterpret_cast<const char*>(head_.data()), 4}; }
    std::string_view kind() const { return {reinterpret_cast<const char*>(head_.data()) + kHeadBytes, 4}; }
    std::int64_t byteCount() const
    {
        return std::int64_t{head_[4]} | head_[5] << 8 | head_[6] << 16 | std::int64_t{head_[7]} << 24;
    }

    /// What stands behind the piece that begins here; -1 when it should have been listed, or makes no sense.
    std::int64_t behind(std::int64_t at)
    {
        if (!read(at)) {
            return -1;
        }
        const bool isMedia = kind() == "movi" || kind() == "rec ";
        if (name() == "RIFF" || (name() == "LIST" && isMedia)) {
            return at + kListBytes;
        }
        const std::int64_t size = byteCount();
        const int stream = streamOf(name());
        if (stream >= 0 && size == 0) {
            emptyCount_ += stream == stream_ ? 1 : 0;
            return at + kHeadBytes;
        }
        const bool isKnown = name() == "LIST" || name() == "JUNK" || name() == "idx1" || name().starts_with("ix")
                             || name().substr(2) == "ix" || (stream >= 0 && stream != stream_);
        return isKnown ? at + kHeadBytes + size + size % 2 : -1;
    }

    const InputFile& file_;
    int stream_;
    std::array<std::uint8_t, kListBytes> head_{};
    int heads_ = 0;
    std::int64_t emptyCount_ = 0;
};

bool hasKeysThroughout(const std::vector<PictureIndex::Packet>& packets)
{
    const auto keys = std::ranges::count_if(packets, &PictureIndex::Packet::isKey);
    return !packets.empty() && packets.front().isKey
           && static_cast<std::int64_t>(packets.size()) <= keys * kLongestGroup;
}

} // namespace

std::optional<std::vector<PictureIndex::Packet>> listedByAvi(const InputFile& file, int streamIndex)
{
    if (file.formatName() != "avi" || streamIndex >= static_cast<int>(file.context()->nb_streams)) {
        return std::nullopt;
    }
    Gaps gaps(file, streamIndex);
    std::vector<PictureIndex::Packet> packets;
    std::int64_t at = 0;
    std::int64_t emptyBefore = 0; // ahead of the first picture
    bool isChecked = false;
    const bool mayBeEmpty = file.stream(streamIndex)->codecpar->codec_id == AV_CODEC_ID_MPEG4;
    for (const Listed& chunk : listedChunks(*file.context())) {
        if (at != chunk.position && !gaps.leadsTo(at, chunk.position)) {
            return std::nullopt;
        }
        if (chunk.byteCount == 0 && chunk.stream == streamIndex) {
            at = chunk.position; // an empty one is met again as a gap
            continue;
        }
        at = chunk.position + kHeadBytes + chunk.byteCount + chunk.byteCount % 2;
        if (chunk.stream != streamIndex) {
            continue;
        }
        emptyBefore = packets.empty() ? gaps.emptyCount() : emptyBefore;
        const auto number = static_cast<std::int64_t>(packets.size()) + gaps.emptyCount() - emptyBefore;
        if ((!isChecked && !gaps.isPicture(chunk))
            || (!packets.empty() && chunk.time - packets.front().decodeTime != number)) {
            return std::nullopt;
        }
        isChecked = true;
        // Some writers list the empty packet behind a key frame's packed ones as another.
        const bool isKey = chunk.isKey && (!mayBeEmpty || chunk.byteCount > kEmptyPictureBytes);
        packets.push_back({chunk.position + kHeadBytes, chunk.time, chunk.time, chunk.byteCount, isKey});
    }
    if (!hasKeysThroughout(packets) || at > file.byteCount() + 1 || !gaps.endsBehind(at) || file.gaveUp()) {
        return std::nullopt;
    }
    return packets;
}

} // namespace twcore
