#pragma once

// A picture of pixels on a form: the engine draws on it and reads from it by its number, and the form shows it, a pixel
// of it as one logical pixel of the screen. Interface thread only.

#include "core/show.h"
#include "engine/surfaces.h"

#include <cstdint>

class PixelPicture {
public:
    PixelPicture() : number_(engine::surfaces().add(canvas)) {}
    ~PixelPicture() { engine::surfaces().removeCanvas(number_); }
    PixelPicture(const PixelPicture&) = delete;
    PixelPicture& operator=(const PixelPicture&) = delete;

    /// What the engine calls its device context.
    std::int32_t hDC() const noexcept { return number_; }
    /// To be called when the pixels have changed.
    void Refresh()
    {
        ++generation_;
        show::mark();
    }
    std::uint64_t generation() const noexcept { return generation_; }

    engine::PixelCanvas canvas;

private:
    std::int32_t number_;
    std::uint64_t generation_ = 0;
};
