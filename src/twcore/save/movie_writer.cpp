#include "twcore/save/movie_writer.h"

#include "engine/status.h"
#include "twcore/save/asf_header.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace twcore {

namespace {

constexpr int kBufferBytes = 1 << 20;
constexpr int kFieldRoomBytes = 16 * 1024; // for descriptive fields

std::uint32_t statusOf(int diskError)
{
    switch (diskError) {
    case EACCES:
    case EPERM:
    case EROFS:
        return engine::kAccessDenied.code();
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return engine::kDiskFull.code();
    default:
        return engine::kFailed.code();
    }
}

std::string adviceOn(int diskError)
{
    switch (diskError) {
    case ENOENT:
    case ENOTDIR:
        return "Choose a folder that exists.";
    case EACCES:
    case EPERM:
    case EROFS:
        return "Choose a folder that you may write to.";
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return "Free some space, or choose another disk.";
    case EISDIR:
        return "Choose the name of a file.";
    case ENAMETOOLONG:
        return "Choose a shorter name.";
    default:
        return "Try another place.";
    }
}

} // namespace

WriteError refusedBy(int diskError, const std::string& path)
{
    return {statusOf(diskError), "Cannot write \"" + path + "\": " + std::generic_category().message(diskError) + ". "
                                     + adviceOn(diskError)};
}

MovieWriter::~MovieWriter() { close(); }

bool MovieWriter::fail(int ffError)
{
    if (error_.code == 0 && diskError_ != 0) {
        error_ = refusedBy(diskError_, path_);
    } else if (error_.code == 0) {
        error_ = {engine::kFailed.code(),
                  "Cannot write \"" + path_ + "\": " + ffText(ffError) + ". " + adviceOn(diskError_)};
    }
    return false;
}

int MovieWriter::writeBytes(void* self, WrittenByte* data, int size) noexcept
{
    auto& writer = *static_cast<MovieWriter*>(self);
    for (int done = 0; done < size;) {
        const auto count = ::write(writer.descriptor_, data + done, static_cast<std::size_t>(size - done));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            writer.diskError_ = writer.diskError_ != 0 ? writer.diskError_ : (count < 0 ? errno : ENOSPC);
            return AVERROR(writer.diskError_);
        }
        done += static_cast<int>(count);
    }
    return size;
}

std::int64_t MovieWriter::seekBytes(void* self, std::int64_t offset, int whence) noexcept
{
    auto& writer = *static_cast<MovieWriter*>(self);
    std::int64_t place = -1;
    if ((whence & AVSEEK_SIZE) != 0) {
        struct stat facts {};
        place = ::fstat(writer.descriptor_, &facts) == 0 ? facts.st_size : -1;
    } else {
        place = ::lseek(writer.descriptor_, offset, whence & ~AVSEEK_FORCE);
    }
    if (place < 0) { // the formats' library would go on without it, and leave out the index
        writer.diskError_ = writer.diskError_ != 0 ? writer.diskError_ : errno;
        return AVERROR(writer.diskError_);
    }
    return place;
}

int MovieWriter::addStream(const AVCodecParameters& parameters, AVRational base)
{
    AVStream* const stream = avformat_new_stream(context_, nullptr);
    if (stream == nullptr || avcodec_parameters_copy(stream->codecpar, &parameters) < 0) {
        throw std::bad_alloc();
    }
    stream->time_base = base;
    return stream->index;
}

bool MovieWriter::open(MovieFormat format, const std::string& path, const MovieStreams& streams)
{
    format_ = format;
    path_ = path;
    if (avformat_alloc_output_context2(&context_, nullptr, format == MovieFormat::kAvi ? "avi" : "asf", nullptr) < 0) {
        return fail(AVERROR_MUXER_NOT_FOUND);
    }
    describe(streams);
    if (openFile() && writeHeader()) {
        return true;
    }
    removeMade();
    return false;
}

/// Nobody is left with an empty file that they never had.
void MovieWriter::removeMade() const
{
    if (isMade_ && writesTo(path_)) {
        ::unlink(path_.c_str());
    }
}

void MovieWriter::discard()
{
    close();
    removeMade();
}

