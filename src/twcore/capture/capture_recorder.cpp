#include "twcore/capture/capture_recorder.h"

#include "engine/status.h"
#include "twcore/save/stream_description.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace twcore {

namespace {

// What may wait for a slow compressor or disk: a few seconds, and never more memory than a small machine has.
constexpr std::size_t kMostPictures = 90;
constexpr std::size_t kMostBytes = std::size_t{192} << 20;
// How long a picture waits for sound of its time, before silence stands in for it.
constexpr CaptureTime kSoundPatience = kCaptureSecond;
// How long sound waits for the first picture.
constexpr CaptureTime kPicturePatience = 3 * kCaptureSecond;
// How far one stream may be ahead of the other in what waits to be written.
constexpr double kMostAhead = 5;
// The most that sound is drawn out or squeezed to follow pictures, of a second in a second.
constexpr double kMostStretch = 0.005;

std::size_t bytesOf(const AVFrame& frame)
{
    const int bytes = av_image_get_buffer_size(static_cast<AVPixelFormat>(frame.format), frame.width, frame.height, 1);
    return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

SwrPtr makeResampler(int from, int to)
{
    AVChannelLayout stereo;
    av_channel_layout_default(&stereo, 2);
    SwrContext* made = nullptr;
    swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, to, &stereo, AV_SAMPLE_FMT_FLT, from, 0, nullptr);
    SwrPtr resampler(made);
    // Also where the rates are the same: it is to stretch.
    if (!resampler || av_opt_set_int(resampler.get(), "flags", SWR_FLAG_RESAMPLE, 0) < 0
        || swr_init(resampler.get()) < 0) {
        throw std::bad_alloc();
    }
    return resampler;
}

/// A disk that refused.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace

std::shared_ptr<CaptureRecorder> CaptureRecorder::prepare(CaptureOrder order, WriteError& error)
{
    std::shared_ptr<CaptureRecorder> recorder(new CaptureRecorder(std::move(order)));
    return recorder->open(error) ? recorder : nullptr;
}

CaptureRecorder::~CaptureRecorder() = default;

bool CaptureRecorder::open(WriteError& error)
{
    ParametersPtr picture;
    ParametersPtr sound;
    if (order_.picture) {
        pictureEncoder_ = VideoEncoder::open(*order_.picture, 1, error.text);
        if (!pictureEncoder_) {
            return false;
        }
        picture = described(*pictureEncoder_);
        fitter_ = std::make_unique<PictureFitter>(order_.picture->pictureFormat());
    }
    if (order_.hasSound) {
        soundEncoder_ = SoundEncoder::open(order_.audioCompressor, order_.soundRate, error.text);
        if (!soundEncoder_) {
            return false;
        }
        sound = described(*soundEncoder_);
        if (order_.deviceRate != order_.soundRate || (picture && order_.master == SyncMaster::kPicture)) {
            resampler_ = makeResampler(order_.deviceRate, order_.soundRate);
        }
    }
    const AVRational fps = picture ? order_.picture->fps : AVRational{25, 1};
    if (!writer_.open(order_.format, order_.path, {picture.get(), fps, sound.get()})) {
        error = writer_.error();
        return false;
    }
    return true;
}

void CaptureRecorder::start()
{
    const std::lock_guard lock(mutex_);
    if (!isStarted_) {
        std::thread([self = shared_from_this()] { self->work(); }).detach();
        isStarted_ = isWorking_ = true;
    }
}

void CaptureRecorder::picture(SharedFrame frame, CaptureTime taken)
{
    const std::size_t bytes = bytesOf(*frame);
    const std::lock_guard lock(mutex_);
    if (!isWorking_ || isEnding_ || !order_.picture) {
        return;
    }
    if (waitingPictures_.size() >= kMostPictures || waitingBytes_ + bytes > kMostBytes) {
        ++dropped_;
        return;
    }
    waitingBytes_ += bytes;
    waitingPictures_.push_back({std::move(frame), taken, bytes});
    changed_.notify_one();
}

void CaptureRecorder::sound(std::vector<float> samples, CaptureTime taken)
{
    const std::lock_guard lock(mutex_);
    if (!isWorking_ || isEnding_ || !order_.hasSound || samples.empty()) {
        return;
    }
    waitingSounds_.push_back({std::move(samples), taken});
    changed_.notify_one();
}

std::size_t CaptureRecorder::waiting() const
{
    const std::lock_guard lock(mutex_);
    return waitingPictures_.size();
}

bool CaptureRecorder::finish(std::chrono::milliseconds longest)
{
    std::unique_lock lock(mutex_);
    if (!isWorking_) {
        if (!std::exchange(isStarted_, true)) {
            writer_.discard();
        }
        return true;
    }
    const auto now = std::chrono::steady_clock::now();
    isEnding_ = true;
    lastMoment_ = now + longest;
    changed_.notify_all();
    return changed_.wait_until(lock, now + 2 * longest, [&] { return !isWorking_; });
}

void CaptureRecorder::note(WriteError error)
{
    error_ = std::move(error);
    failed_ = true;
}

void CaptureRecorder::work() noexcept
{
    try {
        run();
        if (!writer_.close()) {
            note(writer_.error());
        } else if (!writer_.writesTo(order_.path)) {
            note({engine::kFailed.code(),
                  "\"" + order_.path + "\" was moved, removed or replaced while it was captured to."});
        }
    } catch (const WriteFailed&) {
        writer_.close();
        note(writer_.error());
    } catch (const std::bad_alloc&) {
        writer_.close();
        note({engine::kOutOfMemory.code(), "Not enough memory to capture to \"" + order_.path + "\"."});
    } catch (const std::exception& failure) {
        writer_.close();
        note({engine::kFailed.code(),
              "The capture to \"" + order_.path + "\" ended: " + failure.what() + " Choose another compressor."});
    }
    const std::lock_guard lock(mutex_);
    dropped_ += static_cast<std::int32_t>(waitingPictures_.size());
    waitingPictures_.clear();
    waitingSounds_.clear();
    isWorking_ = false;
    changed_.notify_all();
}

void CaptureRecorder::run()
{
    std::unique_lock lock(mutex_);
    const auto isPlaceable = [&] { return !waitingPictures_.empty() && canPlace(waitingPictures_.front(), isEnding_); };
    for (;;) {
        changed_.wait(lock, [&] { return isEnding_ || !waitingSounds_.empty() || isPlaceable(); });
        if (!waitingSounds_.empty() && (start_ || isSoundDue())) {
            if (!start_) { // a movie begins with its first picture, where one comes
                begin(waitingPictures_.empty() ? waitingSounds_.front().taken : waitingPictures_.front().taken);
            }
            Sound sound = std::move(waitingSounds_.front());
            waitingSounds_.pop_front();
            lock.unlock();
            takeSound(std::move(sound));
        } else if (!waitingSounds_.empty()) { // heard ahead of the first picture
            changed_.wait(lock);
            continue;
        } else if (isPlaceable()) {
            if (isEnding_ && std::chrono::steady_clock::now() > lastMoment_) {
                break;
            }
            Picture picture = std::move(waitingPictures_.front());
            waitingPictures_.pop_front();
            waitingBytes_ -= picture.bytes;
            lock.unlock();
            takePicture(picture);
        } else {
            break;
        }
        writeInOrder(false);
        lock.lock();
    }
    lock.unlock();
    finishEncoders();
    writeInOrder(true);
}

/// Whether sound may begin the movie. It waits for the first picture; a camera that gives none must not cost it.
bool CaptureRecorder::isSoundDue() const
{
    return isEnding_ || !order_.picture || !waitingPictures_.empty()
           || waitingSounds_.back().taken - waitingSounds_.front().taken >= kPicturePatience;
}

/// A picture waits for the sound of its time, by which it may be placed, and ahead of which it may not be written.
bool CaptureRecorder::canPlace(const Picture& picture, bool isEnding) const
{
    if (isEnding || !order_.hasSound) {
        return true;
    }
    if (sounds_ && sounds_->samples() > 0 && sounds_->knownUntil() >= picture.taken) {
        return true;
    }
    return waitingPictures_.back().taken - picture.taken >= kSoundPatience;
}

void CaptureRecorder::begin(CaptureTime start)
{
    start_ = start;
    if (order_.picture) {
        grid_.emplace(av_q2d(order_.picture->fps));
        pictures_.emplace(av_q2d(order_.picture->fps), start);
    }
    if (order_.hasSound) {
        sounds_.emplace(order_.deviceRate, start);
    }
}

void CaptureRecorder::takeSound(Sound sound)
{
    for (float& sample : sound.samples) { // there are compressors that end the program over what is no number
        sample = std::isfinite(sample) ? sample : 0.0f;
    }
    const auto count = static_cast<std::int64_t>(sound.samples.size() / 2);
    const std::int64_t missing = sounds_->place(count, sound.taken);
    putSilence(missing);
    putSamples(std::span(sound.samples).subspan(static_cast<std::size_t>(std::max<std::int64_t>(0, -missing)) * 2));
}

void CaptureRecorder::putSilence(std::int64_t count)
{
    constexpr std::int64_t kBlock = 4800;
    const std::vector<float> silence(static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, kBlock)) * 2, 0.0f);
    for (; count > 0; count -= kBlock) {
        putSamples(std::span(silence).first(static_cast<std::size_t>(std::min(count, kBlock)) * 2));
        writeInOrder(false); // hours of it are not kept in memory
    }
}

