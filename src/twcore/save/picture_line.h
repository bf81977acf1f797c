#pragma once

// The pictures of a movie in order, made by several workers ahead of whoever writes them.
//
//     frames   0 ............ 74 | 75 ........... 149 | 150 ...
//     worker   1                 | 2                  | 1 or 2, whoever is free
//
// The movie is cut into chunks at cuts and at key frames, so that workers decode nothing twice. Each worker takes the
// next chunk, decodes, fits and, but where a rate is kept over all of the movie, encodes it: picture by picture, or the
// chunk as a group of its own, whose borders are the same whoever is at work. Who finds no chunk left takes over a part
// of another's, so that all end together. Where the way to a chunk leads past the one behind it, its worker makes that
// one first. What is ready waits in its chunk; how much may wait is bounded, and the chunk that is being written never
// waits for another worker's.

#include "twcore/render/picture_renderer.h"
#include "twcore/save/copied_pictures.h"
#include "twcore/save/movie_cuts.h"
#include "twcore/save/video_encoder.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace twcore {

/// One picture of the movie: the packet when the workers encode, else the frame.
struct MadePicture {
    SharedFrame frame;
    std::shared_ptr<const AVPacket> packet;
    std::size_t byteCount = 0; // memory it holds that the picture before does not
    std::int64_t times = 1;    // that it is shown in a row, while it waits
    bool isCopied = false;     // as its medium has it
};

class PictureLine {
public:
    PictureLine(PlanPtr plan, MovieClock clock, VideoEncoding encoding, const std::atomic<bool>& cancelled,
                ReadFaults& faults);
    /// Stops the workers and waits for them.
    ~PictureLine();

    /// The next picture; nullopt behind the last and after a cancel. Throws what a worker threw.
    std::optional<MadePicture> next();

private:
    struct Chunk {
        std::int64_t first = 0;
        std::int64_t end = 0;
        std::int64_t toMake = 0;   // the frame that its worker takes next
        std::size_t following = 0; // the chunk whose frames come behind its own
        bool isAfterNext = false;  // its worker makes the next chunk first, since that one lies on the way to it
        std::deque<MadePicture> ready{};
        bool done = false;

        std::int64_t framesLeft() const { return end - toMake; }
    };

    std::vector<std::int64_t> chunkStarts();
    void work();
    void orderByWay();
    std::optional<std::size_t> takeChunk(std::optional<std::size_t> made);
    bool isAheadOfTurn(std::size_t chunk) const;
    std::optional<std::size_t> takeOver();
    std::optional<std::int64_t> nextFrame(std::size_t chunk, PictureRenderer& renderer);
    std::unique_ptr<VideoEncoder> openEncoder() const;
    void makeChunk(std::size_t chunk, PictureRenderer& renderer, VideoEncoder* encoder, CopiedPictures* copied);
    void makeGroups(std::size_t chunk, PictureRenderer& renderer, CopiedPictures* copied);
    bool encodeGroup(std::size_t chunk, std::int64_t first, std::int64_t end, PictureRenderer& renderer);
    bool handCopies(std::size_t chunk, std::int64_t first, std::int64_t end, CopiedPictures& copied);
    void isMade(std::size_t chunk);
    bool hand(std::size_t chunk, MadePicture picture);

    const PlanPtr plan_;
    const MovieClock clock_;
    const VideoEncoding encoding_;
    const std::atomic<bool>& cancelled_;
    ReadFaults& faults_;
    std::atomic<bool> stopping_ = false;
    std::unique_ptr<const PacketRules> rules_; // none: nothing is copied
    SourceLists lists_;
    const PicturePoolPtr pool_; // of all workers: what waits is theirs in common
    MovieCuts cuts_;
    int decoderThreads_ = 1;

    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::deque<Chunk> chunks_;  // in the order of making; grows at its end while others work
    std::size_t nextChunk_ = 0; // that no worker has taken
    std::size_t current_ = 0;   // that is being written
    std::size_t waitingBytes_ = 0;
    std::exception_ptr failure_;

    std::vector<std::thread> workers_;
};

} // namespace twcore