void MovieWriter::describe(const MovieStreams& streams)
{
    // The same project gives the same bytes: no dates, no versions.
    context_->flags |= AVFMT_FLAG_BITEXACT;
    context_->flush_packets = 0; // who has to be sure of what is there asks for it
    context_->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
    if (streams.picture != nullptr) {
        pictureBase_ = av_inv_q(streams.fps);
        pictureStream_ = addStream(*streams.picture, pictureBase_);
        context_->streams[pictureStream_]->avg_frame_rate = streams.fps;
        context_->streams[pictureStream_]->sample_aspect_ratio = {1, 1};
    }
    if (streams.sound != nullptr) {
        soundBase_ = {1, streams.sound->sample_rate};
        soundStream_ = addStream(*streams.sound, soundBase_);
    }
}

bool MovieWriter::openFile()
{
    constexpr mode_t kUsualMode = 0666;
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kUsualMode);
    isMade_ = descriptor_ >= 0;
    if (!isMade_ && errno == EEXIST) {
        descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, kUsualMode);
    }
    if (descriptor_ < 0) {
        diskError_ = errno;
        return fail(0);
    }
    struct stat facts {};
    if (::fstat(descriptor_, &facts) != 0) {
        diskError_ = errno;
        return fail(0);
    }
    device_ = facts.st_dev;
    inode_ = facts.st_ino;
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(kBufferBytes));
    bytes_ = buffer == nullptr ? nullptr
                               : avio_alloc_context(buffer, kBufferBytes, 1, this, nullptr, &MovieWriter::writeBytes,
                                                    &MovieWriter::seekBytes);
    if (bytes_ == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    context_->pb = bytes_;
    return true;
}

bool MovieWriter::writesTo(const std::string& path) const
{
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && facts.st_dev == device_ && facts.st_ino == inode_;
}

bool MovieWriter::writeHeader()
{
    AVDictionary* options = nullptr;
    if (format_ == MovieFormat::kAvi) {
        context_->metadata_header_padding = kFieldRoomBytes;
        av_dict_set_int(&options, "flipped_raw_rgb", 1, 0);
    } else {
        std::int64_t rate = 0;
        for (unsigned i = 0; i < context_->nb_streams; ++i) {
            rate += context_->streams[i]->codecpar->bit_rate;
        }
        // Large packets waste little behind large blocks of sound; small ones suit slow lines.
        av_dict_set_int(&options, "packet_size", rate > 150000 ? 8000 : 3200, 0);
        av_dict_set(&context_->metadata, "Room", std::string(kFieldRoomBytes / 2, ' ').c_str(), 0);
    }
    const int result = avformat_write_header(context_, &options);
    av_dict_free(&options);
    avio_flush(bytes_);
    if (result < 0 || diskError_ != 0) {
        return fail(result);
    }
    headerWritten_ = true;
    return reserveRoom();
}

/// The format's library knows no empty room: it is asked to write a long text, and that becomes the room.
bool MovieWriter::reserveRoom()
{
    if (format_ == MovieFormat::kWindowsMedia && !emptyExtendedFields(descriptor_)) {
        diskError_ = diskError_ != 0 ? diskError_ : EIO;
        return fail(0);
    }
    return true;
}

bool MovieWriter::write(const AVPacket& packet, int stream, AVRational base)
{
    PacketPtr copy(av_packet_clone(&packet));
    if (!copy) {
        throw std::bad_alloc();
    }
    copy->stream_index = stream;
    av_packet_rescale_ts(copy.get(), base, context_->streams[stream]->time_base);
    if (format_ == MovieFormat::kWindowsMedia && copy->dts < lastStamp_) {
        return fail(AVERROR(EINVAL)); // one order of time for all streams
    }
    lastStamp_ = copy->dts;
    const int result = av_write_frame(context_, copy.get());
    if (result < 0 || diskError_ != 0) {
        return fail(result);
    }
    ++(stream == pictureStream_ ? picturePackets_ : soundPackets_);
    return true;
}

bool MovieWriter::flush()
{
    avio_flush(bytes_);
    return diskError_ == 0 || fail(0);
}

bool MovieWriter::close()
{
    bool good = error_.code == 0;
    if (headerWritten_) {
        headerWritten_ = false;
        const int result = av_write_trailer(context_);
        avio_flush(bytes_);
        if (result < 0 || diskError_ != 0) {
            good = fail(result);
        }
        good = reserveRoom() && good; // the header has been written again
    }
    if (descriptor_ >= 0) {
        if (::close(descriptor_) != 0 && good) {
            diskError_ = errno;
            good = fail(0);
        }
        descriptor_ = -1;
    }
    release();
    return good;
}

void MovieWriter::release()
{
    avformat_free_context(context_);
    context_ = nullptr;
    if (bytes_ != nullptr) {
        av_freep(&bytes_->buffer);
        avio_context_free(&bytes_);
    }
}

} // namespace twcore
