#pragma once

// The size of the movie, and the line in the preview's panel that offers another one.
//
// A film starts at 320 x 240, and every picture is fitted into it. Where nobody has chosen a size
// (`state::FrameSizeChosen`), the first picture on the timeline brings a question: the line offers its size. It stands
// until it is answered, until a further clip is added, or until its picture is gone from the timeline; what does not
// answer it leaves the size as it is, and the next first picture brings the line again.
//
// The line's state stands in `forms::frmPreview.fmeFrameOffer`. Interface thread only.

#include <cstdint>

namespace frmPreview {

/// Pixels of each side; both ends count.
inline constexpr std::int16_t kLeastFrameSide = 16;
inline constexpr std::int16_t kMostFrameSide = 4096;

/// The size that somebody chose, within those bounds: engine and state in step, the picture's place fitted, nothing
/// offered any more. Raises what the engine raises; nothing has changed then.
void SetFrameSize(std::int16_t width, std::int16_t height);

/// Back to the size that a film begins with, which nobody chose. Raises as above.
void ForgetFrameSize();

/// After each change of the timeline: a first picture brings the line, and its going takes it away. Raises what the
/// engine raises.
void WatchFirstPicture();

/// The line goes unanswered, when it stands.
void WithdrawFrameOffer();

/// The movie takes the offered size, and the project counts as modified.
void cmdUseFrame_Click();
/// The movie keeps its size.
void cmdKeepFrame_Click();

} // namespace frmPreview
