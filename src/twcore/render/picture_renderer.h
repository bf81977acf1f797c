#pragma once

// The pictures of a movie, one by one: what the plan shows at a frame's time, in the movie's format. A renderer keeps
// its decoders warm from frame to frame and serves one thread; several of them share a plan.

#include "twcore/media/picture_reader.h"
#include "twcore/render/movie_clock.h"
#include "twcore/render/overlay_key.h"
#include "twcore/render/picture_fitter.h"
#include "twcore/render/picture_store.h"
#include "twcore/render/plan.h"
#include "twcore/render/plane_key.h"

#include <chrono>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

class PictureRenderer {
public:
    /// `decoderThreads` is what each decoder may use. A store, which is the caller's and outlives the renderer, gives
    /// pictures that stand ready, and is given those that are made; it takes planar formats alone. Renderers of one
    /// movie may share a pool.
    PictureRenderer(PlanPtr plan, MovieClock clock, PictureFormat format, int decoderThreads, Patience patience,
                    PictureStore* store = nullptr, PicturePoolPtr pool = nullptr);

    /// The picture of a frame, from 0. While nothing changes it is the same pointer. nullptr when a reader was asked to
    /// pause on the way.
    SharedFrame frame(std::int64_t number);

    /// Whether nothing is done to what is decoded for the frame: it is the movie's picture as it is.
    bool isUntouched(std::int64_t number);

    /// A sentence for people, when something of a frame that has been made is missing since its file has changed.
    std::string lack(std::int64_t number);

    // With a store:

    /// Whether all that the frame is made of stands ready, or is held.
    bool isReady(std::int64_t number);
    /// The frame made of what stands nearest to it, without decoding; nullptr when nothing does.
    SharedFrame nearestFrame(std::int64_t number);
    /// By how many seconds of a medium that is off, at most; infinite when a source has nothing.
    double nearestOff(std::int64_t number);
    /// Decodes towards a frame, first for the source that is farthest off. False when a reader was asked to pause.
    bool workTowards(std::int64_t number);
    /// The first frame that is made of the same sources without a break.
    std::int64_t stretchBegin(std::int64_t number);
    /// Pictures to be decoded for a frame, as far as it is known.
    int picturesTo(std::int64_t number);
    /// Frames of note about a frame, by the source that lies lowest: nothing where that is not known, or lies under
    /// another one.
    struct Landmarks {
        std::optional<std::int64_t> groupBefore; // the last of the group of pictures ahead of its own
        std::optional<std::int64_t> groupBehind; // the first of the group behind
        std::optional<std::int64_t> position;    // where its reader stands
        double secondsAFrame = 0;                // of the medium
    };
    Landmarks landmarks(std::int64_t number);
    /// Decodes the pictures of a frame and holds them, so that the frame is made at once in another size, or with
    /// another fit. False when a reader was asked to pause on the way.
    bool hold(std::int64_t number);
    /// Otherwise each frame that is decoded, and that the store cannot take, takes the place of the one that is held.
    void leaveHeld(bool leaves) noexcept { leavesHeld_ = leaves; }
    /// From now on all pictures that are passed from this long ahead of a frame on are kept.
    void keepFromAhead(double seconds) noexcept { keptAhead_ = seconds; }
    /// From now on one picture in so many seconds of those on the way is kept; 0: none.
    void keepEvery(double seconds) noexcept { keptEvery_ = seconds; }
    /// Of the store, that the pictures of a frame take, in bytes.
    std::size_t bytesOf(std::int64_t number);

    /// Whether the last frame was made of other pictures than its own, since a file is still being listed. Only with
    /// patience that `takesNear`.
    bool isNear() const noexcept { return isNear_; }

