#include "twcore/media/stream_times.h"

#include "twcore/media/picture_listing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace twcore {

double timeOf(const AVStream& stream, std::int64_t stamp)
{
    return static_cast<double>(stamp) * av_q2d(stream.time_base);
}

namespace {

/// Last moment of each stream by reading every packet: for files whose header does not tell, or may not be believed.
std::array<double, 2> scannedEnds(const std::string& path, std::array<int, 2> indexes, const Patience& patience)
{
    std::array<double, 2> ends{-1, -1};
    std::uint32_t error = 0;
    const auto file = InputFile::open(path, patience, error);
    if (!file || !file->readStreamInfo()) {
        return ends;
    }
    auto packet = makePacket();
    while (file->read(*packet)) {
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            const auto stamp = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
            if (packet->stream_index != indexes[i] || stamp == AV_NOPTS_VALUE) {
                continue;
            }
            const AVStream& stream = *file->stream(indexes[i]);
            double length = timeOf(stream, std::max<std::int64_t>(0, packet->duration));
            if (length == 0 && stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO && stream.avg_frame_rate.num > 0) {
                length = 1 / av_q2d(stream.avg_frame_rate);
            }
            ends[i] = std::max(ends[i], timeOf(stream, stamp) + length);
        }
    }
    return file->gaveUp() ? std::array<double, 2>{-1, -1} : ends;
}

bool headerMayBeWrong(const InputFile& file, TimeStamps timeStamps)
{
    const AVFormatContext& context = *file.context();
    if (context.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE || context.duration <= 0) {
        return true;
    }
    constexpr std::int64_t kQuickBytes = 48 << 20;
    return timeStamps == TimeStamps::kIndexed && file.byteCount() <= kQuickBytes;
}

/// The end of a stream as Matroska's tags tell it, hours:minutes:seconds; 0 when they do not.
double taggedEnd(const AVStream& stream)
{
    const auto* const tag = av_dict_get(stream.metadata, "DURATION", nullptr, AV_DICT_IGNORE_SUFFIX);
    int hours = 0;
    int minutes = 0;
    double seconds = 0;
    const bool isRead = tag != nullptr && std::sscanf(tag->value, "%d:%d:%lf", &hours, &minutes, &seconds) == 3;
    return isRead ? (hours * 60 + minutes) * 60 + seconds : 0;
}

double headerEnd(const InputFile& file, const AVStream& stream)
{
    const AVFormatContext& context = *file.context();
    if (const double tagged = taggedEnd(stream); tagged > 0) {
        return tagged;
    }
    if (stream.duration != AV_NOPTS_VALUE && stream.duration > 0) {
        return timeOf(stream, stream.duration + (stream.start_time != AV_NOPTS_VALUE ? stream.start_time : 0));
    }
    if (context.duration > 0) {
        const std::int64_t start = context.start_time != AV_NOPTS_VALUE ? context.start_time : 0;
        return static_cast<double>(context.duration + start) / AV_TIME_BASE;
    }
    return 0;
}

std::int32_t lengthMs(double seconds)
{
    return static_cast<std::int32_t>(std::clamp(std::round(seconds * 1000), 0.0, 2'000'000'000.0));
}

} // namespace

void setLengths(MediaFile& media, const InputFile& file, const Patience& patience)
{
    if (media.picture && media.sound) {
        media.zeroSeconds = std::min(media.picture->startSeconds, media.sound->startSeconds);
    } else {
        media.zeroSeconds = media.picture ? media.picture->startSeconds : media.sound->startSeconds;
    }
    if (media.picture && media.picture->isStill) {
        media.picture->durationMs = kStillMs;
        return;
    }
    std::array<double, 2> ends{-1, -1};
    if (headerMayBeWrong(file, media.timeStamps)) {
        ends = scannedEnds(
            media.path, {media.picture ? media.picture->streamIndex : -1, media.sound ? media.sound->streamIndex : -1},
            patience);
        if (media.picture && media.timeStamps == TimeStamps::kIndexed) {
            const auto index = PictureIndex::build(media, patience);
            ends[0] = index ? index->startOfSlot(index->count()) : ends[0];
            if (index && media.listing) {
                media.listing->keep(index);
            }
        }
    }
    const auto setLength = [&](auto& facts, double scanned) {
        const double end = scanned >= 0 ? scanned : headerEnd(file, *file.stream(facts.streamIndex));
        facts.durationMs = lengthMs(end - media.zeroSeconds);
    };
    if (media.picture) {
        setLength(*media.picture, ends[0]);
    }
    if (media.sound) {
        setLength(*media.sound, ends[1]);
    }
}

} // namespace twcore
