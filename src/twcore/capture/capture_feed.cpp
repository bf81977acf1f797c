#include "twcore/capture/capture_feed.h"

#include "twcore/play/surface_painter.h"
#include "twcore/render/picture_fitter.h"

#include <condition_variable>
#include <exception>
#include <mutex>

namespace twcore {

/// What the feed shares with its threads; they own it and may be left behind with it.
struct PictureFeed::Room {
    std::unique_ptr<OpenCamera> source; // the reader's
    std::atomic<bool> isStopping = false;

    mutable std::mutex mutex; // guards what follows
    std::condition_variable changed;
    SharedFrame newest;
    std::uint64_t pictures = 0; // that have come
    std::uint64_t views = 0;    // changes of the view
    LiveView view;
    bool isGone = false;
    std::shared_ptr<CaptureRecorder> recorder;

    void read() noexcept;
    void paint() noexcept;
};

void PictureFeed::Room::read() noexcept
{
    while (!isStopping) {
        SharedFrame picture;
        CaptureTime taken = 0;
        DeviceNews news = DeviceNews::kGone;
        try {
            news = source->read(picture, taken);
        } catch (const std::exception&) { // no memory: as if it had been pulled out, what there is is kept
        }
        std::shared_ptr<CaptureRecorder> target;
        {
            const std::lock_guard lock(mutex);
            isGone = news == DeviceNews::kGone;
            if (news == DeviceNews::kRead) {
                newest = picture;
                ++pictures;
                target = recorder;
            }
            changed.notify_all();
        }
        if (target) {
            target->picture(std::move(picture), taken);
        }
        if (news == DeviceNews::kGone) {
            break;
        }
    }
    source.reset(); // the device is free for others
}

namespace {

/// Makes the pixels of a surface from pictures of one size.
class LivePainter {
public:
    engine::SurfacePicture paint(const SharedFrame& frame, const SurfaceLayout& layout)
    {
        const Colour colour{untoldMatrix(frame->width, frame->height, false), false};
        if (!painter_ || painter_->layout() != layout || colour != colour_) {
            const PictureSize size{layout.picture.width, layout.picture.height};
            fitter_ = std::make_unique<PictureFitter>(PictureFormat{size, AV_PIX_FMT_YUV420P, colour});
            painter_ = std::make_unique<SurfacePainter>(layout, colour);
            colour_ = colour;
        }
        PictureFacts facts;
        facts.width = frame->width;
        facts.height = frame->height;
        const auto [width, height] = fitter_->format().size;
        return painter_->paint(fitter_->fit(frame, facts, {{0, 0, width, height}}));
    }

private:
    Colour colour_;
    std::unique_ptr<PictureFitter> fitter_;
    std::unique_ptr<SurfacePainter> painter_;
};

} // namespace

void PictureFeed::Room::paint() noexcept
{
    LivePainter painter;
    std::uint64_t paintedPicture = 0;
    std::uint64_t paintedView = 0;
    bool saidGone = false;
    for (std::unique_lock lock(mutex);;) {
        changed.wait(lock, [&] {
            return isStopping || pictures != paintedPicture || views != paintedView || (isGone && !saidGone);
        });
        if (isStopping) {
            return;
        }
        paintedPicture = pictures;
        paintedView = views;
        saidGone = isGone;
        const LiveView now = view;
        const SharedFrame frame = newest;
        const auto size = engine::surfaces().sizeOf(now.surface);
        if (!size) {
            continue;
        }
        lock.unlock();
        try {
            const SurfaceLayout layout =
                frame ? layOut(*size, now.area, {frame->width, frame->height}) : SurfaceLayout{};
            if (saidGone) {
                engine::surfaces().say(now.surface, "The capture device has been removed.");
            } else if (!now.isOn) {
                engine::surfaces().show(now.surface, blackSurface(*size));
            } else if (frame && !layout.isEmpty()) {
                engine::surfaces().show(now.surface, painter.paint(frame, layout));
            }
        } catch (const std::exception&) { // no memory for this picture: the next may find some
        }
        lock.lock();
    }
}

PictureFeed::PictureFeed(std::unique_ptr<OpenCamera> source)
    : size_(source->size()), rate_(source->rate()), room_(std::make_shared<Room>())
{
    room_->source = std::move(source);
    reader_.emplace([room = room_] { room->read(); });
    painter_.emplace([room = room_] { room->paint(); });
}

PictureFeed::~PictureFeed()
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->isStopping = true;
        room_->recorder.reset();
    }
    room_->changed.notify_all();
}

bool PictureFeed::isGone() const
{
    const std::lock_guard lock(room_->mutex);
    return room_->isGone;
}

void PictureFeed::captureTo(std::shared_ptr<CaptureRecorder> recorder)
{
    const std::lock_guard lock(room_->mutex);
    room_->recorder = std::move(recorder);
}

void PictureFeed::show(const LiveView& view)
{
    const std::lock_guard lock(room_->mutex);
    room_->view = view;
    ++room_->views;
    room_->changed.notify_all();
}

SharedFrame PictureFeed::newest() const
{
    const std::lock_guard lock(room_->mutex);
    return room_->newest;
}

struct SoundFeed::Room {
    std::unique_ptr<OpenMicrophone> source; // the reader's
    std::atomic<bool> isStopping = false;
    std::atomic<float> gain = 1;

    mutable std::mutex mutex; // guards what follows
    bool isGone = false;
    std::shared_ptr<CaptureRecorder> recorder;

    void read() noexcept;
};

void SoundFeed::Room::read() noexcept
{
    while (!isStopping) {
        std::vector<float> samples;
        CaptureTime taken = 0;
        DeviceNews news = DeviceNews::kGone;
        try {
            news = source->read(samples, taken);
        } catch (const std::exception&) {
        }
        std::shared_ptr<CaptureRecorder> target;
        {
            const std::lock_guard lock(mutex);
            isGone = news == DeviceNews::kGone;
            target = news == DeviceNews::kRead ? recorder : nullptr;
        }
        if (target) {
            const float loudness = gain;
            for (float& sample : samples) {
                sample *= loudness;
            }
            target->sound(std::move(samples), taken);
        }
        if (news == DeviceNews::kGone) {
            break;
        }
    }
    source.reset();
}

SoundFeed::SoundFeed(std::unique_ptr<OpenMicrophone> source) : rate_(source->rate()), room_(std::make_shared<Room>())
{
    room_->source = std::move(source);
    reader_.emplace([room = room_] { room->read(); });
}

SoundFeed::~SoundFeed()
{
    room_->isStopping = true;
    captureTo(nullptr);
}

bool SoundFeed::isGone() const
{
    const std::lock_guard lock(room_->mutex);
    return room_->isGone;
}

void SoundFeed::captureTo(std::shared_ptr<CaptureRecorder> recorder)
{
    const std::lock_guard lock(room_->mutex);
    room_->recorder = std::move(recorder);
}

void SoundFeed::setLevel(const SoundLevel& level)
{
    room_->gain = level.isMuted ? 0.0f : static_cast<float>(level.percent) / 100;
}

} // namespace twcore
