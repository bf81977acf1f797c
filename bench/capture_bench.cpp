// What a capture costs: from the devices named, or the test devices, to a file for so many seconds, with the live
// picture on a surface beside it. Prints pictures captured and dropped, processor time, and how old the live picture
// is.
//
//     quillmont-capture-bench FOLDER [SECONDS [CAMERA [MICROPHONE [COMPRESSOR]]]]

#include "engine/ITWCapture.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "engine/surfaces.h"
#include "measures.h"
#include "support/patterns.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWCapture;
using Clock = std::chrono::steady_clock;

/// Counts pictures, and while it is told to, reads how old each is by its number.
class Screen final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture& picture) noexcept override
    {
        ++shown;
        if (!isReading) {
            return;
        }
        const double now = std::chrono::duration<double>(Clock::now() - opened).count();
        std::vector<std::uint8_t> gray;
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                gray.push_back(picture.pixels.get()[y * picture.strideBytes + x * 4 + 1]);
            }
        }
        const auto number = testmedia::readBarcode(
            {gray.data(), static_cast<std::size_t>(picture.width), picture.width, picture.height});
        if (number) {
            ages.push_back(now * 30 - *number);
        }
    }
    void say(engine::Text) noexcept override {}

    std::atomic<int> shown = 0;
    std::atomic<bool> isReading = false;
    Clock::time_point opened; // ahead of the opening of the camera: ages are a little too high
    std::vector<double> ages; // pictures
};

bool answer(engine::Status (ITWCapture::*operation)(Bool16&))
{
    Bool16 ok = 0;
    check((EngineAs<ITWCapture>().get()->*operation)(ok));
    return ok != 0;
}

int countOf(engine::Status (ITWCapture::*operation)(std::int32_t&))
{
    std::int32_t count = 0;
    check((EngineAs<ITWCapture>().get()->*operation)(count));
    return count;
}

int measure(const std::vector<std::string>& words)
{
    const int seconds = words.size() > 1 ? std::stoi(words[1]) : 60;
    const std::string compressor = words.size() > 4 ? words[4] : "Motion JPEG";
    if (words.size() < 3) {
        ::setenv("QUILLMONT_TEST_DEVICES", "camera,microphone", 0);
    }
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    const auto capture = EngineAs<ITWCapture>();
    Screen screen;
    const auto surface = engine::surfaces().add(screen, {640, 480, 1});
    answer(&ITWCapture::InitCapture);
    if (words.size() > 2) {
        check(capture->SetVideoDevice(words[2]));
        check(capture->SetAudioDevice(words.size() > 3 ? words[3] : ""));
    }
    screen.opened = Clock::now();
    Bool16 ok = 0;
    if (!answer(&ITWCapture::BuildGraph) || capture->SetVideoWindow(surface, ok).failed() || ok == 0) {
        std::fprintf(stderr, "No such devices. There are:\n");
        for (const auto operation : {&ITWCapture::GetVideoDeviceName, &ITWCapture::GetAudioDeviceName}) {
            std::string name;
            for (std::int16_t i = 0;
                 check((capture.get()->*operation)(i, (name.assign(128, ' '), name))), name[0] != ' '; ++i) {
                std::fprintf(stderr, "  %s\n", name.c_str());
            }
        }
        return 1;
    }
    answer(&ITWCapture::RunGraph);
    check(capture->SetCaptureVideoCompressor(compressor));
    std::this_thread::sleep_for(std::chrono::seconds(1));

    const std::string path = words[0] + "/capture-bench.avi";
    const engine::Status status = capture->StartCaptureToFile(path, 0, 1, ok);
    if (status.failed() || ok == 0) {
        std::fprintf(stderr, "%s\n", status.text().c_str());
        return 1;
    }
    const double before = bench::processorSeconds();
    const int shown = screen.shown;
    answer(&ITWCapture::RunGraph);
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    const auto stopping = Clock::now();
    check(capture->StopCapture());
    const double stopMs = std::chrono::duration<double, std::milli>(Clock::now() - stopping).count();
    std::int32_t width = 0, height = 0;
    check(capture->GetCaptureSize(width, height));
    std::printf("%d x %d, %s, %d s: %d captured, %d dropped, %d live, %.1f %% of a core, stopped in %.0f ms\n", width,
                height, compressor.c_str(), seconds, countOf(&ITWCapture::GetFramesCaptured),
                countOf(&ITWCapture::GetFramesDropped), screen.shown - shown,
                100 * (bench::processorSeconds() - before) / seconds, stopMs);
    if (words.size() < 3) { // only the test camera numbers its pictures
        check(capture->StartCaptureToFile(path, 0, 1, ok));
        answer(&ITWCapture::RunGraph);
        screen.isReading = true;
        std::this_thread::sleep_for(std::chrono::seconds(5));
        screen.isReading = false;
        check(capture->StopCapture());
        std::ranges::sort(screen.ages);
        std::printf("live picture behind the camera, in pictures: median %.2f, worst of %zu %.2f\n",
                    screen.ages[screen.ages.size() / 2], screen.ages.size(), screen.ages.back());
    }
    check(capture->ReleaseCapture());
    engine::surfaces().remove(surface);
    return 0;
}

} // namespace

int main(int count, char** words)
{
    if (count < 2) {
        std::fprintf(stderr, "usage: quillmont-capture-bench FOLDER [SECONDS [CAMERA [MICROPHONE [COMPRESSOR]]]]\n");
        return 2;
    }
    return measure({words + 1, words + count});
}
