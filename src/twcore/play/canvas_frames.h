#pragma once

// Single frames for the dialogues, and canvases as bitmap files.

#include "engine/surfaces.h"
#include "twcore/media/media_file.h"
#include "twcore/media/orientation.h"

#include <functional>
#include <string>
#include <vector>

namespace twcore {

/// Draws the frame of a file at a time on a canvas, which is then exactly of that size. `find` opens the file, on a
/// thread of its own; where it finds none, or no picture in it, the canvas is black. After 2 s, or when there is no
/// such frame, the canvas stays as it is: false.
bool drawFrame(std::function<MediaFilePtr(const Patience&)> find, double seconds, PictureSize size,
               engine::PixelCanvas& canvas);

/// A frame stretched to that size, as pixels of a canvas; empty when no picture is made of that size. Throws as
/// `PictureFitter`.
std::vector<std::uint32_t> pixelsOf(const SharedFrame& frame, const PictureFacts& facts, PictureSize size);

/// Writes the upper left of a canvas in that size, black where it is smaller, as a bitmap of 24 bits a pixel. False
/// when it cannot be written, with errno, or an old file is read-only: then what stood there before stands there
/// still. A new file has the rights of the old one, and of a link the file that it leads to is meant.
bool saveBitmap(const engine::PixelCanvas& canvas, PictureSize size, const std::string& path);

} // namespace twcore
