#include "media/references.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "editing/bare_tracks.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <algorithm>
#include <vector>

using engine::check;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;

namespace media {

namespace {

std::vector<Handle> allTracks()
{
    std::vector<Handle> tracks(state::TrackCollection.begin(), state::TrackCollection.end());
    if (state::OverlayTrack != 0) {
        tracks.push_back(state::OverlayTrack);
    }
    return tracks;
}

std::vector<Handle> openStreamsOf(Handle file)
{
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    std::vector<Handle> streams;
    for (const Handle stream : state::StreamCollection) {
        Handle owner = 0;
        check(files->GetStreamFile(stream, owner));
        if (owner == file) {
            streams.push_back(stream);
        }
    }
    return streams;
}

/// The first source of a track from `seq` on that uses one of the streams; -1 when there is none.
std::int16_t findSource(ITWTimeline& timeline, Handle track, std::int16_t seq, const std::vector<Handle>& streams)
{
    std::int16_t count = 0;
    check(timeline.GetSourceCount(track, count));
    for (; seq < count; ++seq) {
        Handle stream = 0;
        check(timeline.GetSourceStream(track, seq, stream));
        if (std::ranges::find(streams, stream) != streams.end()) {
            return seq;
        }
    }
    return -1;
}

void removeSourcesOf(ITWTimeline& timeline, Handle track, const std::vector<Handle>& streams)
{
    for (std::int16_t seq = 0; (seq = findSource(timeline, track, seq, streams)) >= 0;) {
        engine::Bool16 removed = kFalse;
        check(timeline.RemoveSource(track, seq, removed));
        if (removed == kFalse) {
            ++seq; // what cannot be removed is stepped over
        } else if (track == state::OverlayTrack) {
            check(timeline.RemoveTransition(track, seq, removed));
        }
    }
}

} // namespace

bool isFileInUse(Handle file)
{
    const std::vector<Handle> streams = openStreamsOf(file);
    const auto timeline = engine::EngineAs<ITWTimeline>();
    return !streams.empty() && std::ranges::any_of(allTracks(), [&](Handle track) {
        return findSource(*timeline, track, 0, streams) >= 0;
    });
}

void removeSourcesOfFile(Handle file)
{
    const std::vector<Handle> streams = openStreamsOf(file);
    const auto timeline = engine::EngineAs<ITWTimeline>();
    for (const Handle track : allTracks()) {
        removeSourcesOf(*timeline, track, streams);
    }
    moduleTimeline::EmptyEffectsOfBareTracks();
}

} // namespace media

namespace moduleTarnwick {

bool IsFileHandleReferenced(Handle file)
{
    bool isReferenced = false;
    Trapped("moduleTarnwick", "IsFileHandleReferenced", [&] { isReferenced = media::isFileInUse(file); });
    return isReferenced;
}

void RemoveFileReferences(Handle file)
{
    Trapped("moduleTarnwick", "RemoveFileReferences", [&] { media::removeSourcesOfFile(file); });
}

} // namespace moduleTarnwick