    /// No frame from this one on will be asked for next, so that nothing is decoded for it.
    void expectUpTo(std::int64_t end) { expectedEnd_ = end; }
    static constexpr std::int64_t kNoEnd = std::numeric_limits<std::int64_t>::max(); // nobody knows
    /// Takes over the files that another renderer has open, for another plan or size; but for those that have been
    /// written anew since, as a title is. Both have the same patience.
    void takeReaders(PictureRenderer& other);

private:
    struct Reader {
        MediaFilePtr media;
        std::size_t layer;
        std::unique_ptr<PictureReader> reader;
        FileStamp stamp; // of its file, when it was opened
        std::uint64_t lastUse = 0;
        int uses = 0;
        PictureStore::Stored held{}; // as it was decoded
        double lastKept = 0;         // media time of the picture that was kept last of those on the way

        bool holds(double seconds) const { return held.frame && seconds >= held.start && seconds < held.end; }
    };
    /// A picture of a source, as it was decoded or fitted into its place already.
    struct LayerPicture {
        SharedFrame frame; // nullptr: none
        PictureFacts facts;
        PicturePlace place;
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
    Reader* find(const MediaFilePtr& media, std::size_t layer);
    void giveBackDecoders();
    Reader& openFor(const MediaFilePtr& media, std::size_t layer);
    PictureReader& readerFor(const MediaFilePtr& media, std::size_t layer) { return *openFor(media, layer).reader; }
    SharedFrame composed(const PictureStretch& stretch, std::int64_t number, const std::vector<LayerPicture>& layers);
    SharedFrame compose(const PictureStretch& stretch, const std::vector<LayerPicture>& layers, double timelineMs);
    SharedFrame overlaid(const SharedFrame& below, const LayerPicture& layer, const PlannedSource& source);
    void prepare(const LayerPicture& layer, const PlannedSource& source, const Planes& target);
    PicturePlace placeOf(const PlannedSource& source) const;

    FileStamp stampOf(const MediaFile& media) const;
    LayerPicture decoded(const PlannedSource& source, SharedFrame frame) const;
    PictureFit fitOf(const PlannedSource& source) const;
    LayerPicture stored(const PictureFit& fit, const PictureStore::Stored& picture) const;
    LayerPicture keep(const PlannedSource& source, const PictureFit& fit, Reader& open,
                      const PictureStore::Stored& picture);
    bool isThere(const PlannedSource& source, std::size_t layer, double seconds);
    std::optional<LayerPicture> nearestOf(const PlannedSource& source, std::size_t layer, double seconds, double& off);
    double offOf(const PlannedSource& source, std::size_t layer, std::int64_t number);
    std::optional<LayerPicture> layerAt(const PlannedSource& source, std::size_t layer, std::int64_t number);
    void keepPassed(const PlannedSource& source, const PictureReader::Passed& passed);
    double secondsIn(const PlannedSource& source, std::int64_t number) const;
    double expectedSeconds(const PlannedSource& source, std::int64_t number) const;

    PlanPtr plan_;
    MovieClock clock_;
    PictureFormat format_;
    int decoderThreads_;
    Patience patience_;
    PictureFormat workFormat_;                // pictures that are worked on: planes, where the movie's format has none
    PictureFitter fitter_;                    // to the movie's format
    PictureFitter worker_;                    // to the work format
    std::unique_ptr<PictureFitter> overlays_; // to an overlay's size
    std::unique_ptr<PictureFitter> placer_;   // to the size of a source's place
    PictureStore* store_;
    bool leavesHeld_ = false;
    double keptAhead_ = 0;                   // seconds
    double keptEvery_ = 0;                   // seconds; 0: nothing of what is passed
    const PlannedSource* passing_ = nullptr; // that is being decoded
    std::size_t passingLayer_ = 0;
    double passingTo_ = 0; // media time
    PreparedOverlay prepared_;
    /// What a file was when it was looked at last.
    struct Looked {
        FileStamp stamp;
        std::chrono::steady_clock::time_point at;
    };
    mutable std::map<const MediaFile*, Looked> looked_; // of the plan's
    std::vector<Reader> readers_;
    std::uint64_t uses_ = 0;
    std::uint64_t usesBefore_ = 0; // ahead of the frame in hand
    std::size_t stretch_ = 0;
    bool isNear_ = false;
    std::int64_t expectedEnd_ = kNoEnd;
    Made made_;
};

} // namespace twcore
