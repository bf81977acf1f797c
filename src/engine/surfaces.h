#pragma once

// Where the engine shows pictures and draws single frames: the numbers that the contract calls "window handle" and
// "device context" are given out here.
//
// A `FrameSink` is a place on the screen that takes finished pictures, on engine threads. A `PixelCanvas` holds pixels
// that the engine draws on and reads from, and its owner too, on the interface thread. A `NewsSink` hears that
// something has been made that nobody waits for. A `ControlPanelHost` shows a device's controls to people. Numbers are
// never reused; one that names nothing drops what it gets.

#include "engine/control_panel.h"
#include "engine/types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace engine {

/// How large a surface is: logical pixels, and device pixels to a logical one. Nothing is made for one below 2 x 2.
struct SurfaceSize {
    int width = 0;
    int height = 0;
    double pixelRatio = 1;
};

/// A finished picture: lines from top to bottom, four bytes a pixel (blue, green, red, unused). Nobody changes it any
/// more; whoever holds it may keep it.
struct SurfacePicture {
    int width = 0; // device pixels
    int height = 0;
    std::ptrdiff_t strideBytes = 0;
    std::shared_ptr<const std::uint8_t> pixels;

    /// Whether it is the very same one.
    friend bool operator==(const SurfacePicture&, const SurfacePicture&) = default;
};

/// Takes pictures of exactly the size that was registered, in device pixels, bars included; for a moment after a resize
/// one of the old size may come. Called on engine threads, one call at a time. It calls nothing back and waits for
/// nothing: it keeps the newest picture and says that there is one.
class FrameSink {
public:
    virtual ~FrameSink() = default;
    virtual void show(const SurfacePicture& picture) noexcept = 0;
    /// A short text instead of a picture: why nothing can be shown. Good during the call.
    virtual void say(Text text) noexcept = 0;
};

/// Is told that there is something new to ask for. Called on engine threads, one call at a time; it calls nothing back
/// and waits for nothing.
class NewsSink {
public:
    virtual ~NewsSink() = default;
    virtual void hear() noexcept = 0;
};

/// Pixels to draw on: 0xFFRRGGBB, from the upper left, line by line without gaps. Interface thread only.
class PixelCanvas {
public:
    PixelCanvas() = default;
    PixelCanvas(int width, int height) { resize(width, height); }

    /// Black of that size; what was there is gone.
    void resize(int width, int height)
    {
        width_ = width > 0 && height > 0 ? width : 0;
        height_ = width_ > 0 ? height : 0;
        pixels_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), kBlack);
    }
    /// Takes a whole picture over; its size is that of the pixels.
    void take(int width, int height, std::vector<std::uint32_t> pixels)
    {
        width_ = width;
        height_ = height;
        pixels_ = std::move(pixels);
    }

    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    std::uint32_t* line(int y)
    {
        return pixels_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    }
    const std::uint32_t* line(int y) const { return const_cast<PixelCanvas*>(this)->line(y); }
    /// Black outside the canvas.
    std::uint32_t at(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_ ? line(y)[x] : kBlack; }

    static constexpr std::uint32_t kBlack = 0xFF000000u;

private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
};

