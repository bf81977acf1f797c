#include "twcore/play/canvas_frames.h"

#include "twcore/media/picture_reader.h"
#include "twcore/render/picture_fitter.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace twcore {

namespace {

constexpr std::chrono::seconds kMostWait{2};
constexpr int kMostLinks = 40;

using Pixels = std::vector<std::uint32_t>;

bool isDrawable(PictureSize size)
{
    return size.width > 0 && size.height > 0 && std::int64_t{size.width} * size.height <= kMaxPixels;
}

/// Green, blue and red planes as pixels.
Pixels packed(const AVFrame& frame)
{
    Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* lines[3] = {};
        for (int i = 0; i < 3; ++i) {
            lines[i] = frame.data[i] + std::ptrdiff_t{y} * frame.linesize[i];
        }
        for (int x = 0; x < frame.width; ++x) {
            pixels.push_back(engine::PixelCanvas::kBlack | std::uint32_t{lines[2][x]} << 16
                             | std::uint32_t{lines[0][x]} << 8 | lines[1][x]);
        }
    }
    return pixels;
}

/// Empty when there is no such frame. A file that holds no picture at all gives a black one.
Pixels frameOf(const MediaFilePtr& media, double seconds, PictureSize size, const Patience& patience)
{
    if (!media || !media->picture) {
        const auto count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
        return patience.over() ? Pixels{} : Pixels(count, engine::PixelCanvas::kBlack);
    }
    PictureReader reader(media, std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 4), patience);
    const SharedFrame frame = reader.at(seconds);
    if (!frame) {
        return {};
    }
    return pixelsOf(frame, *media->picture, size);
}

void put(std::string& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(value >> (8 * i)));
    }
}

std::string bitmapOf(const engine::PixelCanvas& canvas, PictureSize size)
{
    constexpr std::uint32_t kHeadBytes = 54;
    const std::size_t lineBytes = (static_cast<std::size_t>(size.width) * 3 + 3) / 4 * 4;
    const std::size_t pictureBytes = lineBytes * static_cast<std::size_t>(size.height);
    std::string bytes = "BM";
    bytes.reserve(kHeadBytes + pictureBytes);
    put(bytes, kHeadBytes + static_cast<std::uint32_t>(pictureBytes), 4);
    put(bytes, 0, 4);
    put(bytes, kHeadBytes, 4);
    put(bytes, 40, 4); // bytes of what follows, up to the pixels
    put(bytes, static_cast<std::uint32_t>(size.width), 4);
    put(bytes, static_cast<std::uint32_t>(size.height), 4); // from the bottom line up
    put(bytes, 1, 2);
    put(bytes, 24, 2);
    put(bytes, 0, 4); // not compressed
    put(bytes, static_cast<std::uint32_t>(pictureBytes), 4);
    put(bytes, 0, 4); // no size on paper, no palette
    put(bytes, 0, 4);
    put(bytes, 0, 4);
    put(bytes, 0, 4);
    for (int y = size.height - 1; y >= 0; --y) {
        for (int x = 0; x < size.width; ++x) {
            put(bytes, canvas.at(x, y), 3);
        }
        bytes.append(lineBytes - static_cast<std::size_t>(size.width) * 3, '\0');
    }
    return bytes;
}

bool writeAll(int descriptor, const std::string& bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const auto count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

/// A new file beside the target, so that both are on one disk.
int openBeside(const std::filesystem::path& target, std::filesystem::path& made)
{
    for (int number = 0; number < 100; ++number) {
        made =
            target.parent_path() / (".quillmont-" + std::to_string(::getpid()) + "-" + std::to_string(number) + ".tmp");
        const int descriptor = ::open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

} // namespace

bool drawFrame(std::function<MediaFilePtr(const Patience&)> find, double seconds, PictureSize size,
               engine::PixelCanvas& canvas)
{
    // The thread may be stuck in the kernel for longer than we wait: it owns what it works on.
    struct Work {
        std::mutex mutex;
        std::condition_variable finished;
        bool isDone = false;
        Pixels pixels;
    };
    if (!isDrawable(size)) {
        return false;
    }
    const auto work = std::make_shared<Work>();
    const auto deadline = std::chrono::steady_clock::now() + kMostWait;
    std::thread([work, find = std::move(find), seconds, size, deadline] {
        Pixels pixels;
        try {
            const Patience patience{.deadline = deadline};
            pixels = frameOf(find(patience), seconds, size, patience);
        } catch (const std::exception&) {
            pixels.clear();
        }
        const std::lock_guard lock(work->mutex);
        work->pixels = std::move(pixels);
        work->isDone = true;
        work->finished.notify_one();
    }).detach();
    std::unique_lock lock(work->mutex);
    work->finished.wait_until(lock, deadline, [&] { return work->isDone; });
    if (work->pixels.empty()) {
        return false;
    }
    canvas.take(size.width, size.height, std::move(work->pixels));
    return true;
}

Pixels pixelsOf(const SharedFrame& frame, const PictureFacts& facts, PictureSize size)
{
    if (!isDrawable(size)) {
        return {};
    }
    PictureFitter fitter({size, AV_PIX_FMT_GBRP, {Matrix::kRgb, true}});
    return packed(*fitter.fit(frame, facts, {{0, 0, size.width, size.height}}));
}

bool saveBitmap(const engine::PixelCanvas& canvas, PictureSize size, const std::string& path)
{
    if (!isDrawable(size) || path.empty() || path.find('\0') != std::string::npos) {
        return false;
    }
    std::error_code error;
    std::filesystem::path target(path);
    for (int links = 0; std::filesystem::is_symlink(target, error); ++links) { // a link stays one
        if (links == kMostLinks) {
            return false;
        }
        target = target.parent_path() / std::filesystem::read_symlink(target, error);
    }
    struct stat old {};
    const bool isThere = ::stat(target.c_str(), &old) == 0;
    if (isThere ? !S_ISREG(old.st_mode) || (old.st_mode & S_IWUSR) == 0 || ::access(target.c_str(), W_OK) != 0
                : errno != ENOENT) {
        errno = isThere ? EACCES : errno;
        return false; // a folder, a device that must not be replaced, or what somebody wants to keep
    }
    const std::string bytes = bitmapOf(canvas, size);
    std::filesystem::path made;
    const int descriptor = openBeside(target, made);
    if (descriptor < 0) {
        return false;
    }
    if (isThere) {
        (void)!::fchmod(descriptor, old.st_mode & 07777); // some disks know no rights
    }
    const bool isWritten = writeAll(descriptor, bytes);
    const bool isClosed = ::close(descriptor) == 0;
    if (isWritten && isClosed && ::rename(made.c_str(), target.c_str()) == 0) {
        return true;
    }
    const int cause = errno;
    ::unlink(made.c_str());
    errno = cause;
    return false;
}

} // namespace twcore
