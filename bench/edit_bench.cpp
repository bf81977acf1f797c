// quillmont-edit-bench: how long each command of the timeline takes over 2,000 items, in ms, without a screen: with its
// image for the history, the menu update and the drawing into the draw lists.
//
// Each line is the best and the median of 9 runs, undone in between.

#include "app/edit_words.h"
#include "core/forms/frmTimeline.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <vector>

namespace {

using engine::check;

/// 400 items of half a second on each of the five rows, with gaps between them.
void fillRows(const app::OpenedMedia& media)
{
    constexpr std::int16_t kItems = 400;
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    engine::Bool16 ok = engine::kFalse;
    for (std::int16_t seq = 0; seq < kItems; ++seq) {
        const engine::Milliseconds start = seq * 600;
        for (const app::EditTrack track : app::kEditTracks) {
            const engine::Handle handle = app::handleOf(track);
            if (track == app::EditTrack::kEffects) {
                check(timeline->AddEffectAt(handle, "Emboss", start, start + 500, ok));
                continue;
            }
            const engine::Handle stream = app::takesPictures(track) ? media.picture : media.sound;
            check(timeline->InsertSource(handle, stream, seq, start, start + 500, ok));
            check(timeline->SetSourceMediaTimes(handle, seq, 0, 500, ok));
            if (track == app::EditTrack::kOverlay) {
                check(timeline->AddTransitionAt(handle, "DxtKey", start, start + 500, ok));
            }
        }
    }
    RenderAllBars();
    UpdateTreeView();
    UpdatePreview();
    EnableOrDisableMenuItems();
}

struct Measured {
    const char* line;
    std::vector<const char*> before; // not measured
};

const std::vector<Measured> kCommands{
    {"add clip", {}},
    {"overlay clip", {}},
    {"cut", {"select video 200", "select audio1 200"}},
    {"copy", {"select video 200", "select audio1 200"}},
    {"paste", {"slider 120250"}},
    {"cut", {"range 90250 150250"}},
    {"copy", {"range 90250 150250"}},
    {"paste", {"slider 120250"}},
    {"paste", {"range 90250 150250"}},
    {"delete", {"range 90250 150250"}},
    {"crop", {"range 90250 150250"}},
    {"crop-sources", {"range 90250 150250"}},
    {"pack", {}},
    {"restore", {"select video 200"}},
    {"split", {"slider 120250"}},
    {"drag video 200 50", {"deselect"}},
    {"resize video 200 50", {"deselect"}},
    {"shuffle video 300 100", {}},
    {"change-track audio1 200 audio2 200", {}},
    {"clear-effects", {}},
    {"clear-overlays", {}},
    {"clear", {}},
    {"undo", {"pack"}},
};

using Clock = std::chrono::steady_clock;

double msOf(const auto& call)
{
    const auto before = Clock::now();
    call();
    return std::chrono::duration<double, std::milli>(Clock::now() - before).count();
}

void show(const std::string& what, std::vector<double> times)
{
    std::ranges::sort(times);
    std::printf("%-52s best %8.3f ms   median %8.3f ms\n", what.c_str(), times.front(), times[times.size() / 2]);
}

void measure(app::EditSession& session, const Measured& measured)
{
    constexpr int kRuns = 9;
    std::ostringstream ignored;
    std::vector<double> times;
    std::string what = measured.line;
    for (const char* const line : measured.before) {
        what += std::string(", after ") + line;
    }
    for (int i = 0; i < kRuns; ++i) {
        const int index = ModuleHistory::HistoryIndex;
        for (const char* const line : measured.before) {
            app::runLine(session, line, ignored);
        }
        times.push_back(msOf([&] { app::runLine(session, measured.line, ignored); }));
        while (ModuleHistory::HistoryIndex > index) {
            app::runLine(session, "undo", ignored);
        }
    }
    show(what, std::move(times));
}

/// One move of the pointer while an item is dragged.
void measureStep(app::EditTrack track)
{
    constexpr float kX = 250;
    constexpr float kY = 20;
    const app::PictureEvents events = app::eventsOf(track);
    std::vector<double> times;
    events.mouseDown(0, 1, 0, kX, kY);
    for (int i = 1; i <= 50; ++i) {
        times.push_back(msOf([&] { events.mouseMove(0, 1, 0, kX + static_cast<float>(i), kY); }));
    }
    events.mouseUp(0, 1, 0, kX + 50, kY);
    show("a step of a drag on " + std::string(app::nameOf(track)), std::move(times));
}

} // namespace

int main()
{
    std::ostringstream told;
    app::EditSession session(told);
    session.openMedia("clip", 1000, true, true);
    fillRows(session.media().front());
    for (const Measured& measured : kCommands) {
        measure(session, measured);
    }
    measureStep(app::EditTrack::kVideo);
}
