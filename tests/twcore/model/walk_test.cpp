// Seeded walks of calls with arguments of all kinds, also such as the program never makes: whatever comes, every track
// reads in order and apart. A failure prints the calls that led there, to be pasted into a test.

#include "twcore/model/calls.h"

#include <limits>
#include <random>
#include <sstream>

namespace model_test {
namespace {

constexpr unsigned kWalks = 600; // each on a new timeline
constexpr int kSteps = 60;
constexpr int kMaxItems = 12; // of a list; then it is thinned out

class Walk {
public:
    explicit Walk(unsigned seed) : random_(seed)
    {
        tracks_.streams.durations = {{1, 10'000}, {2, 3'333}, {3, 777}, {4, 40}, {5, 25'001}, {6, 0}};
    }

    void run()
    {
        for (int i = 0; i < kSteps && !::testing::Test::HasFailure(); ++i) {
            step();
        }
        if (::testing::Test::HasFailure()) {
            ADD_FAILURE() << "after\n" << calls_.str();
        }
    }

private:
    /// A few calls on one track as a command makes them, with nothing read in between.
    void step()
    {
        const auto before = texts();
        const auto on = static_cast<std::size_t>(pick(4));
        bool isTaken = false;
        for (int i = 1 + pick(4); i > 0; --i) {
            isTaken = call(tracks_.allTracks[on]) || isTaken;
        }
        if (pick(3) == 0) {
            checkSnapshot(); // settles before any reading does
        }
        checkOrder();
        const auto after = texts();
        for (std::size_t i = 0; i < after.size(); ++i) {
            EXPECT_TRUE((isTaken && i == on) || after[i] == before[i]) << before[i] << " became " << after[i];
        }
    }

    /// False when it was refused.
    bool call(Handle track)
    {
        const Kind kind = kKinds[pick(6) < 4 ? 0 : 1 + pick(2)];
        const int count = tracks_.count(kind, track);
        const int seq = pick(9) == 0 ? pick(3) * 32'768 - 32'768 : pick(count + 1);
        const Handle stream = pick(8); // not every one is there
        const std::int32_t a = time();
        const std::int32_t b = pick(5) == 0 ? time() : std::min(a, 1'000'000) + pick(9'000) - 500;
        const char* const name = pick(4) == 0 ? "" : "Blur";
        const auto onItem = [&](const char* what, auto... more) {
            note(what, "(Kind(", kind, "), ", track, ", ", seq, more..., ")");
        };
        int change = 0; // of the count
        bool isTaken = true;
        switch (count > kMaxItems ? 8 : pick(10)) {
        case 0:
            if (kind == kSource) {
                note("append(", track, ", ", stream, ", ", a, ")");
                isTaken = tracks_.append(track, stream, a);
            } else {
                note("addNamed(Kind(", kind, "), ", track, ", \"", name, "\", ", a, ", ", b, ")");
                isTaken = tracks_.addNamed(kind, track, name, a, b);
            }
            change = 1;
            break;
        case 1:
        case 2:
            if (kind == kSource) {
                note("insert(", track, ", ", stream, ", ", seq, ", ", a, ", ", b, ")");
                isTaken = tracks_.insert(track, stream, seq, a, b);
            } else {
                note("insertNamed(Kind(", kind, "), ", track, ", \"", name, "\", ", seq, ", ", a, ", ", b, ")");
                isTaken = tracks_.insertNamed(kind, track, name, seq, a, b);
            }
            change = 1;
            break;
        case 3:
        case 4:
            onItem("setTimes", ", ", a, ", ", b);
            isTaken = tracks_.setTimes(kind, track, seq, a, b);
            break;
        case 5:
            note("setMedia(", track, ", ", seq, ", ", a, ", ", b, ")");
            isTaken = tracks_.setMedia(track, seq, a, b);
            break;
        case 6:
            onItem("shift", ", ", a / 4 - 3'000);
            isTaken = tracks_.shift(kind, track, seq, a / 4 - 3'000);
            break;
        case 7:
            note("setMode(", track, ", ", seq, ", ", stream, ")");
            tracks_.setMode(track, seq, static_cast<std::int16_t>(stream));
            break;
        default:
            onItem("remove");
            isTaken = tracks_.remove(kind, track, seq);
            change = -1;
        }
        // An effect without a range is none.
        const bool isNone = kind == kEffect && change == 1 && b <= a;
        if (!isNone) {
            EXPECT_EQ(tracks_.count(kind, track), count + (isTaken ? change : 0));
        }
        return isTaken;
    }

    void checkOrder()
    {
        for (Handle track : tracks_.allTracks) {
            std::int32_t lastStop = 0;
            for (Kind kind : {kTransition, kEffect, kSource}) {
                int seq = 0;
                lastStop = 0;
                for (Range at = tracks_.times(kind, track, 0); at.ok; at = tracks_.times(kind, track, ++seq)) {
                    EXPECT_GE(at.start, lastStop) << "track " << track << ", kind " << kind << ", item " << seq;
                    EXPECT_GT(at.stop, at.start) << "track " << track << ", kind " << kind << ", item " << seq;
                    lastStop = at.stop;
                }
                EXPECT_EQ(seq, tracks_.count(kind, track));
            }
            EXPECT_EQ(tracks_.duration(track), lastStop);
        }
    }

    /// What plans and projects are made of is what is read.
    void checkSnapshot()
    {
        const twcore::TimelineSnapshot peeked = tracks_.timeline.peek();
        const twcore::TimelineSnapshot whole = tracks_.timeline.snapshot();
        Tracks other;
        other.streams = tracks_.streams;
        for (std::size_t i = 0; i < whole.tracks.size(); ++i) {
            const twcore::TrackSnapshot& track = whole.tracks[i];
            ASSERT_EQ(track.sources.size(), peeked.tracks[i].sources.size());
            for (std::size_t j = 0; j < track.sources.size(); ++j) {
                EXPECT_EQ(peeked.tracks[i].sources[j].startMs, track.sources[j].startMs);
            }
            EXPECT_TRUE(other.timeline.restore(track.handle, track));
        }
        EXPECT_EQ(other.everything(), tracks_.everything());
    }

    std::vector<std::string> texts()
    {
        std::vector<std::string> all;
        for (Handle track : tracks_.allTracks) {
            all.push_back(tracks_.text(track));
        }
        return all;
    }

    int pick(int choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }

    std::int32_t time()
    {
        using Limits = std::numeric_limits<std::int32_t>;
        const std::int32_t odd[] = {-1, 0, -4'000, Limits::max(), Limits::max() - 50, Limits::min()};
        return pick(12) == 0 ? odd[pick(6)] : pick(30'000);
    }

    template <class... Parts>
    void note(const Parts&... parts)
    {
        (calls_ << ... << parts) << ";\n";
    }

    std::mt19937 random_;
    Tracks tracks_;
    std::ostringstream calls_;
};

TEST(TimelineWalk, WhateverIsCalledEveryTrackStaysInOrderAndApart)
{
    for (unsigned seed = 1; seed <= kWalks && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Walk(seed).run();
    }
}

} // namespace
} // namespace model_test