/// Samples of the device in, samples of the movie on to the encoder.
void CaptureRecorder::putSamples(std::span<const float> samples)
{
    std::vector<PacketPtr> packets;
    if (!resampler_) {
        soundEncoder_->encode(samples, packets);
        samplesOut_ += static_cast<std::int64_t>(samples.size() / 2);
    } else if (!samples.empty()) {
        const auto count = static_cast<int>(samples.size() / 2);
        std::vector<float> stretched(static_cast<std::size_t>(swr_get_out_samples(resampler_.get(), count)) * 2);
        const auto* in = reinterpret_cast<const std::uint8_t*>(samples.data());
        auto* out = reinterpret_cast<std::uint8_t*>(stretched.data());
        const int made = swr_convert(resampler_.get(), &out, static_cast<int>(stretched.size() / 2), &in, count);
        if (made < 0) {
            throw std::runtime_error("The sound could not be brought to the movie's rate.");
        }
        stretched.resize(static_cast<std::size_t>(made) * 2);
        soundEncoder_->encode(stretched, packets);
        samplesOut_ += made;
        if (order_.master == SyncMaster::kPicture && pictures_) {
            const double meant = pictures_->secondsAt(sounds_->knownUntil()) * order_.soundRate;
            const double off = meant - double(samplesOut_ + swr_get_delay(resampler_.get(), order_.soundRate));
            const double most = kMostStretch * order_.soundRate;
            swr_set_compensation(resampler_.get(), static_cast<int>(std::lround(std::clamp(off, -most, most))),
                                 order_.soundRate);
        }
    }
    std::ranges::move(packets, std::back_inserter(soundPackets_));
}

