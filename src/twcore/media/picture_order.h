#pragma once

// In which order the pictures of an AVI file are shown, worked out where it is asked for: the file's own list tells
// where every packet stands, and only those around the picture in question are read. What has been read is kept.
//
// Any thread may ask. Everything throws ListedWrongly when a packet does not stand where the list says.

#include "twcore/media/picture_index.h"
#include "twcore/media/picture_kind.h"

#include <mutex>

namespace twcore {

class PictureOrder {
public:
    /// nullptr when the file cannot be opened, or its first packet is not where the list says.
    static std::shared_ptr<PictureOrder> open(const std::string& path, int streamIndex,
                                              std::vector<PictureIndex::Packet> packets);

    std::size_t slotOf(std::size_t ordinal);
    std::size_t ordinalOf(std::size_t slot);
    /// As the stream tells at its beginning.
    bool isPacked() const noexcept { return isPacked_; }

private:
    static constexpr std::uint32_t kUnknown = 0xFFFF'FFFF;

    /// Used while the lock is held.
    struct Known {
        std::vector<signed char> isBidirectional; // -1: not read yet
        std::vector<std::uint32_t> slotOfOrdinal; // of codecs that number their pictures
        std::vector<std::uint32_t> ordinalOfSlot;
        std::unique_ptr<PictureKindReader> kinds;
        std::vector<std::uint8_t> bytes;
    };

    PictureOrder(std::unique_ptr<InputFile> file, int streamIndex, std::vector<PictureIndex::Packet> packets);

    PictureKind readKind(std::size_t ordinal, std::size_t mostBytes);
    PictureKind readKindAfresh(std::size_t ordinal, std::size_t mostBytes);
    bool isBidirectional(std::size_t ordinal);
    void arrangeGroupOf(std::size_t ordinal);

    const std::unique_ptr<const InputFile> file_;
    const AVCodecParameters& codec_;
    const std::vector<PictureIndex::Packet> packets_;
    bool isNumbered_ = false; // set when it is opened, as the next
    bool isPacked_ = false;

    std::mutex mutex_;
    Known known_;
};

} // namespace twcore
