#pragma once

// A decoded frame brought into the movie's frame: turned, deinterlaced, scaled once, its colours what the movie's
// format means by them, bars around it. A frame that is right as it is goes through untouched and uncopied.

#include "twcore/media/media_file.h"
#include "twcore/media/orientation.h"
#include "twcore/render/colour.h"

#include <memory>

namespace twcore {

/// What every picture of a movie is.
struct PictureFormat {
    PictureSize size;
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P; // 8-bit planar with colour differences, or BGR24
    Colour colour;
};

/// Where a picture stands in the movie's frame, in pixels.
struct PictureRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const PictureRect&, const PictureRect&) = default;
};

/// The whole picture as large as it goes, in its proportions, in the middle: laid out in the project's frame and then
/// brought to the movie's size. Edges are even, as subsampled colour needs it.
PictureRect fittedWhole(PictureSize picture, PictureSize projectFrame, PictureSize movie);

class PictureFitter {
public:
    explicit PictureFitter(PictureFormat format);
    ~PictureFitter();

    /// The frame of the movie that shows `frame` at `rect`, black around it.
    /// Throws std::runtime_error when the libraries cannot convert it.
    SharedFrame fit(const SharedFrame& frame, const PictureFacts& facts, const PictureRect& rect);
    /// The same over another frame of the movie instead of over black.
    SharedFrame fitOver(const SharedFrame& below, const SharedFrame& frame, const PictureFacts& facts,
                        const PictureRect& rect);
    /// The black frame; always the same.
    SharedFrame black();

private:
    FramePtr newFrame();
    void draw(AVFrame& target, const AVFrame& frame, const PictureFacts& facts, const PictureRect& rect);
    void paintBlack(AVFrame& frame) const;
    void scaleInto(AVFrame& target, const AVFrame& source, const PictureRect& rect);
    void turnInto(AVFrame& target, const AVFrame& source, const PictureRect& rect, const Orientation& orientation);

    PictureFormat format_;
    SwsContext* scaler_ = nullptr;
    AVBufferPool* pool_ = nullptr;
    SharedFrame black_;
    FramePtr turned_; // scaled, not yet turned
};

} // namespace twcore
