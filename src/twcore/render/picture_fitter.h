#pragma once

// A decoded frame brought into the movie's frame: turned, deinterlaced, scaled once, its colours what the movie's
// format means by them, bars around it. A frame that is right as it is goes through untouched and uncopied.

#include "twcore/media/media_file.h"
#include "twcore/media/orientation.h"
#include "twcore/render/colour.h"
#include "twcore/render/picture_place.h"
#include "twcore/render/picture_scaler.h"
#include "twcore/render/tone_map.h"

#include <array>
#include <memory>

namespace twcore {

/// What every picture of a movie is.
struct PictureFormat {
    PictureSize size;
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P; // 8-bit planar, or BGR24
    Colour colour;
};

/// Memory that goes from one picture of a movie to the next. Any thread; pictures may outlive it.
class PicturePool {
public:
    enum class Rows {
        kOwn,       // as long as the picture is wide
        kOfEncoders // as far apart as those of encoders that look beyond the edge, which then work without a copy
    };
    PicturePool(const PictureFormat& format, Rows rows);
    ~PicturePool();
    PicturePool(const PicturePool&) = delete;
    PicturePool& operator=(const PicturePool&) = delete;

    /// To be written; throws std::bad_alloc.
    FramePtr newFrame();
    int pictureBytes() const noexcept { return pictureBytes_; }

private:
    const PictureFormat format_;
    int rowWidth_ = 0; // pixels
    int pictureBytes_ = 0;
    AVBufferPool* pool_ = nullptr;
};
using PicturePoolPtr = std::shared_ptr<PicturePool>;

class PictureFitter {
public:
    /// Without a pool, for pictures of that format, it has its own.
    explicit PictureFitter(PictureFormat format, PicturePoolPtr pool = nullptr);
    ~PictureFitter();

    /// The frame of the movie that shows `frame` at its place, black around it.
    /// Throws std::runtime_error when the libraries cannot convert it.
    SharedFrame fit(const SharedFrame& frame, const PictureFacts& facts, const PicturePlace& place);
    /// The same over another frame of the movie instead of over black.
    SharedFrame fitOver(const SharedFrame& below, const SharedFrame& frame, const PictureFacts& facts,
                        const PicturePlace& place);
    const PictureFormat& format() const noexcept { return format_; }
    const PicturePoolPtr& pool() const noexcept { return pool_; }
    /// A copy that nobody else holds, to be worked on.
    FramePtr copyOf(const AVFrame& frame);
    /// The black frame; always the same.
    SharedFrame black();

private:
    /// What of a picture is worked on: all of it, or one of its fields.
    enum class Lines { kAll, kUpper, kLower };
    struct Scaler {
        SwsContext* context = nullptr;
        AVPixelFormat source = AV_PIX_FMT_NONE;
    };

    FramePtr newFrame() { return pool_->newFrame(); }
    void draw(AVFrame& target, const AVFrame& frame, const PictureFacts& facts, const PicturePlace& place);
    void drawFields(AVFrame& target, const AVFrame& frame, const PicturePlace& place);
    void paintBlack(AVFrame& frame) const;
    SwsContext* scalerFor(AVPixelFormat from, PictureSize size, PictureSize to, Lines lines);
    /// In the movie's colours.
    void scaleInto(AVFrame& target, const AVFrame& source, const PictureRect& part, const PictureRect& rect, Lines of);
    /// Brightness and colour differences keep their meaning.
    void scaleByLibrary(AVFrame& target, const AVFrame& source, const PictureRect& part, const PictureRect& rect,
                        Lines of);
    void turnInto(AVFrame& target, const AVFrame& source, const PictureRect& part, const PictureRect& rect,
                  const Orientation& orientation);

    static bool keepsLines(const AVFrame& frame, const PictureFacts& facts, const PicturePlace& place);
    static PictureRect storedPart(const AVFrame& frame, const PicturePlace& place, const Orientation& orientation);

    PictureFormat format_;
    PictureScaler scaler_;
    std::array<Scaler, 3> scalers_; // by `Lines`: for what ours does not draw
    PicturePoolPtr pool_;
    SharedFrame black_;
    FramePtr turned_; // scaled, not yet turned
    ToneMapper toneMapper_;
};

} // namespace twcore
