// A seeded walk of random commands over the whole program, every one of them checked. A failure prints a short script
// that fails too, for quillmont-edit and for a test.

#include "app/edit_words.h"
#include "history/ModuleHistory.h"
#include "walk/drawing.h"
#include "walk/invariants.h"
#include "walk/oracle.h"
#include "walk/past.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace walk_test {
namespace {

/// A script run line by line over a program of its own, with everything checked behind each line.
class CheckedRun {
public:
    /// What is wrong behind a line, empty when nothing is.
    std::string run(const std::string& line);

    const Timeline& timeline() const { return now_; }

private:
    std::ostringstream messages_;
    app::EditSession session_{messages_};
    Oracle oracle_;
    Past past_;
    Timeline now_ = readNow(session_);
};

std::string CheckedRun::run(const std::string& line)
{
    std::vector<std::string> words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    const std::string& word = words.front();
    const bool isStep = word == "undo" || word == "redo" || word == "jump";
    // Times of transitions may part from their overlays' where a paste leaves out gaps between them, and a step in the
    // history brings that back.
    const bool keepsStep = !isStep && !(word == "paste" && oracle_.hasClippedGaps()) && areKeysInStep(now_.laid);
    const std::string textBefore = app::asText(now_.laid);
    const Timeline before = now_;
    app::runLine(session_, line, messages_);
    now_ = readNow(session_);
    std::string wrong = isStep ? "" : oracle_.wrongBehind(words, before, now_);
    if (app::asText(now_.laid) != textBefore
        && (word == "put" || word == "add" || word == "overlay" || word == "insert")) {
        markSources(now_.laid, session_.media());
        now_ = readNow(session_);
        word == "put" ? void() : ModuleHistory::StoreCurrentTLImage(); // a redo of the adding keeps the marks
    }
    wrong += past_.wrongBehind(words, textBefore, app::asText(now_.laid));
    wrong += keepsStep && !areKeysInStep(now_.laid) ? "an overlay has its transition elsewhere\n" : "";
    return wrong + wrongInAny(now_.laid);
}

/// The first line that goes wrong, and how.
struct Failure {
    std::size_t line = 0;
    std::string what;
};
std::optional<Failure> failureOf(const Script& script)
{
    CheckedRun run;
    for (std::size_t i = 0; i < script.size(); ++i) {
        if (const std::string wrong = run.run(script[i]); !wrong.empty()) {
            return Failure{i, wrong};
        }
    }
    return {};
}

/// The script without lines that it fails without, whatever the failure. Stops after so many seconds with what it has.
Script shrunk(Script script, int seconds)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    for (std::size_t size = script.size() / 2; size > 0; size /= 2) {
        for (std::size_t at = 0; at < script.size() && std::chrono::steady_clock::now() < deadline;) {
            Script shorter = script;
            const auto from = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(from, from + static_cast<std::ptrdiff_t>(std::min(size, script.size() - at)));
            std::optional<Failure> failure;
            try {
                failure = failureOf(shorter);
            } catch (const app::WrongWords&) { // a file that is not opened any more
            } catch (const std::exception& error) {
                failure = Failure{shorter.size() - 1, error.what()};
            }
            if (failure) {
                shorter.resize(failure->line + 1);
                script = shorter;
            } else {
                at += size;
            }
        }
    }
    return script;
}

constexpr int kMaxItems = 60;            // then the timeline is cleared
constexpr std::int64_t kMaxMs = 250'000; // of the longest row

/// A part of the walk, over a program of its own. The script of it as far as it went; what was wrong with its last
/// line.
class Part {
public:
    explicit Part(std::mt19937& random) : random_(random)
    {
        for (const std::string& line : kMedia) {
            run(line);
        }
    }

    void walk(int commands)
    {
        while (commands > 0 && wrong.empty()) {
            for (int i = 0; i < 25 && commands > 0; ++i, --commands) {
                makeRoom();
                run(Drawing(random_, program_.timeline()).line());
            }
            thereAndBack();
        }
    }

    Script script;
    std::string wrong;

private:
    void run(const std::string& line)
    {
        if (wrong.empty()) {
            script.push_back(line);
            try {
                wrong = program_.run(line);
            } catch (const std::exception& error) {
                wrong = error.what();
            }
        }
    }

    void makeRoom()
    {
        if (program_.timeline().count() < kMaxItems && program_.timeline().duration() < kMaxMs) {
            return;
        }
        for (const Row row : kRows) {
            if (program_.timeline().isLocked[row]) {
                run("lock " + nameOf(row) + " off");
            }
        }
        run("clear");
    }

    /// All the way back, and forward again. Each step brings back an image that the history has kept.
    void thereAndBack()
    {
        while (wrong.empty() && Past::index() > 0) {
            run("undo");
        }
        while (wrong.empty() && Past::index() < Past::entryCount()) {
            run("redo");
        }
    }

    std::mt19937& random_;
    CheckedRun program_;
};

int fromEnvironment(const char* name, int otherwise)
{
    const char* const text = std::getenv(name);
    return text != nullptr ? std::atoi(text) : otherwise;
}

TEST(EditWalk, RandomCommandsLeaveWhatTheyAreToldTo)
{
    constexpr int kPart = 250; // commands of one program
    const int kShrinkSeconds = fromEnvironment("QUILLMONT_SHRINK", 60);
    const int commands = fromEnvironment("QUILLMONT_WALK", 4000);
    const int seed = fromEnvironment("QUILLMONT_SEED", 20'240'607);
    for (int done = 0; done < commands; done += kPart) {
        std::mt19937 random(static_cast<unsigned>(seed + done));
        Part part(random);
        part.walk(std::min(kPart, commands - done));
        if (part.wrong.empty()) {
            continue;
        }
        const Script script = shrunk(part.script, kShrinkSeconds);
        const auto failure = failureOf(script);
        FAIL() << "seed " << seed << ", behind " << done << " commands:\n"
               << part.wrong << "\nA short script fails so:\n"
               << (failure ? failure->what : "not again") << "\n"
               << std::accumulate(script.begin(), script.end(), std::string(),
                                  [](const std::string& text, const std::string& line) { return text + line + "\n"; });
    }
}

} // namespace
} // namespace walk_test
