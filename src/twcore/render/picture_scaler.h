#pragma once

// Pictures of planes made larger or smaller and given other colours, in one pass: rows are mixed into a line, the line
// is scaled, its numbers get their new meaning, and only then it is rounded to bytes. Nothing is written in between but
// lines that stay in the cache. A plane that needs none of it is copied.

#include "twcore/render/colour.h"
#include "twcore/render/picture_place.h"
#include "twcore/render/scale_lines.h"

#include <optional>

namespace twcore {

/// A picture of three planes in somebody's memory, or a part of one that is aligned to its halved colour.
template <class Byte>
struct PlanarPicture {
    Byte* planes[3];
    int strides[3]; // bytes
    AVPixelFormat layout;
    PictureSize size;
    Colour colour; // not RGB
};

/// The same layout without the old names that also say "full range".
AVPixelFormat withoutRange(AVPixelFormat layout);
/// A part of a frame; planes that its layout does not have are nullptr.
PlanarPicture<std::uint8_t> planarPart(AVFrame& frame, const PictureRect& part, const Colour& colour);
PlanarPicture<const std::uint8_t> planarPart(const AVFrame& frame, const PictureRect& part, const Colour& colour);

/// Serves one thread; keeps what it worked out for the kind of picture that it had last.
class PictureScaler {
public:
    explicit PictureScaler(Vectors vectors = vectorsHere()) : vectors_(vectors) {}

    /// Whether that can be read here: planes of brightness and two colour differences, 8 bits or 9 to 14 in 16, and the
    /// size not out of reach of `to`. Layouts are those of withoutRange().
    static bool reads(AVPixelFormat layout, PictureSize size, PictureSize to);
    /// Whether that can be drawn: the target has 8 bits.
    static bool draws(const PlanarPicture<std::uint8_t>& target, const PlanarPicture<const std::uint8_t>& source);
    void draw(const PlanarPicture<std::uint8_t>& target, const PlanarPicture<const std::uint8_t>& source);

private:
    /// All that tells one kind of work from another.
    struct Kind {
        AVPixelFormat sourceLayout = AV_PIX_FMT_NONE;
        AVPixelFormat targetLayout = AV_PIX_FMT_NONE;
        PictureSize from;
        PictureSize to;
        Colour sourceColour;
        Colour targetColour;
        friend bool operator==(const Kind&, const Kind&) = default;
    };
    void prepare(const Kind& kind);
    void drawPlane(PlaneScaler& scaler, const PlanarPicture<std::uint8_t>& target,
                   const PlanarPicture<const std::uint8_t>& source, int plane);
    void drawRecoloured(const PlanarPicture<std::uint8_t>& target, const PlanarPicture<const std::uint8_t>& source);

    Vectors vectors_;
    Kind kind_;
    std::optional<PlaneScaler> luma_;
    std::optional<PlaneScaler> chroma_;      // both colour differences share theirs
    std::optional<Recolouring> recolouring_; // none where the numbers keep their meaning
    std::vector<std::int16_t> lines_[3];
    std::vector<int> parts_;
};

} // namespace twcore