std::optional<std::int64_t> CaptureRecorder::frameFor(CaptureTime taken)
{
    const double byPicture =
        order_.master == SyncMaster::kPicture ? pictures_->place(taken) : pictures_->secondsAt(taken);
    const bool bySound = order_.master == SyncMaster::kSound && sounds_ && sounds_->samples() > 0;
    const std::int64_t frame = grid_->place(bySound ? sounds_->secondsAt(taken) : byPicture);
    // What would stand ahead of sound that is written already has come too late.
    if (frame >= 0 && double(frame) / av_q2d(order_.picture->fps) >= writtenSeconds_) {
        return frame;
    }
    // A camera that is quicker than the movie gives pictures that nobody wants: none of those is lost.
    const bool isSpare = frame < 0 && av_cmp_q(order_.cameraRate, order_.picture->fps) > 0;
    dropped_ += isSpare ? 0 : 1;
    return std::nullopt;
}

void CaptureRecorder::takePicture(const Picture& picture)
{
    if (!start_) {
        begin(picture.taken);
    }
    if (sounds_ && sounds_->knownUntil() < picture.taken) {
        putSilence(sounds_->fillUntil(picture.taken));
    }
    const auto frame = frameFor(picture.taken);
    if (!frame) {
        return;
    }
    const PictureSize size = order_.picture->size;
    PictureFacts facts;
    facts.width = picture.frame->width;
    facts.height = picture.frame->height;
    const PictureSize own{facts.width, facts.height};
    // A picture with an odd line loses it; any other goes whole into the movie's frame.
    const bool isTrimmed = (own.width & ~1) == size.width && (own.height & ~1) == size.height;
    const auto place = placed(isTrimmed ? stretch_mode::kStretch : stretch_mode::kPreserve, own, size, size);
    std::vector<PacketPtr> packets;
    pictureEncoder_->encode(fitter_->fit(picture.frame, facts, place).get(), *frame, packets);
    ++captured_;
    std::ranges::move(packets, std::back_inserter(picturePackets_));
}

