#include "twcore/media/input_file.h"

#include "engine/file_presence.h"
#include "engine/status.h"
#include "twcore/media/mov_claims.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace twcore {

namespace {

namespace media_error = engine::media_error;

constexpr int kBufferBytes = 128 * 1024;
constexpr unsigned kProbeBytes = 1u << 20;

// Formats that name other places to read from, describe something else than media, or say nothing by themselves.
constexpr std::array<std::string_view, 17> kRefusedFormats{
    "hls", "dash",   "webm_dash_manifest", "concat", "sdp", "rtp", "rtsp", "sap", "imf", "ffmetadata",
    "tty", "image2", "image2pipe",         "data",   "bin", "adf", "idf"};

bool isRefused(const AVInputFormat& format)
{
    if ((format.flags & AVFMT_NOFILE) != 0) {
        return true;
    }
    std::string_view names = format.name;
    while (!names.empty()) {
        const auto comma = std::min(names.find(','), names.size());
        if (std::ranges::find(kRefusedFormats, names.substr(0, comma)) != kRefusedFormats.end()) {
            return true;
        }
        names.remove_prefix(std::min(comma + 1, names.size()));
    }
    return false;
}

bool endsWith(const std::string& path, std::string_view extension)
{
    return path.size() > extension.size()
           && std::equal(extension.rbegin(), extension.rend(), path.rbegin(),
                         [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

/// Refuses every further file that a format asks for.
int refuseOpening(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) { return AVERROR(EACCES); }

int isOver(void* patience) { return static_cast<const Patience*>(patience)->over() ? 1 : 0; }

// TGA has no signature, so that it goes by its name, if its header makes sense.
bool looksLikeTga(const std::uint8_t* head, int size)
{
    constexpr int kHeaderBytes = 18;
    if (size < kHeaderBytes) {
        return false;
    }
    const int type = head[2];
    const int bits = head[16];
    const int width = head[12] | head[13] << 8;
    const int height = head[14] | head[15] << 8;
    return head[1] <= 1 && (type == 1 || type == 2 || type == 3 || type == 9 || type == 10 || type == 11)
           && (bits == 8 || bits == 15 || bits == 16 || bits == 24 || bits == 32) && width > 0 && height > 0;
}

} // namespace

/// Keeps the cause, and answers it as the media libraries take it.
int InputFile::fail(int cause) noexcept
{
    failed_ = true;
    if (patience_.faults != nullptr) {
        patience_.faults->note(path_, cause);
    }
    return AVERROR(cause);
}

bool InputFile::openBytes(std::uint32_t& error)
{
    if (path_.empty() || path_.find('\0') != std::string::npos) {
        error = media_error::kInvalidArgument;
        return false;
    }
    // O_NONBLOCK: a pipe must not hold us before we can see that it is one.
    descriptor_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor_ < 0) {
        const int cause = errno;
        error = cause == ENOENT || cause == ENOTDIR ? media_error::kNotFound : media_error::kCannotLoad;
        if (error == media_error::kNotFound) {
            engine::filePresence().tell(path_, false);
        }
        fail(cause);
        return false;
    }
    struct stat facts {};
    const int cause = ::fstat(descriptor_, &facts) != 0 ? errno
                      : S_ISREG(facts.st_mode)          ? 0
                      : S_ISDIR(facts.st_mode)          ? EISDIR
                                                        : ENOTSUP;
    if (cause != 0) {
        error = cause == EISDIR ? media_error::kIsFolder : media_error::kCannotLoad;
        fail(cause);
        return false;
    }
    byteCount_ = facts.st_size;
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(kBufferBytes));
    bytes_ = buffer == nullptr ? nullptr
                               : avio_alloc_context(buffer, kBufferBytes, 0, this, &InputFile::readBytes, nullptr,
                                                    &InputFile::seekBytes);
    if (bytes_ == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    return true;
}

int InputFile::readBytes(void* self, std::uint8_t* target, int size) noexcept
{
    auto& file = *static_cast<InputFile*>(self);
    for (;;) {
        if (file.patience_.over()) {
            return AVERROR_EXIT;
        }
        const auto count = ::read(file.descriptor_, target, static_cast<std::size_t>(size));
        if (count > 0) {
            return static_cast<int>(count);
        }
        if (count == 0) {
            return AVERROR_EOF;
        }
        if (errno != EINTR) {
            return file.fail(errno);
        }
    }
}

std::int64_t InputFile::seekBytes(void* self, std::int64_t offset, int whence) noexcept
{
    auto& file = *static_cast<InputFile*>(self);
    if ((whence & AVSEEK_SIZE) != 0) {
        return file.byteCount_;
    }
    const auto place = ::lseek(file.descriptor_, offset, whence & ~AVSEEK_FORCE);
    if (place >= 0) {
        return place;
    }
    // A damaged header may send us to places that no file has; a place inside of this one is the disk's fault.
    const bool isInside = offset >= 0 && offset <= file.byteCount_;
    return isInside || errno != EINVAL ? file.fail(errno) : AVERROR(errno);
}

const AVInputFormat* InputFile::findFormat() const
{
    // The name is withheld: what a file is called must not decide what reads it.
    const AVInputFormat* format = nullptr;
    const int score = av_probe_input_buffer2(bytes_, &format, "", nullptr, 0, kProbeBytes);
    // Flat pictures look like sound to formats that guess.
    if (score < AVPROBE_SCORE_EXTENSION && endsWith(path_, ".tga")) {
        std::array<std::uint8_t, 18> head{};
        avio_seek(bytes_, 0, SEEK_SET);
        const int size = avio_read(bytes_, head.data(), static_cast<int>(head.size()));
        avio_seek(bytes_, 0, SEEK_SET);
        if (looksLikeTga(head.data(), size)) {
            return av_find_input_format("image2pipe");
        }
    }
    return score > 0 ? format : nullptr;
}

std::unique_ptr<InputFile> InputFile::open(const std::string& path, const Patience& patience, std::uint32_t& error)
{
    std::unique_ptr<InputFile> file(new InputFile(path, patience));
    error = media_error::kNone;
    if (!file->openBytes(error)) {
        return nullptr;
    }
    const AVInputFormat* const format = file->findFormat();
    const bool isTga = format != nullptr && std::string_view(format->name) == "image2pipe";
    if (format == nullptr || (isRefused(*format) && !isTga)) {
        error = file->gaveUp() ? media_error::kCannotLoad : media_error::kUnknownFormat;
        return nullptr;
    }
    if (std::string_view(format->name).starts_with("mov,")
        && claimsTooMuch(file->descriptor_, file->byteCount_, file->patience_)) {
        error = file->gaveUp() ? media_error::kCannotLoad : media_error::kInvalidFormat;
        return nullptr;
    }
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    context->pb = file->bytes_;
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
    context->io_open = refuseOpening;
    context->interrupt_callback = {isOver, &file->patience_};
    context->max_analyze_duration = 5 * AV_TIME_BASE;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    if (isTga) {
        context->video_codec_id = AV_CODEC_ID_TARGA;
        av_dict_set(&options, "frame_size", std::to_string(std::max<std::int64_t>(1, file->byteCount_)).c_str(), 0);
    }
    const int opened = avformat_open_input(&context, "", format, &options);
    av_dict_free(&options);
    if (opened < 0) {
        error = file->gaveUp() ? media_error::kCannotLoad : media_error::kInvalidFormat;
        return nullptr;
    }
    file->context_ = context;
    return file;
}

InputFile::~InputFile()
{
    avformat_close_input(&context_);
    if (bytes_ != nullptr) {
        av_freep(&bytes_->buffer);
        avio_context_free(&bytes_);
    }
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

bool InputFile::readStreamInfo()
{
    const unsigned count = context_->nb_streams;
    std::vector<AVDictionary*> options(count, nullptr);
    for (auto*& option : options) {
        av_dict_set_int(&option, "max_pixels", kMaxPixels, 0);
        av_dict_set(&option, "threads", "1", 0);
    }
    const int result = avformat_find_stream_info(context_, options.data());
    for (auto*& option : options) {
        av_dict_free(&option);
    }
    return result >= 0;
}

void InputFile::keepOnly(int streamIndex) noexcept
{
    for (unsigned i = 0; i < context_->nb_streams; ++i) {
        context_->streams[i]->discard = static_cast<int>(i) == streamIndex ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

std::size_t InputFile::readAt(std::int64_t position, std::span<std::uint8_t> target) const noexcept
{
    std::size_t done = 0;
    while (done < target.size()) {
        const auto count = ::pread(descriptor_, target.data() + done, target.size() - done,
                                   position + static_cast<std::int64_t>(done));
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return done;
}

bool InputFile::read(AVPacket& packet) noexcept
{
    av_packet_unref(&packet);
    // A damaged file may answer errors for ever without moving: a few are passed over, not more.
    for (int errors = 0; errors < 16; ++errors) {
        const int result = av_read_frame(context_, &packet);
        if (result >= 0) {
            return true;
        }
        if (result == AVERROR_EOF || result == AVERROR_EXIT || avio_feof(context_->pb) != 0) {
            return false;
        }
    }
    return false;
}

} // namespace twcore
