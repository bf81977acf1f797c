#include "twcore/media/media_file.h"

#include "engine/status.h"
#include "twcore/media/file_trouble.h"
#include "twcore/media/first_frames.h"
#include "twcore/media/midi_file.h"
#include "twcore/media/orientation.h"
#include "twcore/media/picture_listing.h"
#include "twcore/media/stamp_guard.h"
#include "twcore/media/stream_times.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace twcore {

namespace {

namespace media_error = engine::media_error;

/// The stream marked as default, else the first, of a kind. Cover art is no picture.
int chooseStream(const AVFormatContext& context, AVMediaType type)
{
    int first = -1;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVStream& stream = *context.streams[i];
        constexpr int kNoPicture = AV_DISPOSITION_ATTACHED_PIC | AV_DISPOSITION_TIMED_THUMBNAILS;
        if (stream.codecpar->codec_type != type || (stream.disposition & kNoPicture) != 0) {
            continue;
        }
        if ((stream.disposition & AV_DISPOSITION_DEFAULT) != 0) {
            return static_cast<int>(i);
        }
        first = first < 0 ? static_cast<int>(i) : first;
    }
    return first;
}

AVRational snappedRate(double fps)
{
    constexpr std::array<AVRational, 11> kUsual{{{24000, 1001},
                                                 {24, 1},
                                                 {25, 1},
                                                 {30000, 1001},
                                                 {30, 1},
                                                 {48, 1},
                                                 {50, 1},
                                                 {60000, 1001},
                                                 {60, 1},
                                                 {15, 1},
                                                 {120, 1}}};
    AVRational best{0, 1};
    double nearest = 0.002; // phones write rates that wander by a few frames in a thousand
    for (const auto rate : kUsual) {
        const double off = std::abs(fps / av_q2d(rate) - 1);
        if (off < nearest) {
            nearest = off;
            best = rate;
        }
    }
    return best;
}

AVRational frameRateOf(const AVStream& stream)
{
    const AVRational average = stream.avg_frame_rate;
    const AVRational base = stream.r_frame_rate;
    AVRational rate = average.num > 0 && average.den > 0 ? average : base;
    if (rate.num <= 0 || rate.den <= 0 || av_q2d(rate) > 1000) {
        return {25, 1};
    }
    const AVRational usual = snappedRate(av_q2d(rate));
    if (usual.num != 0) {
        return usual;
    }
    if (base.num > 0 && base.den > 0 && std::abs(av_q2d(base) / av_q2d(rate) - 1) < 0.01) {
        rate = base;
    }
    return rate;
}

bool holdsOnePicture(const std::string& path)
{
    std::uint32_t error = 0;
    const auto file = InputFile::open(path, {}, error);
    auto packet = makePacket();
    return file && file->read(*packet) && !file->read(*packet);
}

bool isStillFormat(const InputFile& file, const std::string& path)
{
    const std::string name = file.formatName();
    return name.ends_with("_pipe") || name == "image2pipe" || (name == "gif" && holdsOnePicture(path));
}

PictureFacts pictureFacts(const std::string& path, const InputFile& file, const FirstFrames& frames)
{
    const AVStream& stream = *file.stream(frames.streamIndex);
    PictureFacts facts;
    facts.streamIndex = frames.streamIndex;
    facts.codec = stream.codecpar->codec_id;
    facts.isStill = isStillFormat(file, path);
    facts.frameRate = facts.isStill ? AVRational{0, 1} : frameRateOf(stream);
    // A picture that stands for days, or for longer than its file lasts, says that the rate is damaged.
    const double own = ownLength(file, path);
    if (!facts.isStill && 1 / av_q2d(facts.frameRate) > (own > 0 ? own + kJumpSeconds : kLongestHoleSeconds)) {
        facts.frameRate = {25, 1};
    }
    facts.startSeconds = facts.isStill ? 0 : startOf(file, frames);
    facts.orientation = orientationOf(stream, frames.first.get());
    const AVRational aspect =
        av_guess_sample_aspect_ratio(file.context(), const_cast<AVStream*>(&stream), frames.first.get());
    const bool sane = aspect.num > 0 && aspect.den > 0 && av_q2d(aspect) > 0.05 && av_q2d(aspect) < 20;
    facts.pixelAspect = sane ? aspect : AVRational{1, 1};
    const AVCodecDescriptor* const codec = avcodec_descriptor_get(stream.codecpar->codec_id);
    facts.reorders = codec != nullptr && (codec->props & AV_CODEC_PROP_REORDER) != 0;
    const int storedWidth = frames.first ? frames.first->width : stream.codecpar->width;
    const int storedHeight = frames.first ? frames.first->height : stream.codecpar->height;
    const auto size = displayedSize(storedWidth, storedHeight, facts.pixelAspect, facts.orientation);
    facts.width = size.width;
    facts.height = size.height;
    return facts;
}

