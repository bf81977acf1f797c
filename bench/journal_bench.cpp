// quillmont-journal-bench: what the journal costs with 2,000 items on the tracks and 26 entries in the history. CPU
// time of a command's journalling, on the interface thread and in all, and the bytes that it appends; then how long it
// takes to bring back the work of 300 files, beside the opening of the same files.
//
// Each line is the median and the worst of its rounds.

#include "app/edit_words.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "journal/capture.h"
#include "journal/journal.h"
#include "journal/writer.h"
#include "measures.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <vector>

namespace {

namespace fs = std::filesystem;
using engine::check;

constexpr int kFiles = 300;
constexpr std::int16_t kItems = 400; // on each of the five rows
constexpr int kSteps = 26;

double cpuMs(clockid_t clock) { return bench::secondsOf(clock) * 1000; }

void tell(const char* what, const char* unit, const std::vector<double>& numbers)
{
    std::printf("%-52s median %9.3f %s   worst %9.3f %s\n", what, bench::median(numbers), unit,
                *std::ranges::max_element(numbers), unit);
}

void fillRows(const std::vector<app::OpenedMedia>& media)
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    engine::Bool16 ok = engine::kFalse;
    for (std::int16_t seq = 0; seq < kItems; ++seq) {
        const engine::Milliseconds start = seq * 600;
        const app::OpenedMedia& file = media[static_cast<std::size_t>(seq) % media.size()];
        for (const app::EditTrack track : app::kEditTracks) {
            const engine::Handle handle = app::handleOf(track);
            if (track == app::EditTrack::kEffects) {
                check(timeline->AddEffectAt(handle, "Emboss", start, start + 500, ok));
                continue;
            }
            const engine::Handle stream = app::takesPictures(track) ? file.picture : file.sound;
            check(timeline->InsertSource(handle, stream, seq, start, start + 500, ok));
            check(timeline->SetSourceMediaTimes(handle, seq, 0, 500, ok));
            if (track == app::EditTrack::kOverlay) {
                check(timeline->AddTransitionAt(handle, "DxtKey", start, start + 500, ok));
            }
        }
    }
    state::markModified();
}

/// Commands that change little, and much.
const std::vector<const char*> kCommands{
    "drag video 200 50", "resize video 300 -40", "pack", "split", "nudge 5", "undo"};

void fillHistory(app::EditSession& session)
{
    std::ostringstream ignored;
    while (ModuleHistory::HistoryIndex < kSteps) {
        app::runLine(session, "deselect", ignored);
        app::runLine(session, "drag video " + std::to_string(10 * ModuleHistory::HistoryIndex + 20) + " 40", ignored);
    }
}

void measureCommand(app::EditSession& session, const char* line, journal::Capture& capture, journal::Writer& writer,
                    const fs::path& file)
{
    constexpr int kRounds = 30;
    std::ostringstream ignored;
    std::vector<double> interface;
    std::vector<double> all;
    std::vector<double> kib;
    for (int i = 0; i < kRounds; ++i) {
        app::runLine(session, "slider " + std::to_string(60'000 + i * 610), ignored); // where the split is
        app::runLine(session, line, ignored);
        const auto bytes = fs::file_size(file);
        const double thread = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        const double process = cpuMs(CLOCK_PROCESS_CPUTIME_ID);
        if (const auto image = capture.take()) {
            writer.write(image);
        }
        interface.push_back(cpuMs(CLOCK_THREAD_CPUTIME_ID) - thread);
        writer.drain();
        all.push_back(cpuMs(CLOCK_PROCESS_CPUTIME_ID) - process);
        const auto now = fs::file_size(file);
        kib.push_back(now < bytes ? 0 : static_cast<double>(now - bytes) / 1024);
        if (std::string_view(line) == "undo" && ModuleHistory::HistoryIndex < 5) {
            while (ModuleHistory::CanRedo()) {
                app::runLine(session, "redo", ignored);
            }
        }
    }
    tell((std::string(line) + ": interface thread").c_str(), "ms ", interface);
    tell((std::string(line) + ": in all").c_str(), "ms ", all);
    tell((std::string(line) + ": appended").c_str(), "KiB", kib);
}

void measureNothing(journal::Capture& capture)
{
    std::vector<double> times;
    for (int i = 0; i < 200; ++i) {
        const double before = cpuMs(CLOCK_THREAD_CPUTIME_ID);
        capture.take();
        times.push_back(cpuMs(CLOCK_THREAD_CPUTIME_ID) - before);
    }
    tell("a turn in which nothing was changed", "ms ", times);
}

void measureCommands(const fs::path& folder)
{
    std::ostringstream told;
    app::EditSession session(told);
    session.openMedia("clip", 1000, true, true);
    fillRows(session.media());
    fillHistory(session);
    const fs::path file = folder / "bench.journal";
    journal::Capture capture;
    journal::Writer writer(journal::JournalFile::open(file));
    writer.write(capture.take());
    writer.drain();
    std::printf("%-52s %9.1f KiB\n", "the whole state", static_cast<double>(fs::file_size(file)) / 1024);
    for (const char* const line : kCommands) {
        measureCommand(session, line, capture, writer, file);
    }
    measureNothing(capture);
}

double secondsOf(const auto& call)
{
    const auto before = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
}

void measureRecovery(const fs::path& folder)
{
    std::ostringstream told;
    std::vector<std::string> paths;
    {
        app::EditSession session(told);
        session.openJournal(folder);
        for (int i = 0; i < kFiles; ++i) {
            session.openMedia("clip" + std::to_string(i), 10'000, true, true);
        }
        fillRows(session.media());
        fillHistory(session);
        for (const engine::Handle media : state::FileCollection) {
            paths.push_back(media::pathOf(media));
        }
    }
    for (int round = 0; round < 6; ++round) {
        double opening = 0;
        {
            const app::EditSession session(told);
            opening = secondsOf([&] { std::ranges::for_each(paths, moduleTarnwick::OpenResentFile); });
        }
        app::EditSession session(told);
        const double back = secondsOf([&] { session.openJournal(folder); });
        std::printf("%d files opened in %.3f s; the work with them brought back in %.3f s, %.3f s on top (%d steps)\n",
                    state::FileCollection.Count(), opening, back, back - opening,
                    static_cast<int>(ModuleHistory::HistoryIndex));
    }
}

} // namespace

int main()
{
    std::string name = (fs::temp_directory_path() / "quillmont-journal-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(name.data());
    measureCommands(folder);
    measureRecovery(folder);
    fs::remove_all(folder);
}
