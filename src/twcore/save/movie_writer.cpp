#include "twcore/save/movie_writer.h"

#include "engine/status.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace twcore {

namespace {

constexpr int kBufferBytes = 1 << 20;

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

MovieWriter::~MovieWriter() { close(); }

bool MovieWriter::fail(int ffError)
{
    if (error_.code == 0) {
        const std::string cause = diskError_ != 0 ? std::generic_category().message(diskError_) : ffText(ffError);
        error_.code = diskError_ != 0 ? statusOf(diskError_) : engine::kFailed.code();
        error_.text = "Cannot write \"" + path_ + "\": " + cause + ". " + adviceOn(diskError_);
    }
    return false;
}

int MovieWriter::writeBytes(void* self, std::uint8_t* data, int size) noexcept
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
    const auto& writer = *static_cast<const MovieWriter*>(self);
    if ((whence & AVSEEK_SIZE) != 0) {
        struct stat facts {};
        return ::fstat(writer.descriptor_, &facts) == 0 ? facts.st_size : AVERROR(errno);
    }
    const auto place = ::lseek(writer.descriptor_, offset, whence & ~AVSEEK_FORCE);
    return place < 0 ? AVERROR(errno) : place;
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

bool MovieWriter::openAvi(const std::string& path, const AVCodecParameters* picture, AVRational fps,
                          const AVCodecParameters* sound)
{
    path_ = path;
    if (avformat_alloc_output_context2(&context_, nullptr, "avi", nullptr) < 0) {
        return fail(AVERROR_MUXER_NOT_FOUND);
    }
    // The same project gives the same bytes: no dates, no versions.
    context_->flags |= AVFMT_FLAG_BITEXACT;
    context_->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
    if (picture != nullptr) {
        pictureBase_ = av_inv_q(fps);
        pictureStream_ = addStream(*picture, pictureBase_);
        context_->streams[pictureStream_]->avg_frame_rate = fps;
        context_->streams[pictureStream_]->sample_aspect_ratio = {1, 1};
    }
    if (sound != nullptr) {
        soundBase_ = {1, sound->sample_rate};
        soundStream_ = addStream(*sound, soundBase_);
    }
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor_ < 0) {
        diskError_ = errno;
        return fail(0);
    }
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(kBufferBytes));
    bytes_ = buffer == nullptr ? nullptr
                               : avio_alloc_context(buffer, kBufferBytes, 1, this, nullptr, &MovieWriter::writeBytes,
                                                    &MovieWriter::seekBytes);
    if (bytes_ == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    context_->pb = bytes_;
    AVDictionary* options = nullptr;
    av_dict_set_int(&options, "flipped_raw_rgb", 1, 0);
    const int result = avformat_write_header(context_, &options);
    av_dict_free(&options);
    if (result < 0 || diskError_ != 0) {
        return fail(result);
    }
    headerWritten_ = true;
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
    const int result = av_write_frame(context_, copy.get());
    if (result < 0 || diskError_ != 0) {
        return fail(result);
    }
    ++(stream == pictureStream_ ? picturePackets_ : soundPackets_);
    return true;
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
