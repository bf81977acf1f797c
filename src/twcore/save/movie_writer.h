#pragma once

// A movie file being written: header, packets in the order they are handed in, index. Errors of the disk are kept with
// their cause.

#include "twcore/media/ff_versions.h"

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace twcore {

/// Why a movie could not be written on: a status code of the engine and a sentence for people that names the path.
struct WriteError {
    std::uint32_t code = 0;
    std::string text;
};

/// The same for a path that the disk refused with this errno.
WriteError refusedBy(int diskError, const std::string& path);

enum class MovieFormat { kAvi, kWindowsMedia };

/// What a movie holds; a null description leaves a stream out.
struct MovieStreams {
    const AVCodecParameters* picture = nullptr;
    AVRational fps{25, 1};
    const AVCodecParameters* sound = nullptr;
};

class MovieWriter {
public:
    MovieWriter() = default;
    ~MovieWriter();
    MovieWriter(const MovieWriter&) = delete;
    MovieWriter& operator=(const MovieWriter&) = delete;

    /// Begins a movie, with room in its header for descriptive fields. What stood at the path is truncated. False when
    /// the file cannot be made or the format refuses a stream; then a file that was not there is gone again.
    bool open(MovieFormat format, const std::string& path, const MovieStreams& streams);

    /// Stamps in frames for the picture, in samples for the sound; Windows Media files take both in one order of time.
    /// False when the disk refuses.
    bool writePicture(const AVPacket& packet) { return write(packet, pictureStream_, pictureBase_); }
    bool writeSound(const AVPacket& packet) { return write(packet, soundStream_, soundBase_); }

    /// Hands on what the writer holds back, so that no kill can take it. False when the disk refuses.
    bool flush();

    /// Writes the index and closes. False when the disk refuses. A second call does nothing.
    bool close();

    /// Closes, and a file that was not there before is gone again.
    void discard();

    /// Whether the path names the file that was begun. Any thread.
    bool writesTo(const std::string& path) const;

    const WriteError& error() const noexcept { return error_; }
    std::int64_t packetsWritten(bool picture) const noexcept { return picture ? picturePackets_ : soundPackets_; }

private:
    static int writeBytes(void* self, WrittenByte* data, int size) noexcept;
    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence) noexcept;
    bool write(const AVPacket& packet, int stream, AVRational base);
    void describe(const MovieStreams& streams);
    bool openFile();
    bool writeHeader();
    bool reserveRoom();
    int addStream(const AVCodecParameters& parameters, AVRational base);
    bool fail(int ffError);
    void removeMade() const;
    void release();

    MovieFormat format_ = MovieFormat::kAvi;
    std::string path_;
    int descriptor_ = -1;
    bool isMade_ = false; // nothing stood there before
    dev_t device_ = 0;    // which file it is, from its opening on
    ino_t inode_ = 0;
    int diskError_ = 0; // errno of the first refusal
    AVIOContext* bytes_ = nullptr;
    AVFormatContext* context_ = nullptr;
    bool headerWritten_ = false;
    int pictureStream_ = -1;
    int soundStream_ = -1;
    AVRational pictureBase_{1, 25};
    AVRational soundBase_{1, 48000};
    std::int64_t lastStamp_ = INT64_MIN; // of the format's time base
    std::int64_t picturePackets_ = 0;
    std::int64_t soundPackets_ = 0;
    WriteError error_;
};

} // namespace twcore
