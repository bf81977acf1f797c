#include "fuzz/project_fuzz.h"

#include "project/project_file.h"
#include "twcore/project/project_xml.h"

#include <pugixml.hpp>
#include <stdexcept>

namespace {

/// Files of which every third has no sound.
engine::Handle streamAt(twcore::StreamPlace place)
{
    constexpr int kFiles = 300;
    const bool isThere = place.file >= 0 && place.file < kFiles && (place.isPicture || place.file % 3 != 0);
    return isThere ? 1 + place.file * 2 + (place.isPicture ? 0 : 1) : 0;
}

void check(const twcore::ReadTimeline& timeline)
{
    for (const auto& track : timeline.tracks) {
        std::int32_t end = 0;
        for (const auto& source : track.contents.sources) {
            if (source.stream == 0 || source.startMs < end || source.stopMs <= source.startMs) {
                throw std::logic_error("a source that no track can hold");
            }
            end = source.stopMs;
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    pugi::xml_document document;
    if (!document.load_buffer(data, size)) {
        return 0;
    }
    try {
        project::readProject(document);
    } catch (const project::ProjectFileError&) { // NOLINT: refused, as it may be
    }
    try {
        check(twcore::readTimeline(document, streamAt));
    } catch (const std::runtime_error&) { // NOLINT
    }
    return 0;
}
