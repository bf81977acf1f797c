// A seeded walk of random commands. Whatever they do, a track reads in order and apart, undo gives the earlier timeline
// back, and redo the later one. A failure prints the commands that led there, to be pasted into a test.

#include "twcore/model/commands.h"

#include <random>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace model_test {
namespace {

constexpr int kCommands = 40'000;
constexpr int kMaxItems = 40; // then the timeline is cleared

class Walk {
public:
    explicit Walk(unsigned seed) : random_(seed)
    {
        commands_.streams.durations = {{1, 10'000}, {2, 3'333}, {3, 777}, {4, 40}, {5, 25'001}};
    }

    void run(int commandCount)
    {
        for (int i = 0; i < commandCount && !::testing::Test::HasFailure(); ++i) {
            step();
        }
        if (::testing::Test::HasFailure()) {
            ADD_FAILURE() << "after\n" << steps_;
        }
    }

private:
    void step()
    {
        const std::string before = std::exchange(now_, {});
        const Image imageBefore = commands_.image();
        if (itemCount() > kMaxItems) {
            steps_.clear();
            commands_.emptyTimeline();
        }
        select();
        try {
            command();
        } catch (const std::domain_error&) {
            // The command ended in the middle, as the program's do: what it left must still read well.
        }
        if (pick(4) == 0) {
            checkSnapshot(); // settles before any reading does
        }
        checkTracks();
        const std::string after = commands_.everything();
        const Image imageAfter = commands_.image();
        commands_.restore(imageBefore);
        EXPECT_EQ(commands_.everything(), before) << "undo";
        if (pick(8) != 0) {
            commands_.restore(imageAfter);
            now_ = commands_.everything();
            EXPECT_EQ(now_, after) << "redo";
        } else {
            now_ = before;
            steps_ += "undo;\n";
        }
    }

    void select()
    {
        for (Handle track : commands_.allTracks) {
            for (Kind kind : {kSource, kEffect}) {
                for (int seq = 0; seq < commands_.count(kind, track); ++seq) {
                    if (pick(3) == 0) {
                        note("select(Kind(", kind, "), ", track, ", ", seq, ")");
                        commands_.select(kind, track, seq);
                    }
                }
            }
        }
    }

    void command()
    {
        const int stream = 1 + pick(5), sound = pick(6), delta = pick(6'000) - 3'000;
        const int lengthMs = commands_.duration(commands_.video) + 3'000;
        const int a = pick(lengthMs), b = a + 1 + pick(lengthMs / 2);
        const int edit = pick(4);
        const Handle track = commands_.allTracks[static_cast<std::size_t>(pick(4))];
        switch (pick(20)) {
        case 0:
            return note("addToTimeline(", stream, ", ", sound, ")"), commands_.addToTimeline(stream, sound);
        case 1:
            return note("addToOverlay(", stream, ")"), commands_.addToOverlay(stream);
        case 2: {
            const int stop = pick(2) == 0 ? -1 : b;
            return note("addEffect(\"Blur\", ", a, ", ", stop, ")"), commands_.addEffect("Blur", a, stop);
        }
        case 3:
        case 4:
        case 5:
        case 6:
            note("editRange(Edit(", edit, "), ", a, ", ", b, ")");
            return commands_.editRange(static_cast<Edit>(edit), a, b);
        case 7:
            return note("removeItems(", edit > 0, ")"), commands_.removeItems(edit > 0);
        case 8:
        case 9:
            return note("paste(", a, ")"), commands_.paste(a);
        case 10:
            return note("pasteOver(", a, ", ", b, ")"), commands_.pasteOver(a, b);
        case 11:
        case 12:
            return note("splitAt(", a, ")"), commands_.splitAt(a);
        case 13:
            return note("pack()"), commands_.pack();
        case 14:
            return note("restoreSize()"), commands_.restoreSize();
        case 15:
            return note("repeatAudio()"), commands_.repeatAudio();
        case 16:
            return shuffle(pick(4) == 0 ? kEffect : kSource, track);
        case 17: {
            const int place = pick(commands_.count(kSource, commands_.audio2) + 1);
            note("moveToTrack(audio1, audio2, ", place, ")");
            return commands_.moveToTrack(commands_.audio1, commands_.audio2, place);
        }
        case 18:
            return note("nudge(", delta, ")"), commands_.nudge(delta);
        default:
            return note("resize(", delta, ")"), commands_.resize(delta);
        }
    }

    void shuffle(Kind kind, Handle track)
    {
        const int count = commands_.count(kind, track);
        if (count > 0) {
            const int from = pick(count), onto = pick(count);
            note("shuffle(Kind(", kind, "), ", track, ", ", from, ", ", onto, ")");
            commands_.shuffle(kind, track, from, onto);
        }
    }

    void checkTracks()
    {
        for (Handle track : commands_.allTracks) {
            for (Kind kind : kKinds) {
                int seq = 0;
                std::int32_t endMs = 0;
                for (Range at = commands_.times(kind, track, 0); at.ok; at = commands_.times(kind, track, ++seq)) {
                    EXPECT_GE(at.start, endMs) << "track " << track << ", kind " << kind << ", item " << seq;
                    EXPECT_GT(at.stop, at.start) << "track " << track << ", kind " << kind << ", item " << seq;
                    endMs = at.stop;
                }
                EXPECT_EQ(seq, commands_.count(kind, track));
            }
            EXPECT_EQ(commands_.duration(track),
                      commands_.times(kSource, track, commands_.count(kSource, track) - 1).stop);
        }
        EXPECT_EQ(commands_.count(kSource, commands_.overlay), commands_.count(kTransition, commands_.overlay));
    }

    /// What plans are made of is what is read.
    void checkSnapshot()
    {
        const twcore::TimelineSnapshot peeked = commands_.timeline.peek();
        const twcore::TimelineSnapshot whole = commands_.timeline.snapshot();
        for (std::size_t i = 0; i < whole.tracks.size(); ++i) {
            const twcore::TrackSnapshot& track = whole.tracks[i];
            ASSERT_EQ(track.sources.size(), peeked.tracks[i].sources.size());
            for (std::size_t j = 0; j < track.sources.size(); ++j) {
                const Range at = commands_.times(kSource, track.handle, static_cast<int>(j));
                EXPECT_TRUE(at.start == track.sources[j].startMs && at.stop == track.sources[j].stopMs);
                EXPECT_EQ(peeked.tracks[i].sources[j].startMs, at.start);
            }
        }
    }

    int itemCount()
    {
        int count = 0;
        for (Handle track : commands_.allTracks) {
            count += commands_.count(kSource, track) + commands_.count(kEffect, track);
        }
        return count;
    }

    int pick(int choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }

    template <class... Parts>
    void note(const Parts&... parts)
    {
        std::ostringstream text;
        (text << ... << parts) << ";\n";
        steps_ += text.str();
    }

    std::mt19937 random_;
    Commands commands_;
    std::string now_ = commands_.everything();
    std::string steps_;
};

TEST(TimelineWalk, RandomCommandsKeepEveryTrackInOrderAndApart) { Walk(20'240'607).run(kCommands); }

} // namespace
} // namespace model_test
