#include "twcore/media/stream_times.h"

#include "twcore/media/picture_listing.h"
#include "twcore/media/stamp_guard.h"
#include "twcore/media/stamp_scan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace twcore {

double timeOf(const AVStream& stream, std::int64_t stamp)
{
    return static_cast<double>(stamp) * av_q2d(stream.time_base);
}

double ownEndOf(const MediaFile& media, const InputFile& file)
{
    const double length = media.timeStamps == TimeStamps::kIndexed ? ownLength(file, media.path) : 0;
    return length > 0 ? media.zeroSeconds + length : 0;
}

namespace {

constexpr std::int64_t kQuickBytes = 48 << 20;

Scan guardedScan(InputFile& file, const std::array<int, 2>& indexes, double ownEnd)
{
    Scan scan;
    auto& ends = scan.ends;
    std::array<double, 2> doubtful{-1, -1};
    std::array<std::unique_ptr<StampGuard>, 2> guards;
    auto packet = makePacket();
    for (int i = 0; (i = readOneOf(file, *packet, indexes)) >= 0;) {
        const auto which = static_cast<std::size_t>(i);
        const AVStream& stream = *file.stream(indexes[which]);
        if (!guards[which]) {
            guards[which] = std::make_unique<StampGuard>(stream.time_base, ownEnd);
        }
        scan.endEarly[which] = !guards[which]->pass(*packet);
        scan.hasDamage = scan.hasDamage || guards[which]->hasRefused();
        if (scan.endEarly[which]) {
            doubtful[which] = -1;
            continue;
        }
        const auto stamp = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
        if (stamp == AV_NOPTS_VALUE) {
            continue;
        }
        auto& end = guards[which]->damagedRun() > 0 ? doubtful[which] : ends[which];
        end = std::max(end, timeOf(stream, stamp) + secondsOf(stream, packet->duration));
    }
    ends = {std::max(ends[0], doubtful[0]), std::max(ends[1], doubtful[1])};
    return scan;
}

/// So much of the time that is left. A file that cannot be read whole in its time is opened by what its header tells.
Patience partOf(const Patience& patience, double share)
{
    Patience part = patience;
    if (patience.deadline != std::chrono::steady_clock::time_point::max()) {
        const auto now = std::chrono::steady_clock::now();
        part.deadline =
            now + std::chrono::duration_cast<std::chrono::steady_clock::duration>((patience.deadline - now) * share);
    }
    return part;
}

/// What reading the packets tells, or some of them: for files whose header does not tell, or may not be believed.
Scan scanned(const MediaFile& media, const Patience& patience, bool wholly)
{
    const std::array<int, 2> indexes{media.picture ? media.picture->streamIndex : -1,
                                     media.sound ? media.sound->streamIndex : -1};
    std::uint32_t error = 0;
    const auto file = InputFile::open(media.path, patience, error);
    if (!file || !file->readStreamInfo()
        || std::max(indexes[0], indexes[1]) >= static_cast<int>(file->context()->nb_streams)) {
        return {};
    }
    Scan scan;
    if (mayBreak(*file)) {
        scan = wholly ? brokenScan(*file, indexes) : sampledScan(*file, indexes);
    } else if (wholly) {
        scan = guardedScan(*file, indexes, ownEndOf(media, *file));
    }
    return file->gaveUp() ? Scan{} : scan;
}

/// Whether the stamps at some places all over a large file fall back, or leap, so that it has to be read whole.
bool looksBroken(const MediaFile& media, const Patience& patience)
{
    constexpr int kPlaces = 32;
    constexpr int kPackets = 400;
    constexpr std::int64_t kEndBytes = 1 << 18; // that are looked at whole: a short part may be joined there
    constexpr double kLeap = 20;                // times the time that a place is apart from the next one on the average
    const int index = media.picture ? media.picture->streamIndex : media.sound->streamIndex;
    std::uint32_t error = 0;
    const auto file = InputFile::open(media.path, patience, error);
    if (!file || !file->readStreamInfo() || index >= static_cast<int>(file->context()->nb_streams)) {
        return false;
    }
    auto packet = makePacket();
    std::vector<double> times;
    std::int64_t reached = -1; // where the last packet stands that was found
    for (int place = 0; place < kPlaces; ++place) {
        const std::int64_t position = file->byteCount() / kPlaces * place;
        if (position <= reached) {
            continue; // in a hole that was read through on the way
        }
        if (av_seek_frame(file->context(), index, position, AVSEEK_FLAG_BYTE) < 0) {
            return false;
        }
        for (int i = 0; i < kPackets && file->read(*packet); ++i) {
            if (packet->stream_index == index && packet->dts != AV_NOPTS_VALUE) {
                times.push_back(timeOf(*file->stream(index), packet->dts));
                reached = packet->pos;
                break;
            }
        }
    }
    if (av_seek_frame(file->context(), index, file->byteCount() - kEndBytes, AVSEEK_FLAG_BYTE) < 0) {
        return false;
    }
    const AVStream& stream = *file->stream(index);
    while (file->read(*packet)) {
        if (packet->stream_index == index && packet->dts != AV_NOPTS_VALUE) {
            times.push_back(timeOf(stream, packet->dts));
        }
    }
    if (times.size() < 2) {
        return false;
    }
    const double header = stream.duration != AV_NOPTS_VALUE && stream.duration > 0
                              ? timeOf(stream, stream.duration)
                              : static_cast<double>(file->context()->duration) / AV_TIME_BASE;
    if (times.back() - times.front() > header + 1) {
        return true; // its end tells less than its middle
    }
    const double longest = kJumpSeconds + kLeap * header / kPlaces;
    return std::ranges::adjacent_find(times, [&](double a, double b) { return b < a || b > a + longest; })
           != times.end();
}

bool headerMayBeWrong(const InputFile& file, const MediaFile& media, const Patience& patience)
{
    const AVFormatContext& context = *file.context();
    if (context.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE || context.duration <= 0) {
        return true;
    }
    if (media.timeStamps == TimeStamps::kIndexed && file.byteCount() <= kQuickBytes) {
        return true;
    }
    // Days of film in a file this small are damage, whichever number in it says so.
    constexpr double kFewestBytesPerSecond = 2000;
    const double length = static_cast<double>(context.duration) / AV_TIME_BASE;
    if (length > kLongestHoleSeconds && static_cast<double>(file.byteCount()) < length * kFewestBytesPerSecond) {
        return true;
    }
    constexpr double kLookShare = 0.25;
    return mayBreak(file) && looksBroken(media, partOf(patience, kLookShare));
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

std::string damageToldBy(const Scan& scan, const MediaFile& media)
{
    std::string text;
    const auto tell = [&](const std::string& what) {
        text += (text.empty() ? "\"" : " \"") + media.path + "\"" + what;
    };
    const char* const kStreams[] = {"picture", "sound"};
    for (std::size_t i = 0; i < scan.ends.size(); ++i) {
        if (scan.endEarly[i]) {
            std::array<char, 32> seconds{};
            std::snprintf(seconds.data(), seconds.size(), "%.1f s", std::max(0.0, scan.ends[i] - media.zeroSeconds));
            tell(std::string(" has damaged time stamps: its ") + kStreams[i] + " ends at " + seconds.data() + ".");
        }
    }
    if (text.empty() && scan.hasDamage) {
        tell(" has damaged time stamps, which were passed over.");
    }
    return text;
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
    media.zeroSeconds = std::isfinite(media.zeroSeconds) ? media.zeroSeconds : 0;
    for (double* const start :
         {media.picture ? &media.picture->startSeconds : nullptr, media.sound ? &media.sound->startSeconds : nullptr}) {
        if (start != nullptr && !std::isfinite(*start)) {
            *start = media.zeroSeconds;
        }
    }
    if (media.picture && media.picture->isStill) {
        media.picture->durationMs = kStillMs;
        return;
    }
    std::array<double, 2> ends{-1, -1};
    if (headerMayBeWrong(file, media, patience)) {
        constexpr double kWholeShare = 0.5;
        constexpr double kLaterShare = 0.7; // of what that leaves
        const Patience reading = partOf(patience, kWholeShare);
        auto scan = scanned(media, reading, true);
        const bool isLate = reading.over();
        if (isLate) {
            scan = scanned(media, partOf(patience, kLaterShare), false);
        }
        ends = scan.ends;
        media.trouble = damageToldBy(scan, media);
        media.breaks = std::move(scan.breaks);
        // Large ones are not read over again: their list is made when they are shown.
        const bool isListed = file.byteCount() <= kQuickBytes || !mayBreak(file);
        if (media.picture && media.timeStamps == TimeStamps::kIndexed && isListed && !isLate) {
            const auto index = PictureIndex::build(media, partOf(patience, kLaterShare));
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
