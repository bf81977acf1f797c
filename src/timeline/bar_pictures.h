#pragma once

// What lies in a bar's medium, painted between its fill and its outline: pictures side by side where it has a picture,
// its sound as a wave where it has none. Both are asked of the engine as they stand ready; what comes later is news,
// and the bars are painted again.
//
//     +-------+-------+-------+----+      a picture stands for the time at its left edge, and moves with its bar
//     |       |       |       |    |
//     +-------+-------+-------+----+
//
// Interface thread only; raises what the engine raises.

#include "core/draw_list.h"
#include "engine/ITWTimeline.h"
#include "items/items.h"

#include <memory>
#include <vector>

namespace timeline {

/// Tells the engine who hears of news, by the number in the registry of surfaces, and where it may keep what it makes.
/// Errors are trapped inside.
void listenForBarPictures(std::int32_t newsSink);

/// Something that the last painting asked for is still being made.
bool areBarPicturesAwaited();

/// One painting of all rows, which asks for what it wants to show and for nothing else.
class BarPictures {
public:
    /// Nothing is asked when both are switched off, and what was asked before is not made any more.
    BarPictures();
    /// All has been asked for.
    void finish();

    /// A bar on its picture's list, in view pixels.
    struct Bar {
        engine::Handle track;
        std::int16_t seq;
        items::ItemTimes times;
        std::int32_t left;
        std::int32_t right;
        std::int32_t height;
        std::int32_t waveColour;
        bool isLocked;
    };
    /// False when there is nothing in this bar to be shown.
    bool paint(DrawList& canvas, const Bar& bar);

private:
    struct Medium {
        engine::Handle stream = 0;
        double start = 0; // ms of the medium
        double rate = 1;  // of its milliseconds for one of the timeline
    };
    Medium mediumOf(const Bar& bar) const;
    bool paintPictures(DrawList& canvas, const Bar& bar, const Medium& medium, std::int32_t pictureWidth);
    bool paintWave(DrawList& canvas, const Bar& bar, const Medium& medium);

    bool showsPictures_;
    bool showsWaves_;
    std::shared_ptr<engine::ITWTimeline> timeline_;
    std::shared_ptr<engine::ITWBarPictures> engine_; // none: nothing is shown
    std::vector<engine::Peak> peaks_;
};

} // namespace timeline
