// Files that were closed, and are used by the timeline again.

#include "core/file_text.h"
#include "core/forms/frmMediaList.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/media_files.h"
#include "media/opening.h"
#include "media/rows.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

using engine::check;
using engine::Handle;

namespace {

/// Streams on the tracks that the media list does not know, each once.
std::vector<Handle> strayStreams()
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    std::unordered_set<Handle> known(state::StreamCollection.begin(), state::StreamCollection.end());
    std::vector<Handle> strays;
    const auto look = [&](Handle track) {
        std::int16_t count = 0;
        check(timeline->GetSourceCount(track, count));
        for (std::int16_t seq = 0; seq < count; ++seq) {
            Handle stream = 0;
            check(timeline->GetSourceStream(track, seq, stream));
            if (known.insert(stream).second) {
                strays.push_back(stream);
            }
        }
    };
    std::ranges::for_each(state::TrackCollection, look);
    if (state::OverlayTrack != 0) {
        look(state::OverlayTrack);
    }
    return strays;
}

void bringBack(Handle file)
{
    const ListView& list = forms::frmMediaList.lvwMediaList;
    const std::int32_t rowsBefore = list.Count();
    const std::int32_t streamsBefore = state::StreamCollection.Count();
    state::LastOpenedExtension = media::lastPiece(file_text::ExtractFileName(media::pathOf(file)));
    moduleTarnwick::OpenStreams(file);
    if (list.Count() > rowsBefore) {
        moduleTarnwick::AppendToTWListView(file);
        return;
    }
    // Without a row the list does not know the file; the next step of the history tries again.
    while (state::StreamCollection.Count() > streamsBefore) {
        state::StreamCollection.Remove(state::StreamCollection.Count());
    }
}

} // namespace

void BringBackFiles()
{
    Trapped("moduleTarnwick", "BringBackFiles", [] {
        const auto files = engine::EngineAs<engine::ITWMediaFiles>();
        for (const Handle stream : strayStreams()) {
            Handle file = 0;
            check(files->GetStreamFile(stream, file));
            if (file != 0 && state::FileCollection.PlaceOf(file) == 0) {
                bringBack(file);
            }
        }
    });
}
