#include "twcore/media/first_frames.h"

#include "twcore/media/stream_times.h"

#include <algorithm>
#include <limits>

namespace twcore {

namespace {

/// How much is read in search of a frame.
struct Bound {
    int packets;
    std::int64_t bytes;
};
constexpr Bound kBeginning{4000, 48 << 20};
constexpr Bound kPlace{400, 2 << 20};
constexpr int kPlaces = 16;

/// A start that is not known: the stream begins later than the other one.
constexpr double kLaterSeconds = std::numeric_limits<double>::infinity();

void take(FirstFrames& frames, const AVPacket* packet)
{
    frames.packetCount += packet != nullptr ? 1 : 0;
    frames.decoder->send(packet);
    while (auto frame = frames.decoder->receive()) {
        ++frames.frameCount;
        if (!frames.first) {
            frames.first = std::move(frame);
        }
    }
}

void decodeUpTo(InputFile& file, const std::array<FirstFrames*, 2>& streams, Bound bound)
{
    auto packet = makePacket();
    std::int64_t bytes = 0;
    for (int i = 0; i < bound.packets && bytes < bound.bytes; ++i) {
        if (std::ranges::none_of(streams, [](auto* s) { return s->wanted(); }) || !file.read(*packet)) {
            break;
        }
        bytes += packet->size;
        for (auto* stream : streams) {
            if (stream->decoder && packet->stream_index == stream->streamIndex && stream->wanted()) {
                take(*stream, packet.get());
            }
        }
    }
}

/// Goes to where the format's own list says that the stream begins.
bool seekFirst(InputFile& file, int streamIndex)
{
    AVStream* const stream = file.context()->streams[streamIndex];
    const auto* const entry = avformat_index_get_entry(stream, 0);
    return entry != nullptr && av_seek_frame(file.context(), streamIndex, entry->timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

bool seekPlace(InputFile& file, int place)
{
    AVFormatContext* const context = file.context();
    if ((context->iformat->flags & AVFMT_TS_DISCONT) != 0) {
        return av_seek_frame(context, -1, file.byteCount() / kPlaces * place, AVSEEK_FLAG_BYTE) >= 0;
    }
    const std::int64_t start = context->start_time != AV_NOPTS_VALUE ? context->start_time : 0;
    return context->duration > 0
           && av_seek_frame(context, -1, start + context->duration / kPlaces * place, AVSEEK_FLAG_BACKWARD) >= 0;
}

bool isToldWhole(const AVStream& stream)
{
    const AVCodecParameters& told = *stream.codecpar;
    return told.codec_type == AVMEDIA_TYPE_AUDIO ? told.sample_rate > 0 && told.ch_layout.nb_channels > 0
                                                 : told.width > 0 && told.height > 0;
}

/// Formats that list every packet of a stream in their header list none where there are none.
bool listsNothing(const InputFile& file, const AVStream& stream)
{
    return file.formatName().starts_with("mov,") && avformat_index_get_entries_count(&stream) == 0;
}

/// A stream of which nothing came at the beginning of the file.
void lookUp(InputFile& file, FirstFrames& frames)
{
    FirstFrames none;
    const std::array<FirstFrames*, 2> only{&frames, &none};
    AVStream* const stream = file.context()->streams[frames.streamIndex];
    if (seekFirst(file, frames.streamIndex)) {
        file.keepOnly(frames.streamIndex);
        decodeUpTo(file, only, kPlace);
        for (unsigned i = 0; i < file.context()->nb_streams; ++i) {
            file.context()->streams[i]->discard = AVDISCARD_DEFAULT;
        }
    }
    for (int place = 1; place < kPlaces && frames.packetCount == 0 && !file.gaveUp(); ++place) {
        if (seekPlace(file, place)) {
            decodeUpTo(file, only, kPlace);
        }
    }
    frames.isBelieved = frames.packetCount == 0 && isToldWhole(*stream) && !listsNothing(file, *stream);
}

} // namespace

FirstFrames openDecoder(const InputFile& file, int streamIndex)
{
    FirstFrames frames;
    frames.streamIndex = streamIndex;
    if (streamIndex >= 0) {
        frames.decoder = Decoder::open(*file.stream(streamIndex), 1);
    }
    return frames;
}

void decodeBeginnings(InputFile& file, const std::array<FirstFrames*, 2>& streams)
{
    decodeUpTo(file, streams, kBeginning);
    const bool isReadWhole = avio_feof(file.context()->pb) != 0;
    for (auto* stream : streams) {
        if (stream->wanted() && stream->packetCount == 0 && !isReadWhole) {
            lookUp(file, *stream);
        }
        if (stream->wanted()) {
            take(*stream, nullptr);
        }
    }
}

double startOf(const InputFile& file, const FirstFrames& frames)
{
    const AVStream& stream = *file.stream(frames.streamIndex);
    // The stamps of packed B frames in AVI belong to packets, not to pictures.
    const bool stampsTellOrder = file.formatName() != "avi";
    const bool isKnown = frames.first && frames.first->best_effort_timestamp != AV_NOPTS_VALUE;
    if (stampsTellOrder && isKnown) {
        return timeOf(stream, frames.first->best_effort_timestamp);
    }
    if (stream.start_time != AV_NOPTS_VALUE) {
        return timeOf(stream, stream.start_time);
    }
    return frames.isBelieved ? kLaterSeconds : 0;
}

} // namespace twcore
