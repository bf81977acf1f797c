#pragma once

// Where a command without a range works: at the main slider as it is drawn, which is as fine as a pixel. The slider's
// own time is finer, so that a cut may fall beside the time that is shown; once the command is through, slider and
// picture go to the cut. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <optional>

namespace editing {

/// Made ahead of the command, to be followed behind its last step when it has taken effect.
class CutPlace {
public:
    enum Where : std::uint8_t {
        kUnlessRange, // nowhere while one slider of the selection is shown: the command works over the range then
        kAtSlider     // whatever is shown
    };
    explicit CutPlace(Where where = kUnlessRange);
    /// Puts the slider to the cut unless it has that time already, and the player, which goes on doing what it does;
    /// while it plays, it is left alone. Events run inside. Raises nothing.
    void follow() const;

private:
    std::optional<engine::Milliseconds> place_;
};

} // namespace editing
