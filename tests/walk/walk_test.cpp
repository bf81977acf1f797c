// A seeded walk of random commands over the whole program, every one of them checked. A failure prints a short script
// that fails too, for quillmont-edit and for a test.

#include "app/edit_words.h"
#include "history/ModuleHistory.h"
#include "walk/invariants.h"
#include "walk/oracle.h"
#include "walk/past.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <span>

namespace walk_test {
namespace {

using Script = std::vector<std::string>;

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
    const std::string text = app::asText(now_.laid);
    if (text != textBefore && (word == "put" || word == "add" || word == "overlay")) {
        markSources(now_.laid, session_.media());
        word == "put" ? void() : ModuleHistory::StoreCurrentTLImage(); // a redo of the adding keeps the marks
    }
    return (isStep ? "" : oracle_.wrongBehind(words, before, now_)) + past_.wrongBehind(words, textBefore, text)
           + (keepsStep && !areKeysInStep(now_.laid) ? "an overlay has its transition elsewhere\n" : "")
           + wrongInAny(now_.laid, session_.media());
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

const Script kMedia{"media clip 3000 va", "media pic 1200 v", "media song 700 a", "media tiny 40 va",
                    "media long 25001 va"};
/// Lines with how often they come, and the words to choose from. Drawn are a row, an item of the row ahead of it (SEQ
/// from 0, PLACE from 1), a TIME, a RANGE between two, a SPAN from one, its MEDIA, milliseconds to go BY.
constexpr std::string_view kLines[] = {
    "16 add|overlay clip|pic|song|tiny|long",
    "4 put video|overlay clip|pic|tiny|long SPAN MEDIA",
    "4 put audio1|audio2 clip|song|tiny|long SPAN MEDIA",
    "4 add-effect Fade|Pixelate|Blur|Wave|Emboss|Engrave",
    "2 effect Fade|Pixelate|Blur|Wave|Emboss|Engrave SPAN",
    "14 select ROW SEQ",
    "2 deselect",
    "8 lock ROW on|on|off|off|off",
    "3 link ROW on|on|off",
    "8 range RANGE",
    "4 range off",
    "7 slider TIME",
    "36 cut|cut|cut|copy|copy|paste|paste|paste|paste|delete|delete|delete|crop-sources|crop",
    "17 pack|pack|pack|restore|restore|repeat|repeat|split|split|split|split|clear-effects|clear-overlays",
    "22 drag|resize ROW SEQ BY",
    "6 shuffle ROW PLACE PLACE",
    "7 change-track audio1|audio2 PLACE audio1|audio2 PLACE",
    "4 nudge -5|-1|1|5",
    "10 undo|undo|undo|redo|redo",
    "3 jump PLACE",
};
constexpr std::size_t kAddingLines = 5; // at the head

/// Draws the next line from what lies on the timeline.
class Drawing {
public:
    Drawing(std::mt19937& random, const Timeline& timeline) : random_(random), timeline_(timeline) {}

    std::string line()
    {
        constexpr int kFew = 15;
        const bool isFilling = timeline_.count() < kFew && pick(2) == 0;
        const std::span lines(kLines, isFilling ? kAddingLines : std::size(kLines));
        const auto weightOf = [](std::string_view line) { return std::stoi(std::string(line)); };
        int left = pick(std::transform_reduce(lines.begin(), lines.end(), 0, std::plus(), weightOf));
        auto drawn = lines.begin();
        for (; left >= weightOf(*drawn); ++drawn) {
            left -= weightOf(*drawn);
        }
        std::istringstream words{std::string(drawn->substr(drawn->find(' ')))};
        std::string text;
        for (std::string word; words >> word;) {
            text += (text.empty() ? "" : " ") + this->word(word);
        }
        return text == "repeat" && !mayRepeat() ? "split" : text;
    }

private:
    int pick(std::int64_t choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }

    std::string word(const std::string& choices)
    {
        std::istringstream stream(choices == "ROW" ? "video|audio1|audio2|overlay|effects" : choices);
        std::vector<std::string> words;
        for (std::string word; std::getline(stream, word, '|');) {
            words.push_back(word);
        }
        const std::string word = words[static_cast<std::size_t>(pick(std::ssize(words)))];
        if (const auto track = app::trackNamed(word)) {
            row_ = static_cast<Row>(*track);
        }
        return word == "SEQ"     ? std::to_string(seq())
               : word == "PLACE" ? std::to_string(seq() + 1)
               : word == "TIME"  ? std::to_string(time())
               : word == "BY"    ? std::to_string(pick(3) == 0 ? pick(41) - 20 : pick(6000) - 3000)
               : word == "RANGE" ? range()
               : word == "SPAN"  ? span()
               : word == "MEDIA" ? media()
                                 : word;
    }

    const Piece& any(const Pieces& lane) { return lane[static_cast<std::size_t>(pick(std::ssize(lane)))]; }
    const Pieces& anyLane() { return timeline_.on(kRows[static_cast<std::size_t>(pick(std::ssize(kRows)))]); }
    /// Mostly one that exists.
    int seq()
    {
        const Pieces& lane = timeline_.on(row_);
        return pick(std::ssize(lane) + (pick(10) == 0 || lane.empty() ? 1 : 0));
    }
    /// Often at the edge of an item, or close to one.
    std::int64_t time()
    {
        const Pieces& lane = anyLane();
        if (lane.empty() || pick(3) == 0) {
            return pick(timeline_.duration() + 2000);
        }
        const Range& times = any(lane).times;
        constexpr std::array kNear{0, 0, 0, 0, 1, -1, 9, -10, 11, -11, 200, -200};
        const int by = kNear[static_cast<std::size_t>(pick(std::ssize(kNear)))];
        return std::max((pick(2) == 0 ? times.start : times.stop) + by, 0);
    }
    std::string range()
    {
        std::int64_t a = time();
        std::int64_t b = time();
        if (const Pieces& lane = anyLane(); !lane.empty() && pick(3) == 0) { // of whole items
            a = any(lane).times.start;
            b = any(lane).times.stop;
        }
        return std::to_string(std::min(a, b)) + " " + std::to_string(a == b ? a + 1 + pick(3000) : std::max(a, b));
    }
    std::string span()
    {
        const std::int64_t start = time();
        length_ = 1 + (pick(4) == 0 ? pick(20) : pick(2000));
        return std::to_string(start) + " " + std::to_string(start + length_);
    }
    /// Sometimes at another speed, seldom without any.
    std::string media()
    {
        const int start = pick(2) == 0 ? 0 : pick(500);
        const int length = pick(2) == 0 ? length_ : pick(12) == 0 ? -pick(20) : 1 + pick(3000);
        return std::to_string(start) + " " + std::to_string(start + length);
    }
    /// Not for thousands of times.
    bool mayRepeat() const
    {
        return std::ranges::none_of(std::array{kAudio1, kAudio2}, [&](Row row) {
            const Pieces& lane = timeline_.on(row);
            const int length = lane.empty() ? 0 : lane.back().media.stop - lane.back().media.start;
            return length > 0 && length < 100;
        });
    }

    std::mt19937& random_;
    const Timeline& timeline_;
    Row row_ = kVideo; // of the line
    int length_ = 0;   // of its span
};

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
