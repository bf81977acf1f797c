#pragma once

// Pictures of a movie that nothing is done to: they stand in it as their medium has them, packet by packet. Which they
// are depends on the film and its media alone. Serves one thread.

#include "twcore/render/picture_renderer.h"
#include "twcore/save/packet_rules.h"
#include "twcore/save/source_packets.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace twcore {

class CopiedPictures {
public:
    /// Plan, rules and lists outlive it.
    CopiedPictures(const Plan& plan, MovieClock clock, const PacketRules& rules, SourceLists& lists, Patience patience);

    struct Span {
        std::int64_t end = 0;
        bool isCopied = false; // else they have to be encoded
    };
    /// The frames from one on that are copied together, or encoded as a group, before `end`. The renderer, of the same
    /// plan, shows whether anything is done to them.
    Span from(std::int64_t first, std::int64_t end, PictureRenderer& renderer);
    /// Hands out the packets of the frames [first, end) of the span that was answered last, and is copied, until
    /// somebody wants no more of them: then false. Throws std::runtime_error when the medium has changed meanwhile.
    bool hand(std::int64_t first, std::int64_t end, const std::function<bool(PacketPtr)>& take);

private:
    struct Source {
        const MediaFile* media;
        std::unique_ptr<SourcePackets> packets;
    };

    bool mayCopy(const PictureStretch& stretch);
    bool isUntouched(const PictureStretch& stretch, SourcePackets& source, PictureRenderer& renderer);
    /// nullptr when nothing of the medium may be copied. Good until another is opened.
    SourcePackets* open(const MediaFilePtr& media);
    std::optional<std::size_t> packetAt(SourcePackets& source, const PlannedSource& planned, std::int64_t number) const;
    Span groupFrom(SourcePackets& source, const PlannedSource& planned, std::int64_t first, std::int64_t end);
    Span groupBehind(SourcePackets& source, const PlannedSource& planned, std::optional<std::size_t> packet,
                     std::int64_t first, std::int64_t end);
    PacketPtr groupBegin(SourcePackets& source, std::size_t number);
    void hold(PacketPtr packet);

    const Plan& plan_;
    const MovieClock clock_;
    const PacketRules& rules_;
    SourceLists& lists_;
    const Patience patience_;
    std::vector<Source> opened_; // the one used last first: a film of hundreds must not take all descriptors
    std::set<const MediaFile*> refused_;
    std::map<const PictureStretch*, bool> untouched_;

    const PlannedSource* copied_ = nullptr; // of the last span
    std::vector<PacketPtr> held_;           // of its packets; none: they are too many, and are read again
    std::size_t heldBytes_ = 0;
    bool isHeld_ = false;
};

} // namespace twcore