SoundFacts soundFacts(const InputFile& file, const FirstFrames& frames)
{
    const AVStream& stream = *file.stream(frames.streamIndex);
    SoundFacts facts;
    facts.streamIndex = frames.streamIndex;
    facts.rate = frames.first ? frames.first->sample_rate : stream.codecpar->sample_rate;
    facts.channels = frames.first ? frames.first->ch_layout.nb_channels : stream.codecpar->ch_layout.nb_channels;
    facts.startSeconds = startOf(file, frames);
    return facts;
}

TimeStamps timeStampsOf(const InputFile& file)
{
    const std::string name = file.formatName();
    const bool trusted = name.starts_with("mov,") || name.starts_with("matroska") || name == "asf";
    return trusted ? TimeStamps::kTrusted : TimeStamps::kIndexed;
}

std::uint32_t errorOf(const FirstFrames& picture, const FirstFrames& sound)
{
    const bool hasPicture = picture.streamIndex >= 0;
    const bool hasSound = sound.streamIndex >= 0;
    if (!hasPicture && !hasSound) {
        return media_error::kInvalidFormat;
    }
    const bool pictureFails = hasPicture && !picture.isOffered();
    const bool soundFails = hasSound && !sound.isOffered();
    if ((pictureFails || !hasPicture) && (soundFails || !hasSound)) {
        const bool noDecoder = (!hasPicture || !picture.decoder) && (!hasSound || !sound.decoder);
        return noDecoder ? media_error::kNoDecoder : media_error::kInvalidFormat;
    }
    if (pictureFails) {
        return media_error::kPictureNotRendered;
    }
    return soundFails ? media_error::kSoundNotRendered : media_error::kNone;
}

Trial tryMidi(const std::string& path, const Patience& patience)
{
    const auto length = midiLengthMs(readMidi(path, patience));
    if (!length) {
        return {media_error::kInvalidFormat, nullptr, troubleWith(path, nullptr)};
    }
    auto media = std::make_shared<MediaFile>();
    media->path = path;
    media->formatName = "midi";
    media->isMidi = true;
    media->sound = SoundFacts{.streamIndex = 0, .rate = kMidiRate, .channels = 2, .durationMs = *length};
    return {findSoundFont().empty() ? media_error::kNoDecoder : media_error::kNone, media};
}

Trial tryOpened(const std::string& path, InputFile& file, const Patience& patience)
{
    if (!file.readStreamInfo() && file.context()->nb_streams == 0) {
        return {file.gaveUp() ? media_error::kCannotLoad : media_error::kInvalidFormat, nullptr};
    }
    auto picture = openDecoder(file, chooseStream(*file.context(), AVMEDIA_TYPE_VIDEO));
    auto sound = openDecoder(file, chooseStream(*file.context(), AVMEDIA_TYPE_AUDIO));
    decodeBeginnings(file, {&picture, &sound});
    if (file.gaveUp()) {
        return {media_error::kCannotLoad, nullptr};
    }
    Trial trial{errorOf(picture, sound), nullptr};
    if (!picture.isOffered() && !sound.isOffered()) {
        return trial;
    }
    auto media = std::make_shared<MediaFile>();
    media->path = path;
    media->formatName = file.formatName();
    media->byteCount = file.byteCount();
    media->timeStamps = timeStampsOf(file);
    if (picture.isOffered()) {
        media->picture = pictureFacts(path, file, picture);
    }
    if (sound.isOffered()) {
        media->sound = soundFacts(file, sound);
    }
    media->listing = listingFor(*media);
    setLengths(*media, file, patience);
    trial.file = std::move(media);
    return trial;
}

} // namespace

Trial tryMediaFile(const std::string& path, const Patience& patience)
{
    // What a failing disk gives is no fact about the file: neither that it is damaged, nor how long it is.
    ReadFaults faults;
    Patience watched = patience;
    watched.faults = &faults;
    Trial trial;
    if (isMidiFile(path, watched)) {
        trial = tryMidi(path, watched);
    } else {
        const auto file = InputFile::open(path, watched, trial.error);
        if (file) {
            trial = tryOpened(path, *file, watched);
        }
        const bool isRefused = trial.error == media_error::kInvalidFormat || trial.error == media_error::kUnknownFormat;
        if (!trial.file && isRefused) {
            trial.trouble = troubleWith(path, file.get());
        }
    }
    const bool isFolder = trial.error == media_error::kIsFolder; // for a save that is a failure, here it is a fact
    return faults.any() && !isFolder ? Trial{media_error::kCannotLoad, nullptr, faults.first()->text("try")} : trial;
}

} // namespace twcore
