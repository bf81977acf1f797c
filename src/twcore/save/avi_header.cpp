#include "twcore/save/avi_header.h"

#include "twcore/save/byte_text.h"

#include <algorithm>
#include <array>
#include <limits>

namespace twcore {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kChunkHead = 8; // name and size
constexpr std::size_t kListHead = 12; // those and the list's kind
constexpr std::size_t kMaxRoomBytes = 64u << 20;
constexpr std::uint64_t kMaxChunk = std::numeric_limits<std::uint32_t>::max();

struct ChunkHead {
    std::string name;
    std::uint64_t size = 0;
    std::string kind; // of a list

    std::uint64_t whole() const { return kChunkHead + size + (size & 1); }
    bool isList(const char* wanted) const { return (name == "LIST" || name == "RIFF") && kind == wanted; }
};

std::optional<ChunkHead> headAt(int descriptor, std::uint64_t at)
{
    std::array<std::uint8_t, kListHead> bytes{};
    if (!readAt(descriptor, at, std::span(bytes).first(kChunkHead))) {
        return std::nullopt;
    }
    ChunkHead head{std::string(bytes.begin(), bytes.begin() + 4), littleEndian(bytes, 4, 4), {}};
    if ((head.name == "LIST" || head.name == "RIFF") && readAt(descriptor, at, bytes)) {
        head.kind.assign(bytes.begin() + 8, bytes.end());
    }
    return head;
}

void appendChunk(Bytes& to, const std::string& name, const Bytes& body)
{
    to.insert(to.end(), name.begin(), name.end());
    appendLittleEndian(to, body.size(), 4);
    to.insert(to.end(), body.begin(), body.end());
    to.resize(to.size() + (body.size() & 1));
}

bool addAt(int descriptor, std::uint64_t at, std::size_t count, std::uint64_t growth, std::uint64_t most)
{
    std::array<std::uint8_t, 8> old{};
    if (!readAt(descriptor, at, std::span(old).first(count))) {
        return false;
    }
    const std::uint64_t value = littleEndian(old, 0, count);
    Bytes bytes;
    appendLittleEndian(bytes, value + growth, count);
    return value <= most - growth && writeAt(descriptor, at, bytes);
}

} // namespace

std::optional<AviHeader> AviHeader::read(int descriptor)
{
    const auto riff = headAt(descriptor, 0);
    const auto first = headAt(descriptor, kListHead);
    if (!riff || !riff->isList("AVI ") || !first || !first->isList("hdrl")) {
        return std::nullopt;
    }
    AviHeader header;
    header.headerStart_ = 2 * kListHead;
    header.roomStart_ = kListHead + first->whole();
    std::uint64_t at = header.roomStart_;
    for (;;) {
        const auto head = headAt(descriptor, at);
        if (!head || at - header.roomStart_ > kMaxRoomBytes) {
            return std::nullopt;
        }
        if (head->isList("movi")) {
            break;
        }
        if (head->size > kMaxRoomBytes) {
            return std::nullopt;
        }
        Bytes body(head->size);
        if (!readAt(descriptor, at + kChunkHead, body)) {
            return std::nullopt;
        }
        if (!head->isList("INFO")) {
            if (head->name != "JUNK") {
                header.others_.push_back({head->name, std::move(body)});
            }
        } else {
            for (std::size_t i = 4; i + kChunkHead <= body.size();) {
                const std::size_t size =
                    std::min<std::size_t>(littleEndian(body, i + 4, 4), body.size() - i - kChunkHead);
                const auto start = body.begin() + std::ptrdiff_t(i);
                header.fields_.push_back({std::string(start, start + 4),
                                          Bytes(start + kChunkHead, start + std::ptrdiff_t(kChunkHead + size))});
                i += kChunkHead + size + (size & 1);
            }
        }
        at += head->whole();
    }
    header.roomSize_ = static_cast<std::size_t>(at - header.roomStart_);
    return header;
}

void AviHeader::set(const MovieFields& fields)
{
    const auto put = [&](const char* name, const std::string& text) {
        if (text.empty()) {
            return;
        }
        auto found = std::ranges::find(fields_, name, &Chunk::name);
        auto& body = (found != fields_.end() ? *found : fields_.emplace_back(Chunk{name, {}})).body;
        body.assign(text.begin(), text.end());
        body.push_back(0);
    };
    put("INAM", fields.title);
    put("IART", fields.author);
    put("ICOP", fields.copyright);
    put("ICMT", fields.description);
    put("IRTD", fields.rating);
}

