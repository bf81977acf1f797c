#include "twcore/save/save_run.h"

#include "engine/status.h"
#include "twcore/save/stream_description.h"
#include "twcore/trace.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

namespace twcore {

namespace {

/// Ends the writing of a movie; the writer holds the cause.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Ends a save whose files cannot be read.
struct ReadFailed : std::runtime_error {
    explicit ReadFailed(const ReadFault& fault) : std::runtime_error(fault.text()), code(fault.code()) {}
    std::uint32_t code;
};

} // namespace

std::shared_ptr<SaveRun> SaveRun::prepare(SaveOrder order, WriteError& error)
{
    std::shared_ptr<SaveRun> run(new SaveRun(std::move(order)));
    return run->open(error) ? run : nullptr;
}

bool SaveRun::open(WriteError& error)
{
    ParametersPtr picture;
    ParametersPtr sound;
    if (order_.picture) {
        pictureEncoder_ = VideoEncoder::open(*order_.picture, 1, error.text);
        if (!pictureEncoder_) {
            return false;
        }
        picture = described(*pictureEncoder_);
        if (picture->codec_id == AV_CODEC_ID_H264) {
            keyNumbers_.emplace();
        }
    }
    if (order_.hasSound) {
        soundEncoder_ = SoundEncoder::open(order_.audioCompressor, order_.soundRate, error.text);
        if (!soundEncoder_) {
            return false;
        }
        sound = described(*soundEncoder_);
    }
    if (!picture && !sound) {
        error.text = "There is nothing to save: no track takes part.";
        return false;
    }
    const AVRational fps = order_.picture ? order_.picture->fps : AVRational{25, 1};
    if (!writer_.open(order_.format, order_.path, {picture.get(), fps, sound.get()})) {
        error = writer_.error();
        return false;
    }
    if (order_.picture && order_.picture->unit() != VideoEncoding::Unit::kMovie) {
        pictureEncoder_.reset(); // the workers have their own
    }
    return true;
}

void SaveRun::start(PlanPtr plan, std::int32_t startMs, std::int32_t stopMs)
{
    plan_ = std::move(plan);
    clock_ = {order_.picture ? order_.picture->fps : AVRational{25, 1}, startMs, std::max(startMs, stopMs)};
    state_ = SaveState::kRunning;
    isWorking_ = true; // no thread yet that could ask
    try {
        std::thread([self = shared_from_this()] { self->work(); }).detach();
    } catch (...) {
        isWorking_ = false;
        throw;
    }
}

bool SaveRun::waitUntil(std::chrono::steady_clock::time_point deadline)
{
    std::unique_lock lock(mutex_);
    return ended_.wait_until(lock, deadline, [&] { return !isWorking_; });
}

void SaveRun::stop()
{
    cancelled_ = true;
    if (state_ == SaveState::kPrepared) {
        writer_.close(); // no thread has it
    }
}

void SaveRun::work() noexcept
{
    ++savesAtWork;
    const SaveState end = run();
    --savesAtWork;
    sound_.reset();
    pictureEncoder_.reset();
    soundEncoder_.reset();
    state_ = end;
    const std::lock_guard lock(mutex_);
    isWorking_ = false;
    ended_.notify_all();
}

SaveState SaveRun::run()
{
    Trace::nameThread("movie");
    try {
        faults_.expect(readPaths());
        writeMovie();
        faults_.noteShorter();
        checkReads();
        const bool closed = writer_.close();
        if (cancelled_) {
            return SaveState::kStopped;
        }
        error_ = closed ? lack() : writer_.error();
        if (error_.code == 0) {
            return SaveState::kComplete;
        }
    } catch (const ReadFailed& failure) {
        writer_.close();
        error_ = {failure.code, failure.what()};
    } catch (const WriteFailed&) {
        writer_.close();
        error_ = writer_.error();
    } catch (const std::bad_alloc&) {
        writer_.close();
        error_ = {engine::kOutOfMemory.code(),
                  "Not enough memory to save \"" + order_.path + "\". Close other programs."};
    } catch (const std::exception& failure) {
        writer_.close();
        error_ = {engine::kFailed.code(),
                  "Cannot save \"" + order_.path + "\": " + failure.what() + " Choose another compressor."};
    }
    return SaveState::kFailed;
}

void SaveRun::writeMovie()
{
    const std::int64_t frames = order_.picture ? clock_.frameCount() : 0;
    if (order_.hasSound) {
        const std::int64_t first = sampleAt(clock_.startMs, order_.soundRate);
        const std::int64_t end = first + sampleAt(clock_.stopMs - clock_.startMs, order_.soundRate);
        samplesMeant_ = end - first;
        sound_ = std::make_unique<SoundLine>(plan_, order_.soundRate, first, end, std::move(soundEncoder_), cancelled_,
                                             faults_);
    }
    if (order_.picture && frames > 0) {
        PictureLine pictures(plan_, clock_, *order_.picture, cancelled_, faults_);
        for (std::int64_t number = 0; number < frames; ++number) {
            const auto picture = pictures.next();
            if (!picture) {
                return;
            }
            // In AVI the sound up to a frame's end stands ahead of the frame; Windows Media wants the order of time.
            const std::int64_t heard = order_.format == MovieFormat::kAvi ? number + 1 : number;
            writeSoundBefore(av_rescale_q_rnd(heard, av_inv_q(clock_.fps), {1, order_.soundRate}, AV_ROUND_UP));
            checkReads();
            writePicture(*picture, number);
            framesWritten_ = number + 1;
            const double doneMs = clock_.timeMs(number + 1) - clock_.startMs;
            positionMs_ = static_cast<std::int32_t>(std::min<double>(durationMs(), doneMs));
        }
        finishPictures();
    }
    writeSoundBefore(INT64_MAX);
    checkReads(); // also where all that failed was the last of it
    positionMs_ = cancelled_ ? positionMs_.load() : durationMs();
}

void SaveRun::writePicture(const MadePicture& picture, std::int64_t number)
{
    const TraceSpan span(picture.packet ? "write" : "encode and write", number);
    if (picture.packet) {
        PacketPtr packet(av_packet_clone(picture.packet.get()));
        if (!packet) {
            throw std::bad_alloc();
        }
        packet->pts = packet->dts = number;
        packet->duration = 1;
        putPicture(*packet);
        if (picture.isCopied) {
            ++framesCopied_;
            Trace::addValue("frames copied", framesCopied_);
        }
        return;
    }
    std::vector<PacketPtr> packets;
    pictureEncoder_->encode(picture.frame.get(), number, packets);
    for (const auto& packet : packets) {
        putPicture(*packet);
    }
}

void SaveRun::finishPictures()
{
    std::vector<PacketPtr> packets;
    if (order_.picture->unit() == VideoEncoding::Unit::kMovie) {
        pictureEncoder_->encode(nullptr, 0, packets);
    }
    for (const auto& packet : packets) {
        putPicture(*packet);
    }
}

void SaveRun::putPicture(const AVPacket& packet)
{
    const PacketPtr other = keyNumbers_ ? keyNumbers_->apart(packet) : nullptr;
    if (!writer_.writePicture(other ? *other : packet)) {
        throw WriteFailed("picture");
    }
}

void SaveRun::writeSoundBefore(std::int64_t sample)
{
    while (sound_) {
        const AVPacket* const waiting = sound_->peek();
        if (waiting == nullptr || waiting->pts >= sample) {
            return;
        }
        checkReads();
        const auto packet = sound_->take();
        if (!writer_.writeSound(*packet)) {
            throw WriteFailed("sound");
        }
        soundEnd_ = packet->pts + packet->duration;
        if (!order_.picture) {
            positionMs_ = static_cast<std::int32_t>(
                std::min<std::int64_t>(durationMs(), av_rescale(packet->pts, 1000, order_.soundRate)));
        }
    }
}

std::vector<std::string> SaveRun::readPaths() const
{
    std::vector<std::string> paths;
    for (const auto* const tracks : {&plan_->pictureTracks, &plan_->soundTracks}) {
        for (const auto& track : *tracks) {
            for (const auto& source : track) {
                if (source.media) {
                    paths.push_back(source.media->path);
                }
            }
        }
    }
    std::ranges::sort(paths);
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}

void SaveRun::checkReads() const
{
    if (faults_.any() && !cancelled_) {
        throw ReadFailed(*faults_.first());
    }
}

/// What keeps a movie that was written to its end from being the one that was meant; code 0: nothing.
WriteError SaveRun::lack() const
{
    const bool pictures = !order_.picture || writer_.packetsWritten(true) == clock_.frameCount();
    if (!pictures || (order_.hasSound && soundEnd_ < samplesMeant_)) {
        return {engine::kFailed.code(), "\"" + order_.path + "\" is not whole: frames or samples are missing."};
    }
    if (!writer_.writesTo(order_.path)) {
        return {engine::kFailed.code(),
                "\"" + order_.path + "\" was moved, removed or replaced while it was saved. Save it again."};
    }
    return {};
}

} // namespace twcore
