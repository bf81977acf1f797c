// The program killed at a random moment of a random walk: the next one brings the work back, to the last command or
// the one before it, and the way back and forward is what it was.

#include "app/child_process.h"
#include "app/edit_dump.h"
#include "app/edit_words.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "history/ModuleHistory.h"
#include "items/track_rows.h"
#include "support/files.h"
#include "timeline/slider_places.h"
#include "walk/drawing.h"

#include <fstream>
#include <gtest/gtest.h>
#include <numeric>
#include <sstream>
#include <thread>

namespace walk_test {
namespace {

namespace fs = std::filesystem;

constexpr int kLinesOfWalk = 120;

/// All that must come back.
std::string stateText(const app::EditSession& session)
{
    std::string text = app::asText(app::readTimeline(session)) + app::historyText();
    for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
        text += row.Text + " " + row.Picture + " " + std::to_string(row.ForeColor) + "\n";
    }
    for (const items::TrackRow& row : items::rows()) {
        text += std::to_string(row.chkLink.Value) + std::to_string(row.chkLock.Value) + " ";
    }
    if (timeline::isSelectionShown()) {
        text += std::to_string(state::SelStartPosition) + " to " + std::to_string(state::SelEndPosition);
    }
    return text + " of " + std::to_string(session.media().size()) + " files\n";
}

/// To the first entry and to the last again.
std::string wayBackAndForward(app::EditSession& session)
{
    std::ostringstream ignored;
    std::string text;
    const auto step = [&](const char* line) {
        app::runLine(session, line, ignored);
        text += line + ("\n" + stateText(session));
    };
    while (ModuleHistory::HistoryIndex > 0) {
        step("undo");
    }
    while (ModuleHistory::CanRedo()) {
        step("redo");
    }
    return text;
}

/// A walk, and what stands behind each of its lines.
struct Walk {
    explicit Walk(unsigned seed)
    {
        std::ostringstream told;
        app::EditSession session(told);
        std::mt19937 random(seed);
        states.push_back(stateText(session));
        for (int i = 0; i < kLinesOfWalk; ++i) {
            const auto place = static_cast<std::size_t>(i);
            const Timeline timeline = readNow(session);
            lines.push_back(place < kMedia.size() ? kMedia[place] : Drawing(random, timeline).line());
            app::runLine(session, lines.back(), told);
            states.push_back(stateText(session));
        }
    }

    std::string wayFrom(std::size_t place) const
    {
        std::ostringstream told;
        app::EditSession session(told);
        for (std::size_t i = 0; i < place; ++i) {
            app::runLine(session, lines[i], told);
        }
        return wayBackAndForward(session);
    }

    Script lines;
    std::vector<std::string> states; // [0] ahead of the first line
};

/// The last whole number that the child has said.
std::size_t lastSaid(const fs::path& path)
{
    std::ifstream file(path);
    std::size_t said = 0;
    for (std::string line; std::getline(file, line) && !file.eof();) {
        said = std::stoul(line);
    }
    return said;
}

/// Runs the walk in a process of its own, and kills it at some time behind that line. What it had done by then, as it
/// said.
std::size_t killBehind(const Walk& walk, std::size_t line, std::chrono::microseconds later,
                       const testmedia::TempFolder& folder)
{
    std::ofstream script(folder / "script");
    for (std::size_t i = 0; i < walk.lines.size(); ++i) {
        script << walk.lines[i] << "\nsay " << i + 1 << "\n";
    }
    script.close();
    std::ofstream(folder / "said").close();
    app_test::Limits limits;
    limits.stdoutPath = folder / "said";
    const app_test::Child child({"/bin/sh", "-c", "exec \"$0\" --journal . < script", QUILLMONT_EDIT}, folder.path(),
                                limits);
    child.runsUntil([&] { return lastSaid(folder / "said") >= line; });
    std::this_thread::sleep_for(later);
    child.kill(SIGKILL);
    const bool isGone = !child.runsUntil([] { return false; });
    EXPECT_TRUE(isGone);
    return lastSaid(folder / "said");
}

void expectBack(const Walk& walk, std::size_t said, const testmedia::TempFolder& folder)
{
    std::ostringstream told;
    std::string state;
    std::string way;
    {
        app::EditSession session(told);
        session.openJournal(folder.path());
        state = stateText(session);
        way = wayBackAndForward(session);
    }
    std::size_t oldest = said; // ahead of the last command that did something
    while (oldest > 0 && walk.states[oldest] == walk.states[said]) {
        --oldest;
    }
    // The command behind the last one that was told may have come to its end too.
    for (std::size_t place = std::min(said + 1, walk.lines.size()); place + 1 > oldest; --place) {
        if (walk.states[place] == state) {
            EXPECT_EQ(way, walk.wayFrom(place)) << "behind line " << place;
            return;
        }
    }
    const auto older = std::ranges::find(walk.states, state);
    FAIL() << "killed behind line " << said << ", " << walk.lines[said - 1] << "; it is the state behind line "
           << older - walk.states.begin() << ":\n"
           << state << "instead of\n"
           << walk.states[said] << told.str() << "of the script\n"
           << std::accumulate(walk.lines.begin(), walk.lines.begin() + static_cast<std::ptrdiff_t>(said), std::string(),
                              [](const std::string& text, const std::string& line) { return text + line + "\n"; });
}

TEST(Kill, BringsBackTheLastCommandOrTheOneBeforeIt)
{
    constexpr int kOfOneWalk = 5;
    const char* const asked = std::getenv("QUILLMONT_KILLS");
    const int kills = asked != nullptr ? std::atoi(asked) : 20;
    std::mt19937 random(20'261'122);
    std::unique_ptr<Walk> walk;
    for (int i = 0; i < kills && !HasFailure(); ++i) {
        if (i % kOfOneWalk == 0) {
            walk = std::make_unique<Walk>(static_cast<unsigned>(i));
        }
        const testmedia::TempFolder folder;
        const std::size_t line = 3 + random() % (walk->lines.size() - 3);
        const std::size_t said = killBehind(*walk, line, std::chrono::microseconds(random() % 3000), folder);
        SCOPED_TRACE("kill " + std::to_string(i));
        expectBack(*walk, said, folder);
    }
}

} // namespace
} // namespace walk_test
