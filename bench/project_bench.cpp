// quillmont-project-bench FOLDER: how long a project of all files in a folder and 2,000 items takes to be saved and to
// be opened again, in ms, without a screen. Best and median of 5.

#include "app/edit_session.h"
#include "core/shared_state.h"
#include "disk/run_folder.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "media/opening.h"
#include "project/ModuleProject.h"
#include "shell/project_commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <vector>

namespace {

namespace fs = std::filesystem;

using engine::check;

/// 400 items on each of the five rows, from one file after the other.
void fillRows()
{
    constexpr std::int16_t kItems = 400;
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    std::vector<engine::Handle> pictures;
    std::vector<engine::Handle> sounds;
    for (const engine::Handle stream : state::StreamCollection) {
        engine::Bool16 isPicture = engine::kFalse;
        check(files->IsVideoStream(stream, isPicture));
        (isPicture != engine::kFalse ? pictures : sounds).push_back(stream);
    }
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    engine::Bool16 ok = engine::kFalse;
    for (std::size_t seq = 0; seq < kItems; ++seq) {
        const auto start = static_cast<engine::Milliseconds>(seq) * 600;
        for (const app::EditTrack track : app::kEditTracks) {
            const engine::Handle handle = app::handleOf(track);
            if (track == app::EditTrack::kEffects) {
                check(timeline->AddEffectAt(handle, "Emboss", start, start + 500, ok));
                continue;
            }
            const auto& streams = app::takesPictures(track) ? pictures : sounds;
            check(timeline->InsertSource(handle, streams[seq % streams.size()], static_cast<std::int16_t>(seq), start,
                                         start + 500, ok));
            if (track == app::EditTrack::kOverlay) {
                check(timeline->AddTransitionAt(handle, "DxtKey", start, start + 500, ok));
            }
        }
    }
}

void measure(const char* what, const auto& call)
{
    constexpr int kRuns = 5;
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) {
        const auto before = std::chrono::steady_clock::now();
        call();
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - before).count());
    }
    std::ranges::sort(times);
    std::printf("%-20s best %8.1f ms   median %8.1f ms\n", what, times.front(), times[times.size() / 2]);
}

} // namespace

int main(int count, char** words)
{
    if (count != 2) {
        std::fputs("usage: quillmont-project-bench FOLDER\n", stderr);
        return EXIT_FAILURE;
    }
    app::EditSession session(std::cerr);
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(words[1])) {
        if (entry.is_regular_file()) {
            paths.push_back(fs::absolute(entry.path()).string());
        }
    }
    std::ranges::sort(paths);
    const disk::RunFolder folder(fs::temp_directory_path().string(), "quillmont-bench-");
    const std::string project = folder.path() + "/bench.qpj";
    measure("opening the files", [&] {
        ModuleProject::EmptyProject();
        moduleTarnwick::OpenDroppedFiles(paths);
    });
    fillRows();
    std::printf("%d files\n", state::FileCollection.Count());
    measure("saving", [&] { session.saveProject(project); });
    measure("opening", [&] { session.openProject(project); });
}
