#pragma once

// The pictures of one stream by time: at any media time exactly the frame whose interval holds it.
//
// A reader stays where it is: asking on from the last time decodes on, and only a jump back, or ahead over a key
// frame, seeks. Not thread safe: one reader serves one thread; several readers of a file share its list of pictures.

#include "twcore/media/decoder.h"
#include "twcore/media/file_stamp.h"
#include "twcore/media/media_file.h"
#include "twcore/media/near_pictures.h"
#include "twcore/media/picture_listing.h"
#include "twcore/media/picture_packets.h"

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace twcore {

class PictureReader {
public:
    /// `threads` is what the decoder may use.
    PictureReader(MediaFilePtr media, int threads, Patience patience = {});

    /// The frame at a media time in seconds; nullptr where there is none: outside the stream, or nothing to decode.
    /// The same frame is the same pointer while the reader stays on it. With patience that `takesNear` it may be a key
    /// frame near by, or nothing yet; `isNear` says so.
    SharedFrame at(double seconds);
    /// Whether the last question was given up between two pictures. Asked again, it goes on from there.
    bool isPaused() const noexcept { return isPaused_; }
    /// Pictures that have to be decoded for that time, as far as is known without reading; 0 when it is not.
    int picturesTo(double seconds) const;
    /// Media time of the key frame that the picture of a time is decoded from; nothing when it is not known.
    std::optional<double> keySecondsFor(double seconds) const;

    /// That of the next key frame.
    std::optional<double> keySecondsBehind(double seconds) const;
    /// Media time of the picture that the reader stands on.
    std::optional<double> position() const;

    /// A picture that was decoded, and the media time it is shown at, up to `end`.
    struct Passed {
        const SharedFrame& frame;
        double start;
        double end;
    };
    /// Is given each picture that is decoded on the way to another. Those that nothing leans on are left out, unless
    /// they begin behind `from`.
    void onTheWay(std::function<void(const Passed&)> passed) { passed_ = std::move(passed); }
    void decodeAllFrom(double seconds) noexcept { wholeFrom_ = seconds + media_->zeroSeconds; }
    /// Up to which media time the frame that was answered last is known to be shown, at least.
    double knownEnd() const;

    /// Whether the last answer is not the frame of its time, since the file's pictures are still being listed.
    bool isNear() const noexcept { return isNear_; }

    /// Nothing behind this media time in seconds will be asked for before something ahead of it is, so that nothing is
    /// decoded behind it. What is asked for all the same is found, only later.
    void expectUpTo(double seconds) noexcept;

    /// Gives back what the decoder holds, a dozen pictures, until somebody asks again; the file stays open. False where
    /// that is not enough, or nothing is held: whoever wants the memory closes the reader.
    bool rest();
    bool isRested() const noexcept { return isRested_; }

    /// Media time in seconds from which on the frame that was answered last is the answer.
    double frameStart() const noexcept { return current_ ? mediaTime(current_->start) : 0; }

    const MediaFile& media() const noexcept { return *media_; }

    /// The file could not be opened, or its disk failed: frames may be missing for no better cause.
    bool isBroken() const noexcept { return broken_ || packets_.hasFailed(); }
    /// A sentence for people, when pictures are missing since the file is not what it was when it was opened; else
    /// empty. One that is whole again is found by the next question, but by who saves a movie.
    std::string lack() const;

private:
    // Between the last frame's own end and the end that the header tells, as long as that is no damage.
    static constexpr double kHoldSeconds = 0.25;

    struct Shown {
        SharedFrame frame;
        double start; // in the file's own time
    };

    bool openFile();
    bool prepare();
    void lookForFile(double seconds);
    bool takeIndex(double time);
    void forgetFile();
    void readAfresh();
    SharedFrame nearTo(double time);
    SharedFrame exactly(double time);
    SharedFrame answer(double time);
    bool needsJump(double time) const;
    void jumpTo(double time);
    void jumpByTime(double time);
    void jumpByIndex(double time);
    void restart();
    void forget();
    std::optional<Shown> decodeNext();
    std::optional<Shown> timed(FramePtr frame) const;
    void checkList(const AVPacket* packet) const;
    bool sendPacket();
    bool isPassedOver(const AVPacket& packet);
    bool lastsUpTo(double start, double time) const;
    bool isLastUpTo(const Shown& shown, double time);
    bool nothingWantedAhead();
    double endOf(const Shown& shown, double unknown) const;
    double fileTime(double seconds) const noexcept { return seconds + media_->zeroSeconds + tolerance_; }
    double mediaTime(double time) const noexcept { return time - media_->zeroSeconds - tolerance_; }
    double endOfLast(double start) const;

    MediaFilePtr media_;
    int threads_;
    Patience patience_;
    bool broken_ = false;
    FileStamp opened_; // what the file was when it was tried last
    std::int64_t wholeBytes_ = 0;

    PicturePackets packets_;
    std::unique_ptr<Decoder> decoder_;
    PictureListing::Index index_; // of kIndexed files: knows the picture that is asked for
    std::unique_ptr<NearPictures> nearPictures_;
    bool isNear_ = false;
    bool isPaused_ = false;
    bool isRested_ = false;  // the next picture is found by a jump
    bool hasWorked_ = false; // since it was asked
    std::function<void(const Passed&)> passed_;
    double wholeFrom_ = std::numeric_limits<double>::infinity();
    std::set<double> seen_;        // times of the packets since the last jump, where there is no list
    std::multiset<double> inside_; // times of pictures that the decoder was given and has not given out
    bool drained_ = false;
    double expectedEnd_ = std::numeric_limits<double>::infinity(); // in the file's own time
    std::optional<double> stoppedBehind_; // the decoder was drained here, since nothing behind it was expected

    double tolerance_ = 0;
    double ownStart_ = 0; // of the packet that was taken last, in the file's own time, as it says
    double ownEnd_ = 0;
    std::size_t nextOrdinal_ = 0; // index: number of the packet that is read next
    std::int64_t lastPacketTime_ = AV_NOPTS_VALUE;
    std::optional<std::int64_t> jumpedTo_; // what the last jump was meant for: a key frame's stamp, or its number
    bool fromStart_ = false;               // nothing but reading from the beginning was left to find a picture
    double lostFrom_ = std::numeric_limits<double>::infinity(); // the file has shrunk: from here on it gives nothing
    double wanted_ = 0;     // the time that was asked for last, in the file's own time
    double dropBefore_ = 0; // frames shown ahead of the key frame that was jumped to are not whole
    std::optional<Shown> current_;
    std::optional<Shown> next_;
};

} // namespace twcore
