// quillmont-timeline-bench: how long the timeline's form takes over 2,000 items, in ms a call, without a screen.
//
//   quillmont-timeline-bench [FOLDER]     where its few small media are written; the temporary folder by default
//
// Drawing goes into the draw lists, with a font that has no cost. Each line is the best and the median of 50 calls
// behind a first one, which fills the memory of widths.

#include "core/forms/frmTimeline.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "hand/frmTimeline_events.h"
#include "hand/slider_drag.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

using engine::check;
using engine::Handle;

/// Ports that have nothing behind them.
class NoPlatform final : public MessageBoxes, public Events, public Fonts, public SettingsStore, public Shell {
public:
    explicit NoPlatform(std::string folder) : folder_(std::move(folder))
    {
        ports = {this, nullptr, this, this, this, this};
    }

    MessageAnswer show(std::string_view text, MessageIcon, MessageButtons, std::string_view) override
    {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return MessageAnswer::kOk;
    }
    void letRun() override {}
    std::uint32_t ticks() override { return 0; }
    double textWidth(std::string_view text) override { return 7.0 * static_cast<double>(text.size()); }
    double textHeight() override { return 13; }
    int generation() override { return 0; }
    std::optional<std::string> get(std::string_view, std::string_view, std::string_view) override { return {}; }
    void save(std::string_view, std::string_view, std::string_view, std::string_view) override {}
    void deleteSection(std::string_view, std::string_view) override {}
    bool openWithDesktop(std::string_view) override { return false; }
    std::string temporaryFolder() override { return folder_ + "/"; }
    std::string programFolder() override { return folder_; }
    std::string runtimeFolder() override { return folder_; }
    std::string stateFolder() override { return folder_; }
    std::int64_t fileLength(std::string_view) override { return 0; }
    DateTime fileTime(std::string_view) override { return {}; }
    DateTime now() override { return {}; }
    std::string asText(const DateTime&) override { return {}; }
    std::string systemText() override { return {}; }
    int colourDepth() override { return 24; }
    void copyWithRename(std::string_view, std::string_view) override {}

private:
    std::string folder_;
};

/// One second of silence: 8 bits, 8,000 Hz, one channel.
void writeSound(const std::filesystem::path& path)
{
    static constexpr unsigned char kHead[] = {
        'R', 'I',  'F',  'F', 0x64, 0x1F, 0,    0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16,  0,    0,    0, 1, 0, 1,
        0,   0x40, 0x1F, 0,   0,    0x40, 0x1F, 0, 0,   1,   0,   8,   0,   'd', 'a', 't', 'a', 0x40, 0x1F, 0, 0};
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(kHead), sizeof kHead);
    file << std::string(8000, '\x80');
}

/// A still of 2 x 2 pixels with 24 bits.
void writeStill(const std::filesystem::path& path)
{
    static constexpr unsigned char kHead[] = {'B', 'M', 70, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0,
                                              2,   0,   0,  0, 2, 0, 0, 0, 1, 0, 24, 0, 0, 0, 0,  0, 16};
    std::string bytes(70, '\0');
    std::copy(std::begin(kHead), std::end(kHead), bytes.begin());
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Streams of 20 files with names of their own.
std::vector<Handle> openStreams(const std::filesystem::path& folder, bool isPicture)
{
    std::vector<Handle> streams;
    for (int i = 0; i < 20; ++i) {
        const std::string name = (isPicture ? "holiday picture " : "background sound ") + std::to_string(i);
        const std::filesystem::path path = folder / (name + (isPicture ? ".bmp" : ".wav"));
        (isPicture ? writeStill : writeSound)(path);
        Handle file = 0;
        Handle stream = 0;
        check(engine::Engine->OpenFile(path.string(), file));
        check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, 0, stream));
        if (stream == 0) {
            std::fprintf(stderr, "cannot open %s\n", path.c_str());
            std::exit(1);
        }
        streams.push_back(stream);
    }
    return streams;
}

