#pragma once

// The list of a file's pictures while it comes to be: made on a thread of its own, once for all who read the file.
//
// Nobody makes the list for himself, so nobody has to wait for longer than he likes: who gives up leaves the thread at
// work, and who comes later finds what it has. It ends with the file that it belongs to. All calls: any thread.

#include "twcore/media/picture_index.h"

#include <memory>

namespace twcore {

class PictureListing {
public:
    using Index = std::shared_ptr<const PictureIndex>;

    PictureListing();
    /// Tells the thread to end, and leaves it to itself.
    ~PictureListing();
    PictureListing(const PictureListing&) = delete;
    PictureListing& operator=(const PictureListing&) = delete;

    /// What a trial has listed already, so that nothing is listed again.
    void keep(Index whole);

    /// A list that knows the picture of a time, in seconds of the file's own time. nullptr when the file cannot be
    /// read, and when patience was over. With `takesNear` a list that is not to be had at once is not waited for.
    /// `media` is the file to which this listing belongs.
    Index upTo(double seconds, const MediaFile& media, const Patience& patience);
    /// The whole list, in the same way.
    Index whole(const MediaFile& media, const Patience& patience);

    /// Whether the list is still being made.
    bool isComing() const;
    /// A list that came from the file itself was found not to fit the packets: they are read.
    void distrust(const Index& wrong);

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

/// Of a file whose pictures have to be listed; nullptr for others.
std::shared_ptr<PictureListing> listingFor(const MediaFile& media);

} // namespace twcore
