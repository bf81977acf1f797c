#include "twcore/media/picture_packets.h"

#include "twcore/media/picture_kind.h"

#include <algorithm>
#include <cmath>

namespace twcore {

bool PicturePackets::open(const Patience& patience)
{
    std::uint32_t error = 0;
    file_ = InputFile::open(media_->path, patience, error);
    const int stream = media_->picture->streamIndex;
    // The header was tried before; a file that has changed since may offer less.
    if (!file_ || !file_->readStreamInfo() || stream >= static_cast<int>(file_->context()->nb_streams)) {
        return false;
    }
    file_->keepOnly(stream);
    constexpr std::size_t kGroup = 24;
    const AVCodecDescriptor* const codec = avcodec_descriptor_get(this->stream().codecpar->codec_id);
    lookAhead_ = codec != nullptr && (codec->props & AV_CODEC_PROP_INTRA_ONLY) != 0 ? 1 : kGroup;
    running_ = RunningStamps(media_->breaks, 0);
    isOfOneHeader_ = true;
    forget();
    return true;
}

double PicturePackets::tolerance() const noexcept
{
    constexpr double kRounded = 0.00051; // to whole milliseconds, also from the middle between two
    const bool isRounded = (tick() >= 0.0009 && !media_->listing) || media_->formatName == "flv";
    return isRounded ? kRounded : kStampTolerance;
}

void PicturePackets::forget()
{
    fileEnded_ = false;
    ahead_.clear();
}

bool PicturePackets::fetch()
{
    auto packet = makePacket();
    while (!fileEnded_) {
        fileEnded_ = !file_->read(*packet);
        if (!fileEnded_ && packet->stream_index == media_->picture->streamIndex) {
            if (packet->pts != AV_NOPTS_VALUE && packet->dts != AV_NOPTS_VALUE) {
                longestLead_ = std::max(longestLead_, packet->pts - packet->dts);
            }
            isOfOneHeader_ =
                isOfOneHeader_ && av_packet_get_side_data(packet.get(), AV_PKT_DATA_NEW_EXTRADATA, nullptr) == nullptr;
            running_.apply(*packet);
            ahead_.push_back(std::move(packet));
            return true;
        }
    }
    return false;
}

PacketPtr PicturePackets::take()
{
    PacketPtr packet = std::move(ahead_.front());
    ahead_.pop_front();
    return packet;
}

bool PicturePackets::anyBetween(double start, double end)
{
    const double seconds = tick();
    const auto comesBetween = [&](const PacketPtr& other) {
        const double begin = static_cast<double>(other->pts) * seconds;
        return other->pts != AV_NOPTS_VALUE && begin > start && begin <= end;
    };
    if (std::ranges::any_of(ahead_, comesBetween)) {
        return true;
    }
    while (ahead_.size() < lookAhead_ && fetch()) {
        if (comesBetween(ahead_.back())) {
            return true;
        }
    }
    return false;
}

bool PicturePackets::tellTimes() const
{
    return std::ranges::all_of(ahead_, [](const PacketPtr& packet) { return packet->pts != AV_NOPTS_VALUE; });
}

bool PicturePackets::jumpByTime(std::int64_t stamp)
{
    forget();
    if (av_seek_frame(file_->context(), media_->picture->streamIndex, stamp, AVSEEK_FLAG_BACKWARD) < 0) {
        return false;
    }
    while (fetch() && (ahead_.front()->flags & AV_PKT_FLAG_KEY) == 0) {
        ahead_.clear();
    }
    return !ahead_.empty();
}

bool PicturePackets::jumpByIndex(const PictureIndex& index, std::size_t keyOrdinal)
{
    const int streamIndex = media_->picture->streamIndex;
    const auto& key = index.packet(keyOrdinal);
    const bool byBytes =
        key.position >= 0 && (media_->formatName == "mpeg" || media_->breaks || key.storedTime == AV_NOPTS_VALUE);
    forget();
    running_.startAt(key.position);
    const int result = byBytes ? av_seek_frame(file_->context(), streamIndex, key.position, AVSEEK_FLAG_BYTE)
                               : av_seek_frame(file_->context(), streamIndex, key.storedTime, AVSEEK_FLAG_BACKWARD);
    if (result < 0) {
        return false;
    }
    // The first packets behind a jump by bytes may be pieces that no number fits.
    constexpr int kPieces = 64;
    for (int unknown = 0; unknown < kPieces && fetch(); ahead_.clear()) {
        const AVPacket& packet = *ahead_.front();
        const auto ordinal = index.identify(packet.pos, stampOf(packet), packet.size);
        if (!ordinal) {
            ++unknown;
        } else if (*ordinal == keyOrdinal) {
            return !index.isFromFile()
                   || ((packet.flags & AV_PKT_FLAG_KEY) != 0
                       && isKeyByHead(stream().codecpar->codec_id, packet).value_or(true));
        } else if (*ordinal > keyOrdinal) {
            return false;
        }
    }
    return false;
}

std::optional<std::int64_t> PicturePackets::keyStampFor(double seconds) const
{
    // Formats list their key frames by the time of decoding, which is ahead of the time at which they are shown.
    const auto stamp = static_cast<std::int64_t>(std::floor(seconds / tick())) - longestLead_;
    const auto* const key =
        avformat_index_get_entry_from_timestamp(const_cast<AVStream*>(&stream()), stamp, AVSEEK_FLAG_BACKWARD);
    return key != nullptr ? std::optional(key->timestamp) : std::nullopt;
}

std::optional<std::int64_t> PicturePackets::keyStampBehind(std::int64_t key) const
{
    const auto* const next = avformat_index_get_entry_from_timestamp(const_cast<AVStream*>(&stream()), key + 1, 0);
    return next != nullptr ? std::optional(next->timestamp) : std::nullopt;
}

bool PicturePackets::isFirstKey(std::int64_t stamp) const
{
    const auto* const entry = avformat_index_get_entry(const_cast<AVStream*>(&stream()), 0);
    return entry != nullptr && stamp <= entry->timestamp;
}

} // namespace twcore
