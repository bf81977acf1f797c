// From the engine to an image.

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/engine_access.h"
#include "history/steady_calls.h"
#include "history/timeline_images.h"

#include <algorithm>

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
    /// The buffer of a transition's name may be 20 bytes long at most.
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
            EffectImage& effect = freshAt(image_.Effects, image_.EffectCount);
            Bool16 ok = kFalse;
            effect.Track = track;
            calls_.needed([&] { return timeline_->GetEffectTimes(track, seq, effect.Start, effect.Stop, ok); });
            effect.Name = name(kNameBytes, [&](auto buffer) { return timeline_->GetEffectName(track, seq, buffer); });
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

    void readSource(Handle track, std::int16_t seq, SourceImage& source)
    {
        Bool16 ok = kFalse;
        source.Track = track;
        source.Seq = seq;
        calls_.needed(
            [&] { return timeline_->GetSourceMediaTimes(track, seq, source.MediaStart, source.MediaStop, ok); });
        calls_.needed([&] { return timeline_->GetSourceTimes(track, seq, source.Start, source.Stop, ok); });
        calls_.needed([&] { return timeline_->GetSourceStream(track, seq, source.Stream); });
        calls_.needed([&] { return timeline_->GetSourceStretchMode(track, seq, source.StretchMode); });
    }

    void readTransition(Handle track, std::int16_t seq, TransitionImage& transition)
    {
        Bool16 ok = kFalse;
        transition.Track = track;
        calls_.needed([&] { return timeline_->GetTransitionTimes(track, seq, transition.Start, transition.Stop, ok); });
        transition.Name =
            name(transitionNameBytes_, [&](auto buffer) { return timeline_->GetTransitionName(track, seq, buffer); });
        calls_.needed([&] { return keys_->GetKeyRed(track, seq, transition.KeyRed); });
        calls_.needed([&] { return keys_->GetKeyGreen(track, seq, transition.KeyGreen); });
        calls_.needed([&] { return keys_->GetKeyBlue(track, seq, transition.KeyBlue); });
    }

    template <class Call>
    ShortName name(std::size_t bytes, Call call)
    {
        std::array<char, 20> buffer;
        buffer.fill(' ');
        const engine::TextBuffer shown(buffer.data(), std::min(bytes, buffer.size()));
        calls_.needed([&] { return call(shown); });
        return ShortName({shown.data(), shown.size()});
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

} // namespace ModuleHistory
