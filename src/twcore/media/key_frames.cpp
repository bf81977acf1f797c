#include "twcore/media/key_frames.h"

#include "twcore/media/picture_reader.h"

#include <algorithm>

namespace twcore {

namespace {

std::vector<double> fromIndex(const MediaFilePtr& media, const Patience& patience)
{
    std::vector<double> times;
    if (const auto index = sharedPictureIndex(media, patience)) {
        for (std::size_t i = 0; i < index->count(); ++i) {
            if (index->packet(i).isKey) {
                times.push_back(index->startOfSlot(index->slotOf(i)) - media->zeroSeconds);
            }
        }
    }
    return times;
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
    for (int i = 0; i < count; ++i) {
        const auto* const entry = avformat_index_get_entry(stream, i);
        if ((entry->flags & AVINDEX_KEYFRAME) != 0) {
            times.push_back(static_cast<double>(entry->timestamp) * av_q2d(stream->time_base) - media->zeroSeconds);
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
