// quillmont-measure: how long single things of the engine take, for comparison with other programs.
//
//   quillmont-measure seek FILE [--dump FOLDER]
//
// reads times in ms from standard input, one a line, and writes "asked_ms frame_ms latency_ms" for each once the exact
// frame lies decoded as BGRA: the time that was asked for, the time at which that frame begins, and how long it took.
// With
// --dump each frame is also written as a bitmap.

#include "engine/status.h"
#include "twcore/media/picture_reader.h"
#include "twcore/render/picture_fitter.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

using namespace twcore;

namespace {

/// A picture converted to BGRA, at its own size.
class BgraPicture {
public:
    ~BgraPicture() { sws_freeContext(scaler_); }

    bool take(const AVFrame& frame)
    {
        scaler_ = sws_getCachedContext(scaler_, frame.width, frame.height, static_cast<AVPixelFormat>(frame.format),
                                       frame.width, frame.height, AV_PIX_FMT_BGRA, SWS_FAST_BILINEAR, nullptr, nullptr,
                                       nullptr);
        width_ = frame.width;
        height_ = frame.height;
        bytes_.resize(std::size_t(width_) * std::size_t(height_) * 4);
        std::uint8_t* planes[4] = {bytes_.data()};
        const int strides[4] = {width_ * 4};
        return scaler_ != nullptr && sws_scale(scaler_, frame.data, frame.linesize, 0, height_, planes, strides) > 0;
    }

    bool write(const std::string& path) const
    {
        std::ofstream file(path, std::ios::binary);
        const auto number = [&](std::uint32_t value, int count) {
            for (int i = 0; i < count; ++i) {
                file.put(static_cast<char>(value >> (8 * i)));
            }
        };
        file << "BM";
        number(static_cast<std::uint32_t>(54 + bytes_.size()), 4);
        number(0, 4);
        number(54, 4);
        number(40, 4);
        number(static_cast<std::uint32_t>(width_), 4);
        number(static_cast<std::uint32_t>(-height_), 4); // from the top line on
        number(1, 2);
        number(32, 2);
        number(0, 24);
        file.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
        return static_cast<bool>(file);
    }

private:
    SwsContext* scaler_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> bytes_;
};

int seek(const std::string& path, const std::string& folder)
{
    const Trial trial = tryMediaFile(path, {});
    if (!trial.file || !trial.file->picture) {
        std::cerr << "quillmont-measure: \"" << path << "\" has no picture that can be decoded.\n";
        return 1;
    }
    PictureReader reader(trial.file, static_cast<int>(std::thread::hardware_concurrency()));
    BgraPicture picture;
    for (double askedMs = 0; std::cin >> askedMs;) {
        const auto begin = std::chrono::steady_clock::now();
        const SharedFrame frame = reader.at(askedMs / 1000);
        const bool isThere = frame && picture.take(*frame);
        const std::chrono::duration<double, std::milli> latency = std::chrono::steady_clock::now() - begin;
        std::printf("%.3f %.3f %.3f\n", askedMs, isThere ? reader.frameStart() * 1000 : -1.0, latency.count());
        if (isThere && !folder.empty()
            && !picture.write(folder + "/" + std::to_string(static_cast<long long>(askedMs)) + ".bmp")) {
            std::cerr << "quillmont-measure: cannot write to \"" << folder << "\".\n";
            return 1;
        }
    }
    return 0;
}

} // namespace

int main(int count, char** words)
{
    av_log_set_level(AV_LOG_QUIET);
    const bool dumps = count == 5 && std::strcmp(words[3], "--dump") == 0;
    if ((count != 3 && !dumps) || std::strcmp(words[1], "seek") != 0) {
        std::cerr << "usage: quillmont-measure seek FILE [--dump FOLDER] < TIMES\n";
        return 2;
    }
    return seek(words[2], dumps ? words[4] : "");
}
