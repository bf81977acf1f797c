// A seeded walk of random commands over the whole program, every one of them checked. A failure prints a short script
// that fails too, for quillmont-edit and for a test.

#include "walk/checked_run.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace walk_test {
namespace {

constexpr int kMaxItems = 60;            // then the timeline is cleared
constexpr std::int64_t kMaxMs = 250'000; // of the longest row

const Script kMedia{"media clip 3000 va", "media pic 1200 v", "media song 700 a", "media tiny 40 va",
                    "media long 25001 va"};
constexpr std::array kPictures{"clip", "pic", "tiny", "long"};
constexpr std::array kSounds{"clip", "song", "tiny", "long"};
constexpr std::array kEffectNames{"Fade", "Pixelate", "Blur", "Wave", "Emboss", "Engrave"};

int itemCount(const PlainTimeline& timeline)
{
    int count = 0;
    for (const Lane& lane : timeline.lanes) {
        count += lane.count();
    }
    return count;
}

/// Draws the next line from what lies on the timeline.
class Drawing {
public:
    Drawing(std::mt19937& random, const PlainTimeline& timeline) : random_(random), timeline_(timeline) {}

    std::string line()
    {
        constexpr int kFew = 15;
        if (itemCount(timeline_) < kFew && pick(2) == 0) {
            return pick(4) == 0 ? add() : put();
        }
        static constexpr struct {
            int weight;
            std::string (Drawing::*draw)();
        } kKinds[] = {{20, &Drawing::add},  {8, &Drawing::put},    {22, &Drawing::choose}, {18, &Drawing::place},
                      {34, &Drawing::edit}, {14, &Drawing::whole}, {22, &Drawing::drag},   {12, &Drawing::move},
                      {4, &Drawing::nudge}, {14, &Drawing::step}};
        int left = pick(168);
        for (const auto& kind : kKinds) {
            left -= kind.weight;
            if (left < 0) {
                return (this->*kind.draw)();
            }
        }
        return "deselect";
    }

private:
    int pick(int choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }
    template <class Choices>
    std::string oneOf(const Choices& choices)
    {
        return choices[static_cast<std::size_t>(pick(static_cast<int>(std::size(choices))))];
    }
    std::string number(std::int64_t value) { return std::to_string(value); }
    Row row() { return kRows[static_cast<std::size_t>(pick(5))]; }
    static std::string nameOf(Row row) { return std::string(app::nameOf(app::kEditTracks[row])); }
    /// Mostly one that exists.
    int seqOn(Row row)
    {
        return pick(timeline_.lane(row).count() + (pick(10) == 0 ? 1 : 0)
                    + (timeline_.lane(row).items.empty() ? 1 : 0));
    }

    /// Often at the edge of an item, or close to one.
    std::int64_t time()
    {
        const Lane& lane = timeline_.lane(row());
        if (lane.items.empty() || pick(3) == 0) {
            return pick(static_cast<int>(timeline_.duration()) + 2000);
        }
        const Item& item = lane.at(pick(lane.count()));
        static constexpr std::array kNear{0, 0, 0, 0, 1, -1, 9, -10, 11, -11, 200, -200};
        const std::int64_t edge = pick(2) == 0 ? item.start : item.stop;
        return std::max<std::int64_t>(edge + kNear[static_cast<std::size_t>(pick(kNear.size()))], 0);
    }
    std::string range()
    {
        std::int64_t a = time();
        std::int64_t b = time();
        if (const Lane& lane = timeline_.lane(row()); !lane.items.empty() && pick(3) == 0) { // of whole items
            a = lane.at(pick(lane.count())).start;
            b = lane.at(pick(lane.count())).stop;
        }
        return number(std::min(a, b)) + " " + number(a == b ? a + 1 + pick(3000) : std::max(a, b));
    }
    std::int64_t delta() { return pick(3) == 0 ? pick(41) - 20 : pick(6000) - 3000; }

