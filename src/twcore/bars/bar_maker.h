#pragma once

// The thread that makes what bars show, when nobody else needs the machine: it has the lowest priority that there is,
// and rests between two pieces while a movie is saved or a player works.
//
//     interface thread --- wishes: the newest list counts ---> maker ---> news ---> interface thread
//
// The interface thread never waits for it, and takes no lock: a thread of low priority that holds one while it has to
// give the processor up would hold up everybody else.

#include "twcore/bars/bar_work.h"
#include "twcore/play/left_thread.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

struct BarWish {
    enum class Kind : std::uint8_t { kPicture, kPeaks, kSamples };
    Kind kind = Kind::kPicture;
    MediaFilePtr media;
    std::int32_t number = 0;                  // a media time in ms, or a chunk
    int height = 0;                           // of a picture
    std::vector<std::int32_t> milliseconds{}; // of the chunk, whose samples are wanted
};

struct BarWishes {
    std::vector<MediaFilePtr> seen; // whose files are to be looked at
    std::vector<BarWish> pictures;
    std::vector<BarWish> peaks; // and samples
    std::string cacheFolder;
    std::int64_t cacheBytes = 0;
};

/// What was made.
struct BarNews {
    enum class Kind : std::uint8_t { kChanged, kPicture, kPeaks, kSamples };
    Kind kind = Kind::kChanged; // the medium's file is another one: all that was made of it is void
    MediaFilePtr media;
    std::int32_t number = 0;
    int height = 0;
    PictureTimes times{};             // that the medium has pictures of
    engine::SurfacePicture picture{}; // without pixels: there is none
    std::vector<Peak> peaks{};        // empty: they cannot be had
    std::vector<std::int32_t> milliseconds{};
    std::vector<std::vector<Peak>> samples{}; // of each of them; empty: they cannot be had
};

/// Interface thread; every call returns at once.
class BarMaker {
public:
    /// `isIdle`: with the lowest priority; for measures it may have its own.
    explicit BarMaker(bool isIdle = true);
    ~BarMaker();

    void makeFor(BarWishes wishes);
    /// What was made since the last time, in that order.
    std::vector<BarNews> take();
    /// The number of the sink that hears of news.
    void tellTo(std::int32_t sink);

    struct Room;

private:
    std::shared_ptr<Room> room_;
    std::optional<LeftThread> thread_;
    bool isIdle_;
};

} // namespace twcore