/// The numbers. `show`, `say`, `tell` and `sizeOf` come from any thread, all else from the interface thread.
class SurfaceRegistry {
public:
    /// The sink is the caller's and lives until it is removed. So it is of a sink of news.
    std::int32_t add(FrameSink& sink, SurfaceSize size)
    {
        auto entry = std::make_shared<Entry>();
        entry->sink = &sink;
        entry->size = size;
        return keep(std::move(entry));
    }
    std::int32_t add(NewsSink& sink)
    {
        auto entry = std::make_shared<Entry>();
        entry->news = &sink;
        return keep(std::move(entry));
    }
    /// Once this has returned, the sink is called no more: a call in flight is waited for.
    void remove(std::int32_t number)
    {
        std::shared_ptr<Entry> entry;
        {
            const std::lock_guard lock(mutex_);
            const auto found = sinks_.find(number);
            if (found == sinks_.end()) {
                return;
            }
            entry = std::move(found->second);
            sinks_.erase(found);
        }
        const std::lock_guard call(entry->calling);
        entry->sink = nullptr;
        entry->news = nullptr;
    }
    /// Tells whoever shows on it, so that the picture comes again in the new size.
    void resize(std::int32_t number, SurfaceSize size)
    {
        std::function<void()> resized;
        {
            const std::lock_guard lock(mutex_);
            const auto found = sinks_.find(number);
            if (found == sinks_.end()) {
                return;
            }
            found->second->size = size;
            resized = found->second->resized;
        }
        if (resized) {
            resized();
        }
    }
    /// What `resize` runs, on the interface thread; the last one that was set. For the engine.
    void watch(std::int32_t number, std::function<void()> resized)
    {
        const std::lock_guard lock(mutex_);
        const auto found = sinks_.find(number);
        if (found != sinks_.end()) {
            found->second->resized = std::move(resized);
        }
    }
    std::optional<SurfaceSize> sizeOf(std::int32_t number) const
    {
        const std::lock_guard lock(mutex_);
        const auto found = sinks_.find(number);
        const bool isSurface = found != sinks_.end() && found->second->sink != nullptr;
        return isSurface ? std::optional(found->second->size) : std::nullopt;
    }

    void show(std::int32_t number, const SurfacePicture& picture)
    {
        call(number, &Entry::sink, [&](FrameSink& sink) { sink.show(picture); });
    }
    void say(std::int32_t number, Text text)
    {
        call(number, &Entry::sink, [&](FrameSink& sink) { sink.say(text); });
    }
    void tell(std::int32_t number)
    {
        call(number, &Entry::news, [](NewsSink& sink) { sink.hear(); });
    }

    /// The canvas is the caller's and lives until it is removed.
    std::int32_t add(PixelCanvas& canvas)
    {
        const std::lock_guard lock(mutex_);
        canvases_.emplace(++last_, &canvas);
        return last_;
    }
    void removeCanvas(std::int32_t number)
    {
        const std::lock_guard lock(mutex_);
        canvases_.erase(number);
    }
    /// The host is the caller's and lives until it is removed.
    std::int32_t add(ControlPanelHost& host)
    {
        const std::lock_guard lock(mutex_);
        hosts_.emplace(++last_, &host);
        return last_;
    }
    void removeHost(std::int32_t number)
    {
        const std::lock_guard lock(mutex_);
        hosts_.erase(number);
    }
    /// nullptr when the number names none.
    ControlPanelHost* controlPanelHost(std::int32_t number) const
    {
        const std::lock_guard lock(mutex_);
        const auto found = hosts_.find(number);
        return found != hosts_.end() ? found->second : nullptr;
    }
    /// nullptr when the number names none.
    PixelCanvas* canvas(std::int32_t number) const
    {
        const std::lock_guard lock(mutex_);
        const auto found = canvases_.find(number);
        return found != canvases_.end() ? found->second : nullptr;
    }

private:
    struct Entry {
        std::mutex calling;        // held while the sink is called
        FrameSink* sink = nullptr; // one of the two
        NewsSink* news = nullptr;
        SurfaceSize size;
        std::function<void()> resized;
    };

    std::int32_t keep(std::shared_ptr<Entry> entry)
    {
        const std::lock_guard lock(mutex_);
        sinks_.emplace(++last_, std::move(entry));
        return last_;
    }

    template <class Sink, class Call>
    void call(std::int32_t number, Sink* Entry::*which, Call&& body)
    {
        std::shared_ptr<Entry> entry;
        {
            const std::lock_guard lock(mutex_);
            const auto found = sinks_.find(number);
            if (found == sinks_.end()) {
                return;
            }
            entry = found->second;
        }
        const std::lock_guard lock(entry->calling);
        if (Sink* const sink = (*entry).*which; sink != nullptr) {
            body(*sink);
        }
    }

    mutable std::mutex mutex_; // guards what follows
    std::map<std::int32_t, std::shared_ptr<Entry>> sinks_;
    std::map<std::int32_t, PixelCanvas*> canvases_;
    std::map<std::int32_t, ControlPanelHost*> hosts_;
    std::int32_t last_ = 0;
};

/// The registry of the process.
inline SurfaceRegistry& surfaces()
{
    static SurfaceRegistry registry;
    return registry;
}

} // namespace engine
