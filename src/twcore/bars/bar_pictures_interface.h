#pragma once

// Pictures and peaks for bars, as the program calls them.

#include "engine/ITWBarPictures.h"
#include "twcore/bars/bar_store.h"
#include "twcore/files/file_registry.h"
#include "twcore/guard.h"

namespace twcore {

class BarPicturesInterface final : public engine::ITWBarPictures {
public:
    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Milliseconds = engine::Milliseconds;

    /// The files outlive this. `isIdle`: see `BarMaker`.
    explicit BarPicturesInterface(const FileRegistry& files, bool isIdle = true) : files_(files), maker_(isIdle) {}

    Status SetNewsSink(std::int32_t number) override;
    Status SetCacheFolder(engine::Text path, std::int64_t mostBytes) override;
    Status BeginView() override;
    Status EndView() override;
    Status IsViewWhole(Bool16& whole) override;
    Status GetPictureWidth(Handle stream, std::int32_t height, std::int32_t& width) override;
    Status GetPicture(Handle stream, Milliseconds at, std::int32_t height, engine::SurfacePicture& picture,
                      Bool16& ok) override;
    Status GetPeaks(Handle stream, double from, double step, std::span<Peak> peaks, Bool16& ok) override;

private:
    const FileRegistry& files_;
    BarStore store_;
    BarMaker maker_;
    std::string cacheFolder_;
    std::int64_t cacheBytes_ = 0;
    bool hadWishes_ = false; // of the view before
};

} // namespace twcore
