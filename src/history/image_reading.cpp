// From the engine to an image.

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "history/steady_calls.h"
#include "history/timeline_images.h"
#include "items/whole_item.h"

#include <algorithm>
#include <utility>

namespace ModuleHistory {

using engine::Bool16;
using engine::Handle;
using engine::ITWKeyTransition;
using engine::ITWTimeline;
using engine::kFalse;

namespace {

/// The element at a count, emptied; the array grows when it ends there.
template <class Record>
Record& freshAt(std::vector<Record>& array, std::int16_t count)
{
    const auto place = static_cast<std::size_t>(count);
    if (place == array.size()) {
        array.emplace_back();
    }
    return array[place] = Record{};
}

void raise(std::int16_t& count) { count = numbers::added(count, std::int16_t{1}); }

class ImageReader {
public:
    ImageReader(TimelineImage& image, std::size_t transitionNameBytes)
        : image_(image), transitionNameBytes_(transitionNameBytes), timeline_(engine::EngineAs<ITWTimeline>()),
          keys_(engine::EngineAs<ITWKeyTransition>())
    {}

    /// Raises the first failure when something could not be read; the image is not whole then. A failure that the
    /// second try made good is raised behind the end.
    void readAll()
    {
        image_.IsWhole = false;
        const auto tracks = static_cast<std::int32_t>(forms::frmTimeline.picVideo.size())
                            + static_cast<std::int32_t>(forms::frmTimeline.picAudio.size());
        for (std::int32_t place = 1; place <= std::min(tracks, state::TrackCollection.Count()); ++place) {
            readSources(state::TrackCollection.Item(place));
        }
        if (state::TrackCollection.Count() > 0) {
            readEffects(state::TrackCollection.Item(1)); // the one video track
        }
        if (state::OverlayTrack != 0) {
            readOverlays();
        }
        image_.IsWhole = true;
        calls_.raiseFailure();
    }

private:
    void readSources(Handle track)
    {
        const std::int16_t count = sourceCount(track);
        for (std::int16_t seq = 0; seq < count; ++seq) {
            readSource(track, seq, freshAt(image_.Sources, image_.SourceCount));
            raise(image_.SourceCount);
        }
    }

    void readEffects(Handle track)
    {
        constexpr std::size_t kNameBytes = 10;
        std::int16_t count = 0;
        calls_.needed([&] { return timeline_->GetEffectCount(track, count); });
        for (std::int16_t seq = 0; seq < count; ++seq) {
            const auto [name, times] =
                items::readEffect({*timeline_, track, seq}, kNameBytes, calls_).value_or(items::WholeEffect{});
            freshAt(image_.Effects, image_.EffectCount) = {track, times.start, times.stop, ShortName(name)};
            raise(image_.EffectCount);
        }
    }

    void readOverlays()
    {
        const Handle track = state::OverlayTrack;
        const std::int16_t count = sourceCount(track);
        for (std::int16_t seq = 0; seq < count; ++seq) {
            readSource(track, seq, freshAt(image_.OverlaySources, image_.TransitionCount));
            readTransition(track, seq, freshAt(image_.Transitions, image_.TransitionCount));
            raise(image_.TransitionCount);
        }
    }

    std::int16_t sourceCount(Handle track)
    {
        std::int16_t count = 0;
        calls_.needed([&] { return timeline_->GetSourceCount(track, count); });
        return count;
    }

    void readSource(Handle track, std::int16_t seq, SourceImage& image)
    {
        const auto source = items::readSource({*timeline_, track, seq}, calls_).value_or(items::BareSource{});
        const items::SourceTimes& times = source.times;
        image = {.Start = times.start,
                 .Stop = times.stop,
                 .MediaStart = times.mediaStart,
                 .MediaStop = times.mediaStop,
                 .Stream = source.stream,
                 .Track = track,
                 .Seq = seq,
                 .StretchMode = source.mode};
    }

    void readTransition(Handle track, std::int16_t seq, TransitionImage& image)
    {
        Bool16 ok = kFalse;
        image.Track = track;
        calls_.needed([&] { return timeline_->GetTransitionTimes(track, seq, image.Start, image.Stop, ok); });
        const auto key = items::readKey({*timeline_, track, seq}, *keys_, transitionNameBytes_, calls_);
        image.KeyRed = key.red;
        image.KeyGreen = key.green;
        image.KeyBlue = key.blue;
        image.Name = ShortName(key.name);
    }

    TimelineImage& image_;
    std::size_t transitionNameBytes_;
    std::shared_ptr<ITWTimeline> timeline_;
    std::shared_ptr<ITWKeyTransition> keys_;
    SteadyCalls calls_;
};

} // namespace

void StoreTimelineImage()
{
    constexpr std::size_t kTransitionNameBytes = 10;
    Trapped("ModuleHistory", "StoreTimelineImage", [] { ImageReader(WorkingImage, kTransitionNameBytes).readAll(); });
}

void StoreCurrentTLImage()
{
    constexpr std::size_t kTransitionNameBytes = 20;
    LastImage = {};
    Trapped("ModuleHistory", "StoreCurrentTLImage", [] { ImageReader(LastImage, kTransitionNameBytes).readAll(); });
}

ImageRecords ReadTimeline()
{
    constexpr std::size_t kTransitionNameBytes = 20;
    TimelineImage image;
    ImageReader(image, kTransitionNameBytes).readAll();
    return std::move(static_cast<ImageRecords&>(image));
}

} // namespace ModuleHistory
