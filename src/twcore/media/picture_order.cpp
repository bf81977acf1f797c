#include "twcore/media/picture_order.h"

#include <algorithm>

namespace twcore {

namespace {

// A packet tells its kind at the head; that it holds two pictures is only seen in the whole of it.
constexpr std::size_t kHeadBytes = std::size_t{1} << 14;
constexpr std::size_t kLongestRow = 16; // of pictures that are shown ahead of one
constexpr std::size_t kLongestGroup = 4000;
constexpr auto kOpening = std::chrono::seconds(10);

} // namespace

std::shared_ptr<PictureOrder> PictureOrder::open(const std::string& path, int streamIndex,
                                                 std::vector<PictureIndex::Packet> packets)
{
    std::uint32_t error = 0;
    auto file = InputFile::open(path, Patience{.deadline = std::chrono::steady_clock::now() + kOpening}, error);
    if (!file || streamIndex >= static_cast<int>(file->context()->nb_streams)) {
        return nullptr;
    }
    const bool tellsByItself = file->stream(streamIndex)->codecpar->codec_id == AV_CODEC_ID_MPEG4;
    if (!tellsByItself && !file->readStreamInfo()) {
        return nullptr;
    }
    try {
        return std::shared_ptr<PictureOrder>(new PictureOrder(std::move(file), streamIndex, std::move(packets)));
    } catch (const ListedWrongly&) {
        return nullptr;
    }
}

PictureOrder::PictureOrder(std::unique_ptr<InputFile> file, int streamIndex, std::vector<PictureIndex::Packet> packets)
    : file_(std::move(file)), codec_(*file_->stream(streamIndex)->codecpar), packets_(std::move(packets))
{
    known_.isBidirectional.assign(packets_.size(), -1);
    known_.slotOfOrdinal.assign(packets_.size(), kUnknown);
    known_.ordinalOfSlot.assign(packets_.size(), kUnknown);
    isNumbered_ = readKindAfresh(0, kHeadBytes).orderNumber.has_value();
    isPacked_ = known_.kinds->isPacked();
}

PictureKind PictureOrder::readKind(std::size_t ordinal, std::size_t mostBytes)
{
    const auto& listed = packets_[ordinal];
    const std::size_t wanted = std::min(static_cast<std::size_t>(listed.byteCount), mostBytes);
    known_.bytes.assign(wanted + AV_INPUT_BUFFER_PADDING_SIZE, 0);
    if (file_->readAt(listed.position, std::span(known_.bytes).first(wanted)) < wanted) {
        throw ListedWrongly("A packet is not where the file's own list says.");
    }
    const auto packet = makePacket();
    packet->data = known_.bytes.data();
    packet->size = static_cast<int>(wanted);
    packet->flags = listed.isKey ? AV_PKT_FLAG_KEY : 0;
    const PictureKind kind = known_.kinds->read(*packet);
    if (kind.isKey && *kind.isKey != listed.isKey) {
        throw ListedWrongly("A key frame is not where the file's own list says.");
    }
    return kind;
}

PictureKind PictureOrder::readKindAfresh(std::size_t ordinal, std::size_t mostBytes)
{
    known_.kinds = std::make_unique<PictureKindReader>(codec_);
    return readKind(ordinal, mostBytes);
}

bool PictureOrder::isBidirectional(std::size_t ordinal)
{
    auto& kind = known_.isBidirectional[ordinal];
    if (kind < 0) {
        std::size_t from = ordinal;
        PictureKind read;
        if (ordinal > 0 && packets_[ordinal].byteCount <= kEmptyPictureBytes) {
            do { // to what may hold its picture
                read = readKindAfresh(--from, std::numeric_limits<std::size_t>::max());
            } while (from > 0 && read.isBidirectional && ordinal - from < kLongestRow);
        } else {
            read = readKindAfresh(from, kHeadBytes);
        }
        while (from < ordinal) {
            read = readKind(++from, kHeadBytes);
        }
        kind = read.isBidirectional ? 1 : 0;
    }
    return kind == 1;
}

/// A group begins where the numbers begin anew, and is shown whole before the next.
void PictureOrder::arrangeGroupOf(std::size_t ordinal)
{
    std::size_t first = ordinal;
    PictureKind kind;
    for (;; --first) {
        if (first == 0 || packets_[first].isKey) {
            kind = readKindAfresh(first, kHeadBytes);
            if (first == 0 || kind.startsGroup) {
                break;
            }
        }
        if (ordinal - first > kLongestGroup) {
            throw ListedWrongly("The file's own list shows no beginning of a group.");
        }
    }
    std::vector<std::pair<int, std::uint32_t>> group; // number, ordinal
    for (std::size_t i = first; i == first || !kind.startsGroup;) {
        group.emplace_back(kind.orderNumber.value_or(0), static_cast<std::uint32_t>(i));
        if (++i == packets_.size()) {
            break;
        }
        if (group.size() > 2 * kLongestGroup) {
            throw ListedWrongly("The file's own list shows no end of a group.");
        }
        kind = readKind(i, kHeadBytes);
    }
    std::ranges::stable_sort(group, {}, &std::pair<int, std::uint32_t>::first);
    for (std::size_t i = 0; i < group.size(); ++i) {
        known_.ordinalOfSlot[first + i] = group[i].second;
        known_.slotOfOrdinal[group[i].second] = static_cast<std::uint32_t>(first + i);
    }
}

std::size_t PictureOrder::slotOf(std::size_t ordinal)
{
    const std::lock_guard lock(mutex_);
    if (isNumbered_) {
        if (known_.slotOfOrdinal[ordinal] == kUnknown) {
            arrangeGroupOf(ordinal);
        }
        return known_.slotOfOrdinal[ordinal];
    }
    // A picture that others lean on comes out when the next such one arrives, the others at once.
    if (ordinal > 0 && isBidirectional(ordinal)) {
        return ordinal - 1;
    }
    std::size_t next = ordinal + 1;
    while (next < packets_.size() && isBidirectional(next)) {
        ++next;
    }
    return next - 1;
}

std::size_t PictureOrder::ordinalOf(std::size_t slot)
{
    const std::lock_guard lock(mutex_);
    if (isNumbered_) {
        if (known_.ordinalOfSlot[slot] == kUnknown) {
            arrangeGroupOf(slot);
        }
        return known_.ordinalOfSlot[slot];
    }
    if (slot + 1 < packets_.size() && isBidirectional(slot + 1)) {
        return slot + 1;
    }
    while (slot > 0 && isBidirectional(slot)) {
        --slot;
    }
    return slot;
}

} // namespace twcore
