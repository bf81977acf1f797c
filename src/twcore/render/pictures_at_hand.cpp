#include "twcore/render/pictures_at_hand.h"

namespace twcore {

void PicturesAtHand::note(const PictureFit& fit, const PictureStore::Stored& picture)
{
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock || !fit.place.showsAll() || !fit.stamp.isThere) {
        return;
    }
    Entry entry{fit.media, fit.stamp, picture.start, picture.end, picture.frame};
    if (entries_.size() < kMost) {
        entries_.push_back(std::move(entry));
    } else {
        entries_[next_] = std::move(entry);
        next_ = (next_ + 1) % kMost;
    }
}

SharedFrame PicturesAtHand::find(const MediaFilePtr& media, const FileStamp& stamp, double seconds, PictureSize least)
{
    const std::lock_guard lock(mutex_);
    for (const Entry& entry : entries_) {
        const bool isOfMedia = !entry.media.owner_before(media) && !media.owner_before(entry.media);
        if (isOfMedia && entry.stamp == stamp && entry.start <= seconds && seconds < entry.end) {
            SharedFrame frame = entry.frame.lock();
            if (frame && frame->width >= least.width && frame->height >= least.height) {
                return frame;
            }
        }
    }
    return nullptr;
}

PicturesAtHand& picturesAtHand()
{
    static PicturesAtHand all;
    return all;
}

} // namespace twcore
