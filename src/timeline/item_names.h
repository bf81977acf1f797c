#pragma once

// What an item is called on its bar and in the list.

#include "engine/ITWCoreRoot.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace timeline {

/// Names of the items of one repaint or one filling of the list. It remembers the names of streams and is to be thrown
/// away with the routine that made it: a stream's file may be another one next time. Raises what the engine raises.
/// Interface thread only.
class ItemNames {
public:
    ItemNames();

    /// The name of a source's file without its folder; empty when it has none. Good until the next call.
    std::string_view ofSource(engine::Handle track, std::int16_t seq);
    std::string_view ofEffect(engine::Handle track, std::int16_t seq);

private:
    std::string fileNameOf(engine::Handle stream) const;

    std::shared_ptr<engine::ITWTimeline> timeline_;
    std::shared_ptr<engine::ITWMediaFiles> files_;
    std::unordered_map<engine::Handle, std::string> byStream_;
    std::string effect_;
};

} // namespace timeline
