// Files of a test's own, tried; and what is to be seen in a picture of theirs.
#pragma once

#include "support/files.h"
#include "support/manifest.h"
#include "support/patterns.h"
#include "twcore/media/picture_reader.h"
#include "twcore/media/sound_source.h"
#include "twcore/render/picture_fitter.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace testmedia {

inline twcore::MediaFilePtr opened(const std::string& name) { return twcore::tryMediaFile(medium(name), {}).file; }

/// A file of these bytes, under this name, which some formats are known by.
struct OwnFile {
    explicit OwnFile(const std::string& bytes, const std::string& name = "own") : path(folder / name)
    {
        writeBytes(path, bytes);
    }

    TempFolder folder;
    std::filesystem::path path;
};

/// The same, tried.
struct MadeFile : OwnFile {
    using OwnFile::OwnFile;
    twcore::MediaFilePtr media = twcore::tryMediaFile(path.string(), {}).file;
};

/// The bar code of a frame as it is displayed; -1 for none.
inline int shownNumber(const twcore::SharedFrame& frame, const twcore::MediaFile& media)
{
    if (!frame) {
        return -1;
    }
    const twcore::PictureSize size{media.picture->width & ~1, media.picture->height & ~1};
    twcore::PictureFitter fitter({size, AV_PIX_FMT_YUV420P, {twcore::Matrix::kBt601, false}});
    const auto shown = fitter.fit(frame, *media.picture, {{0, 0, size.width, size.height}});
    return readBarcode({shown->data[0], static_cast<std::size_t>(shown->linesize[0]), size.width, size.height})
        .value_or(-2);
}

} // namespace testmedia
