#pragma once

// A timeline as XML and back, without a disk.

#include "twcore/model/timeline_snapshot.h"

#include <functional>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace twcore {

/// A stream as a project names it: its file's place in the media list, from 0, and whether it is the picture.
struct StreamPlace {
    int file = -1;
    bool isPicture = false;
};

/// Fills an empty document with the root element. Which tracks are linked or disabled is not among it: whoever offers
/// these options keeps them.
void writeTimeline(pugi::xml_document& document, const TimelineSnapshot& timeline,
                   const std::function<StreamPlace(engine::Handle)>& placeOf);

/// What a document holds. A project that cannot be read throws std::runtime_error with a sentence for people.
struct ReadTimeline {
    std::optional<std::pair<std::int16_t, std::int16_t>> frameSize; // width, height
    struct ReadTrack {
        bool isVideo = false;
        TrackContents contents;
    };
    std::vector<ReadTrack> tracks;
};
ReadTimeline readTimeline(const pugi::xml_document& document,
                          const std::function<engine::Handle(StreamPlace)>& streamAt);

} // namespace twcore
