#pragma once

// Takes the image of the state. Interface thread only.

#include "journal/state_image.h"

#include <map>
#include <memory>
#include <vector>

namespace journal {

/// Remembers the image before, and so what of it still holds: where nothing was changed the timeline is not read at
/// all.
class Capture {
public:
    /// Nothing when all but the view is as it was in the image before. Raises the engine's failures.
    std::shared_ptr<const StateImage> take();
    /// The image before counts no more: the next is taken whatever it holds.
    void forget() { last_.reset(); }
    /// A file that images name although it was never seen in the list.
    void remember(engine::Handle file, const MediaFile& media) { known_[file] = media; }

private:
    std::shared_ptr<const MediaTable> readMedia();
    void learnStreams();

    std::shared_ptr<const StateImage> last_;
    std::uint32_t modifications_ = 0;   // `state::ModificationCount` of that image
    std::vector<engine::Handle> files_; // in the list
    std::vector<engine::Handle> streams_;
    std::map<engine::Handle, MediaFile> known_; // by file; a handle is never given out twice
};

} // namespace journal
