#pragma once

// The pictures of a movie, one by one: what the plan shows at a frame's time, in the movie's format. A renderer keeps
// its decoders warm from frame to frame and serves one thread; several of them share a plan.

#include "twcore/media/picture_reader.h"
#include "twcore/render/movie_clock.h"
#include "twcore/render/overlay_key.h"
#include "twcore/render/picture_fitter.h"
#include "twcore/render/plan.h"
#include "twcore/render/plane_key.h"

#include <filesystem>
#include <limits>
#include <memory>
#include <vector>

namespace twcore {

class PictureRenderer {
public:
    /// `decoderThreads` is what each decoder may use.
    PictureRenderer(PlanPtr plan, MovieClock clock, PictureFormat format, int decoderThreads, Patience patience);

    /// The picture of a frame, from 0. While nothing changes it is the same pointer.
    SharedFrame frame(std::int64_t number);
    /// Whether the last frame was made of other pictures than its own, since a file is still being listed. Only with
    /// patience that `takesNear`.
    bool isNear() const noexcept { return isNear_; }

    /// No frame from this one on will be asked for next, so that nothing is decoded for it.
    void expectUpTo(std::int64_t end) { expectedEnd_ = end; }
    /// Takes over the files that another renderer has open, for another plan or size; but for stills that have been
    /// written anew since, as a title is. Both have the same patience.
    void takeReaders(PictureRenderer& other);

private:
    struct Reader {
        MediaFilePtr media;
        std::size_t layer;
        std::unique_ptr<PictureReader> reader;
        std::filesystem::file_time_type changed; // of a still: when its file was written
        std::uint64_t lastUse = 0;
    };
    /// What the last picture was made of.
    struct Made {
        std::vector<SharedFrame> frames;
        const PictureStretch* stretch = nullptr;
        SharedFrame picture;
    };

    /// The overlay that was laid last: one that stands still is worked on once.
    struct PreparedOverlay {
        SharedFrame frame;
        const PlannedSource* source = nullptr;
        bool inPlanes = false; // which of the two holds it
        OverlayKey key;
        PlaneKey planeKey;
    };

    const PictureStretch* stretchAt(std::int64_t number);
    PictureReader& readerFor(const MediaFilePtr& media, std::size_t layer);
    SharedFrame compose(const PictureStretch& stretch, const std::vector<SharedFrame>& frames, double timelineMs);
    SharedFrame overlaid(const SharedFrame& below, const SharedFrame& frame, const PlannedSource& source);
    void prepare(const SharedFrame& frame, const PlannedSource& source, const PicturePlace& place,
                 const Planes& target);
    PicturePlace placeOf(const PlannedSource& source) const;

    PlanPtr plan_;
    MovieClock clock_;
    PictureFormat format_;
    int decoderThreads_;
    Patience patience_;
    PictureFormat workFormat_;                // pictures that are worked on: planes, where the movie's format has none
    PictureFitter fitter_;                    // to the movie's format
    PictureFitter worker_;                    // to the work format
    std::unique_ptr<PictureFitter> overlays_; // to an overlay's size
    PreparedOverlay prepared_;
    std::vector<Reader> readers_;
    std::uint64_t uses_ = 0;
    std::size_t stretch_ = 0;
    bool isNear_ = false;
    std::int64_t expectedEnd_ = std::numeric_limits<std::int64_t>::max();
    Made made_;
};

} // namespace twcore