std::size_t AviHeader::leastRoom() const
{
    std::size_t size = fields_.empty() ? 0 : kListHead;
    for (const auto* const list : {&fields_, &others_}) {
        for (const auto& chunk : *list) {
            size += kChunkHead + chunk.body.size() + (chunk.body.size() & 1);
        }
    }
    return size;
}

std::vector<std::uint8_t> AviHeader::room(std::size_t size) const
{
    const std::size_t least = leastRoom();
    if (size != least && size < least + kChunkHead) {
        return {};
    }
    Bytes all;
    for (const auto& chunk : others_) {
        appendChunk(all, chunk.name, chunk.body);
    }
    if (!fields_.empty()) {
        Bytes list{'I', 'N', 'F', 'O'};
        for (const auto& chunk : fields_) {
            appendChunk(list, chunk.name, chunk.body);
        }
        appendChunk(all, "LIST", list);
    }
    if (size != least) {
        appendChunk(all, "JUNK", Bytes(size - least - kChunkHead));
    }
    return all;
}

bool AviHeader::moveIndexes(int copy, std::uint64_t growth) const
{
    for (std::uint64_t at = headerStart_; at < roomStart_;) {
        const auto list = headAt(copy, at);
        if (!list) {
            return false;
        }
        if (list->isList("strl")) {
            for (std::uint64_t inner = at + kListHead; inner < at + list->whole();) {
                const auto chunk = headAt(copy, inner);
                if (!chunk || (chunk->name == "indx" && !moveSuperIndex(copy, inner, chunk->size, growth))) {
                    return false;
                }
                inner += chunk->whole();
            }
        }
        at += list->whole();
    }
    return moveOldIndex(copy, growth) && addAt(copy, 4, 4, growth, kMaxChunk);
}

/// The index of a stream names the places of its parts, and each part the place that its entries count from.
bool AviHeader::moveSuperIndex(int copy, std::uint64_t at, std::uint64_t size, std::uint64_t growth) const
{
    constexpr std::uint64_t kEntries = 24; // behind the head of either kind
    constexpr std::uint64_t kBase = 12;
    constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
    std::array<std::uint8_t, kEntries> head{};
    at += kChunkHead;
    if (size < kEntries || !readAt(copy, at, head)) {
        return false;
    }
    if (head[3] != 0) {
        return addAt(copy, at + kBase, 8, growth, kMost); // the entries themselves
    }
    const std::uint64_t count = std::min(littleEndian(head, 4, 4), (size - kEntries) / 16);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t entry = at + kEntries + 16 * i;
        std::array<std::uint8_t, 8> place{};
        if (!addAt(copy, entry, 8, growth, kMost) || !readAt(copy, entry, place)
            || !addAt(copy, littleEndian(place, 0, 8) + kChunkHead + kBase, 8, growth, kMost)) {
            return false;
        }
    }
    return true;
}

/// The old index counts from the list of pictures, which needs nothing, or from the file's start.
bool AviHeader::moveOldIndex(int copy, std::uint64_t growth) const
{
    constexpr std::uint64_t kEntry = 16;
    constexpr std::uint64_t kPlace = 8;
    const std::uint64_t movi = roomStart_ + roomSize_;
    const auto list = headAt(copy, movi + growth);
    if (!list) {
        return false;
    }
    const std::uint64_t at = movi + growth + list->whole();
    const auto index = headAt(copy, at);
    std::array<std::uint8_t, 4> first{};
    if (!index || index->name != "idx1" || index->size < kEntry || !readAt(copy, at + kChunkHead + kPlace, first)
        || littleEndian(first, 0, 4) < movi) {
        return true;
    }
    Bytes entries(index->size);
    if (!readAt(copy, at + kChunkHead, entries)) {
        return false;
    }
    for (std::size_t i = 0; i + kEntry <= entries.size(); i += kEntry) {
        Bytes place;
        appendLittleEndian(place, littleEndian(entries, i + kPlace, 4) + growth, 4);
        std::ranges::copy(place, entries.begin() + std::ptrdiff_t(i + kPlace));
    }
    return writeAt(copy, at + kChunkHead, entries);
}

} // namespace twcore