void CaptureRecorder::finishEncoders()
{
    std::vector<PacketPtr> packets;
    if (pictureEncoder_) {
        pictureEncoder_->encode(nullptr, 0, packets);
        std::ranges::move(packets, std::back_inserter(picturePackets_));
    }
    if (soundEncoder_) {
        packets.clear();
        soundEncoder_->finish(packets);
        std::ranges::move(packets, std::back_inserter(soundPackets_));
    }
}

/// Writes what can be followed by nothing earlier.
void CaptureRecorder::writeInOrder(bool all)
{
    const auto secondsOf = [](const AVPacket& packet, AVRational base) { return double(packet.dts) * av_q2d(base); };
    const AVRational frame = order_.picture ? av_inv_q(order_.picture->fps) : AVRational{1, 25};
    const AVRational sample{1, order_.soundRate};
    const auto isLong = [&](const std::deque<PacketPtr>& packets, AVRational base) {
        return !packets.empty() && secondsOf(*packets.back(), base) - secondsOf(*packets.front(), base) > kMostAhead;
    };
    for (;;) {
        const bool hasPicture = !picturePackets_.empty();
        const bool hasSound = !soundPackets_.empty();
        if (!hasPicture && !hasSound) {
            return;
        }
        bool isPicture = hasPicture;
        if (hasPicture && hasSound) {
            isPicture = secondsOf(*picturePackets_.front(), frame) < secondsOf(*soundPackets_.front(), sample);
        } else if (!all
                   && ((hasPicture && order_.hasSound && !isLong(picturePackets_, frame))
                       || (hasSound && order_.picture && !isLong(soundPackets_, sample)))) {
            return;
        }
        const AVPacket& next = isPicture ? *picturePackets_.front() : *soundPackets_.front();
        writtenSeconds_ = std::max(writtenSeconds_, secondsOf(next, isPicture ? frame : sample));
        writeNext(isPicture);
    }
}

void CaptureRecorder::writeNext(bool isPicture)
{
    auto& packets = isPicture ? picturePackets_ : soundPackets_;
    const bool written = isPicture ? writer_.writePicture(*packets.front()) : writer_.writeSound(*packets.front());
    packets.pop_front();
    const bool isDue = writtenSeconds_ - flushedSeconds_ >= 1; // what a kill may take
    if (!written || (isDue && !writer_.flush())) {
        throw WriteFailed(writer_.error().text);
    }
    flushedSeconds_ = isDue ? writtenSeconds_ : flushedSeconds_;
}

} // namespace twcore
