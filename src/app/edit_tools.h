#pragma once

// The dialogues of the tools over the timeline, worked by words as a person works them. Interface thread only.

#include "app/edit_session.h"

#include <array>
#include <cstdint>
#include <optional>

namespace app {

/// Chooses that overlay alone, and gives it the key colour: red, green and blue, as they are typed into the boxes.
void setKeyColour(EditSession& session, std::int16_t seq, const std::array<std::string, 3>& colour);

struct OneItem {
    EditTrack track;
    std::int16_t seq;
};
/// Chooses an option of the stretch mode, 0 to 3, and presses OK. item: chosen alone ahead of it; without one it is for
/// what is selected, or for all of the tracks of that.
void setStretchMode(EditSession& session, std::optional<OneItem> item, bool isWholeTrack, std::int32_t mode);

} // namespace app