    std::string add()
    {
        switch (pick(5)) {
        case 0:
        case 1:
            return "add " + oneOf(std::array{"clip", "pic", "song", "tiny", "long"});
        case 2:
        case 3:
            return "overlay " + oneOf(std::array{"clip", "pic", "song", "tiny", "long"});
        default:
            return "add-effect " + oneOf(kEffectNames);
        }
    }
    std::string put()
    {
        const Row row = this->row();
        const std::int64_t start = time();
        const std::int64_t length = 1 + (pick(4) == 0 ? pick(20) : pick(2000));
        const std::string times = number(start) + " " + number(start + length);
        if (row == kEffects) {
            return "effect " + oneOf(kEffectNames) + " " + times;
        }
        const std::int64_t mediaStart = pick(2) == 0 ? 0 : pick(500);
        // Sometimes at another speed, seldom without any.
        const std::int64_t mediaLength = pick(2) == 0 ? length : pick(12) == 0 ? -pick(20) : 1 + pick(3000);
        return "put " + nameOf(row) + " " + (row == kVideo || row == kOverlay ? oneOf(kPictures) : oneOf(kSounds)) + " "
               + times + " " + number(mediaStart) + " " + number(mediaStart + mediaLength);
    }
    std::string choose()
    {
        const Row row = this->row();
        switch (pick(8)) {
        case 0:
            return "deselect";
        case 1:
            return "lock " + nameOf(row) + (pick(5) < 2 ? " on" : " off");
        case 2:
            return "link " + nameOf(row) + (pick(3) == 0 ? " off" : " on");
        default:
            return "select " + nameOf(row) + " " + number(seqOn(row));
        }
    }
    std::string place()
    {
        const int kind = pick(5);
        return kind == 0 ? "range off" : kind < 3 ? "range " + range() : "slider " + number(time());
    }
    std::string edit()
    {
        return oneOf(std::array{"cut", "cut", "cut", "copy", "copy", "paste", "paste", "paste", "paste", "delete",
                                "delete", "delete", "crop-sources", "crop"});
    }
    /// Not for thousands of times.
    bool mayRepeat() const
    {
        constexpr std::int64_t kShort = 100;
        const auto isShort = [](const Item& item) { return item.mediaLength() > 0 && item.mediaLength() < kShort; };
        return std::ranges::none_of(std::array{kAudio1, kAudio2}, [&](Row row) {
            const Lane& lane = timeline_.lane(row);
            return !lane.items.empty() && isShort(lane.items.back());
        });
    }
    std::string whole()
    {
        const std::string repeat = mayRepeat() ? "repeat" : "split";
        return oneOf(std::array<std::string, 13>{"pack", "pack", "restore", "restore", repeat, repeat, "split", "split",
                                                 "split", "split", "pack", "clear-effects", "clear-overlays"});
    }
    std::string drag()
    {
        const Row row = this->row();
        return (pick(2) == 0 ? "drag " : "resize ") + nameOf(row) + " " + number(seqOn(row)) + " " + number(delta());
    }
    std::string move()
    {
        if (pick(2) == 0) {
            const Row row = this->row();
            return "shuffle " + nameOf(row) + " " + number(seqOn(row) + 1) + " " + number(seqOn(row) + 1);
        }
        Row from = pick(2) == 0 ? kAudio1 : kAudio2;
        Row to = from == kAudio1 ? kAudio2 : kAudio1;
        if (pick(8) == 0) {
            from = row();
            to = row();
        }
        return "change-track " + nameOf(from) + " " + number(seqOn(from) + 1) + " " + nameOf(to) + " "
               + number(seqOn(to) + 1);
    }
    std::string nudge() { return "nudge " + oneOf(std::array{"-5", "-1", "1", "5"}); }
    std::string step() { return pick(4) == 0 ? "jump " + number(1 + pick(8)) : pick(5) < 3 ? "undo" : "redo"; }

    std::mt19937& random_;
    const PlainTimeline& timeline_;
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
        if (itemCount(program_.timeline()) < kMaxItems && program_.timeline().duration() < kMaxMs) {
            return;
        }
        for (const Row row : kRows) {
            if (program_.timeline().lane(row).locked) {
                run("lock " + std::string(app::nameOf(app::kEditTracks[row])) + " off");
            }
        }
        run("clear");
    }

    /// All the way back, and forward again. Each step brings back an image that the history has kept.
    void thereAndBack()
    {
        while (wrong.empty() && program_.history().index() > 0) {
            run("undo");
        }
        while (wrong.empty() && program_.history().index() < program_.history().entryCount()) {
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
    const int commands = fromEnvironment("QUILLMONT_WALK", 1000);
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
               << asText(script);
    }
}

} // namespace
} // namespace walk_test
