#pragma once

// How a stored picture is turned and stretched to be seen.

#include "twcore/media/ff.h"
#include "twcore/media/media_file.h"

namespace twcore {

struct PictureSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

/// From the stream's or the frame's display matrix, else from the note that a camera leaves in a photo.
Orientation orientationOf(const AVStream& stream, const AVFrame* frame);

/// Size as displayed: the stored lines, lengthened or shortened by the pixel aspect, then turned. At least 1 x 1.
PictureSize displayedSize(int storedWidth, int storedHeight, AVRational pixelAspect, const Orientation& orientation);

} // namespace twcore
