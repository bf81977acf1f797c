#include "twcore/media/key_frames.h"

#include "twcore/media/picture_listing.h"

#include <algorithm>

namespace twcore {

namespace {

std::vector<double> fromIndex(const MediaFilePtr& media, const Patience& patience)
{
    std::vector<double> times;
    const auto index = media->listing ? media->listing->whole(*media, patience) : nullptr;
    if (!index) {
        return times;
    }
    try {
        for (std::size_t i = 0; i < index->count() && !patience.over(); ++i) {
            if (index->packet(i).isKey) {
                times.push_back(index->startOfSlot(index->slotOf(i)) - media->zeroSeconds);
            }
        }
    } catch (const ListedWrongly&) {
        media->listing->distrust(index);
        return fromIndex(media, patience);
    }
    return times;
}

/// Some formats list when a picture is decoded, which is ahead of when it is shown, and by the same for every key
/// frame. Told by the first packet, in the stream's time base.
std::int64_t listedAhead(AVFormatContext& file, AVStream& stream)
{
    const auto packet = makePacket();
    while (av_read_frame(&file, packet.get()) >= 0) {
        const bool isOurs = packet->stream_index == stream.index;
        const std::int64_t shown = packet->pts;
        const std::int64_t position = packet->pos;
        av_packet_unref(packet.get());
        if (!isOurs) {
            continue;
        }
        for (int i = 0; i < avformat_index_get_entries_count(&stream); ++i) {
            const auto* const entry = avformat_index_get_entry(&stream, i);
            if (entry->pos == position) {
                return shown != AV_NOPTS_VALUE ? std::max<std::int64_t>(0, shown - entry->timestamp) : 0;
            }
        }
        return 0;
    }
    return 0;
}

std::vector<double> fromHeader(const MediaFilePtr& media, const Patience& patience)
{
    std::vector<double> times;
    std::uint32_t error = 0;
    const auto file = InputFile::open(media->path, patience, error);
    if (!file || media->picture->streamIndex >= static_cast<int>(file->context()->nb_streams)) {
        return times;
    }
    auto* const stream = file->context()->streams[media->picture->streamIndex];
    const int count = avformat_index_get_entries_count(stream);
    const std::int64_t delay = count > 0 ? listedAhead(*file->context(), *stream) : 0;
    for (int i = 0; i < count; ++i) {
        const auto* const entry = avformat_index_get_entry(stream, i);
        if ((entry->flags & AVINDEX_KEYFRAME) != 0) {
            times.push_back(static_cast<double>(entry->timestamp + delay) * av_q2d(stream->time_base)
                            - media->zeroSeconds);
        }
    }
    return times;
}

} // namespace

std::vector<double> keyFrameTimes(const MediaFilePtr& media, const Patience& patience)
{
    if (!media->picture || media->picture->isStill) {
        return {};
    }
    auto times = media->timeStamps == TimeStamps::kIndexed ? fromIndex(media, patience) : fromHeader(media, patience);
    std::ranges::sort(times);
    return times;
}

} // namespace twcore