/// 400 items on each of the five rows, a second apiece.
void fillTracks(const std::filesystem::path& folder)
{
    const auto pictures = openStreams(folder, true);
    const auto sounds = openStreams(folder, false);
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    engine::Bool16 ok = engine::kFalse;
    const auto put = [&](Handle track, const std::vector<Handle>& streams, std::int16_t seq) {
        const auto stream = streams[static_cast<std::size_t>(seq) % streams.size()];
        check(timeline->InsertSource(track, stream, seq, seq * 1000, seq * 1000 + 1000, ok));
    };
    for (std::int16_t seq = 0; seq < 400; ++seq) {
        put(state::TrackCollection.Item(1), pictures, seq);
        put(state::OverlayTrack, pictures, seq);
        put(state::TrackCollection.Item(2), sounds, seq);
        put(state::TrackCollection.Item(3), sounds, seq);
    }
    for (std::int16_t seq = 0; seq < 400; ++seq) {
        check(timeline->AddEffectAt(state::TrackCollection.Item(1), "Emboss", seq * 1000, seq * 1000 + 1000, ok));
    }
}

void measure(const char* what, const std::function<void()>& call)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    call();
    for (int i = 0; i < 50; ++i) {
        const auto before = Clock::now();
        call();
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - before).count());
    }
    std::ranges::sort(times);
    std::size_t strokes = 0;
    const auto& form = forms::frmTimeline;
    for (const PictureBox* const picture :
         {&form.picVideo[0], &form.picEffect[0], &form.picOverlay[0], &form.picAudio[0], &form.picAudio[1]}) {
        strokes += picture->drawing.strokes().size();
    }
    std::printf("%-34s best %8.4f ms   median %8.4f ms   (%zu strokes in the rows)\n", what, times.front(),
                times[times.size() / 2], strokes);
}

void setView(std::int16_t msPerPixel, std::int32_t widthPx, std::int32_t tick)
{
    auto& form = forms::frmTimeline;
    moduleScaleRenderer::SetZoomFactor(msPerPixel);
    form.picScale.ScaleWidth = widthPx;
    frmTimeline::Form_Resize();
    form.hsb.SetValue(tick);
}

} // namespace

int main(int argc, char** argv)
{
    namespace fs = std::filesystem;
    const fs::path folder = (argc > 1 ? fs::path(argv[1]) : fs::temp_directory_path()) / "quillmont-timeline-bench";
    fs::create_directories(folder);
    const NoPlatform platform(folder.string());
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    frmTimeline::Load();
    for (auto* const picture :
         {&forms::frmTimeline.picVideo[0], &forms::frmTimeline.picEffect[0], &forms::frmTimeline.picOverlay[0],
          &forms::frmTimeline.picAudio[0], &forms::frmTimeline.picAudio[1], &forms::frmTimeline.picScale}) {
        picture->ScaleHeight = 30;
    }
    fillTracks(folder);

    setView(5, 8000, 0); // 200 pixels an item, so that captions fit
    measure("RenderAllBars, 200 of 2,000 in view", moduleScaleRenderer::RenderAllBars);
    setView(25, 1600, 1400);
    measure("the same, at the end", moduleScaleRenderer::RenderAllBars);
    setView(5, 80000, 0);
    measure("RenderAllBars, all 2,000 in view", moduleScaleRenderer::RenderAllBars);
    measure("UpdateTreeView", ModuleTreeView::UpdateTreeView);
    setView(25, 1600, 0);
    moduleTimeline::ShowSelSliders(true);
    std::int32_t pos = 0;
    measure("SetSliderPosition", [&] { moduleTimeline::SetSliderPosition(pos += 33, false); });
    frmTimeline::imgStartSelHandle_MouseDown(1, 0);
    float by = 1;
    measure("a step of the start handle", [&] { frmTimeline::imgStartSelHandle_MouseMove(1, by = -by); });
    std::int32_t tick = 0;
    measure("a scroll step", [&] { forms::frmTimeline.hsb.SetValue(++tick); });
    bool isIn = false;
    measure("a zoom step", [&] { ((isIn = !isIn) ? moduleScaleRenderer::ZoomIn : moduleScaleRenderer::ZoomOut)(); });
    engine::Engine.reset();
    fs::remove_all(folder);
}
