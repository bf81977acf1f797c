// How a track keeps its items in order and apart: each case is a layout, the calls of a command, and the whole track as
// it reads afterwards, in timeline and media time.

#include "twcore/model/calls.h"

#include <functional>

namespace model_test {
namespace {

/// A at 0, B behind it, C behind B, each 10 s of its own stream; D lasts 8 s, E 1 s and F nothing.
struct Bench : Tracks {
    Bench() { streams.durations = {{1, 10'000}, {2, 10'000}, {3, 10'000}, {4, 8'000}, {5, 1'000}, {6, 0}}; }

    void abc()
    {
        for (Handle stream : {1, 2, 3}) {
            append(video, stream);
        }
    }
    /// A source as it stands after an earlier command.
    void lay(Handle stream, Range time, Range media)
    {
        const int seq = count(kSource, video);
        append(video, stream, time.start);
        setTimes(kSource, video, seq, time.start, time.stop);
        setMedia(video, seq, media.start, media.stop);
        text(video);
    }
    /// C, ten seconds from there of its medium, with its start drawn out by five.
    void drawnOut(std::int32_t mediaStart)
    {
        lay(3, {20'000, 30'000}, {mediaStart, mediaStart + 10'000}), set(0, 15'000, 30'000);
    }
    // Short words for calls on the video track.
    void add(Handle stream, std::int32_t start = -1) { append(video, stream, start); }
    void put(Handle stream, int seq, std::int32_t start, std::int32_t stop) { insert(video, stream, seq, start, stop); }
    void take(int seq) { remove(kSource, video, seq); }
    void set(int seq, std::int32_t start, std::int32_t stop) { setTimes(kSource, video, seq, start, stop); }
    void play(int seq, std::int32_t start, std::int32_t stop) { setMedia(video, seq, start, stop); }
    void stretch(int seq, std::int16_t mode) { setMode(video, seq, mode); }
    void look() { text(video); }
    /// With the media that stay at the source's speed, as a cut of one of its ends does it.
    void setBoth(int seq, Range time, Range media)
    {
        set(seq, time.start, time.stop);
        setMedia(video, seq, media.start, media.stop);
    }
};

struct Case {
    const char* name;
    std::function<void(Bench&)> run;
    const char* after; // of the video track
};

void expectAll(const std::vector<Case>& cases)
{
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        Bench bench;
        it.run(bench);
        EXPECT_EQ(bench.text(bench.video), it.after);
        const twcore::TimelineSnapshot once = bench.timeline.snapshot();
        EXPECT_TRUE(bench.timeline.restore(bench.video, once.tracks.at(0)));
        EXPECT_EQ(bench.text(bench.video), it.after) << "saved and opened";
    }
}

TEST(TrackRules, CallsLeaveWhatTheyDoNotMean)
{
    expectAll({
        {"ends that are cut leave what follows",
         [](Bench& b) {
             b.abc(), b.setBoth(0, {0, 5'000}, {0, 5'000}), b.setBoth(1, {15'000, 20'000}, {5'000, 10'000});
         },
         "A 0-5000[0-5000] B 15000-20000[5000-10000] C 20000-30000[0-10000]"},
        {"and it does not creep at an odd speed",
         [](Bench& b) {
             b.abc(), b.set(2, 20'000, 33'337);
             b.setBoth(1, {15'001, 20'000}, {5'001, 10'000}), b.look();
             b.setBoth(0, {0, 1'000}, {0, 1'000}), b.setBoth(1, {17'003, 20'000}, {7'003, 10'000});
         },
         "A 0-1000[0-1000] B 17003-20000[7003-10000] C 20000-33337[0-10000]"},
        {"a source taken to another place", [](Bench& b) { b.abc(), b.take(2), b.put(3, 1, 10'000, 20'000); },
         "A 0-10000[0-10000] C 10000-20000[0-10000] B 20000-30000[0-10000]"},
        {"a shift takes those behind it along",
         [](Bench& b) {
             b.lay(1, {0, 10'000}, {0, 10'000}), b.lay(2, {12'000, 20'000}, {0, 8'000});
             b.lay(3, {25'000, 26'000}, {0, 1'000}), b.shift(kSource, b.video, 1, -2'000);
         },
         "A 0-10000[0-10000] B 10000-18000[0-8000] C 23000-24000[0-1000]"},
        {"a shift stops at the beginning", [](Bench& b) { b.add(1, 300), b.shift(kSource, b.video, 0, -500); },
         "A 0-10000[0-10000]"},
        {"a source in two parts keeps its mode",
         [](Bench& b) {
             b.abc(), b.stretch(1, 3), b.setBoth(1, {10'000, 14'000}, {0, 4'000});
             b.put(2, 2, 14'000, 20'000), b.play(2, 4'000, 10'000), b.stretch(2, 3);
         },
         "A 0-10000[0-10000] B 10000-14000[0-4000]*3 B 14000-20000[4000-10000]*3 C 20000-30000[0-10000]"},
    });
}

TEST(TrackRules, Overlap)
{
    expectAll({
        {"a standing item loses its head at its own rate",
         [](Bench& b) {
             b.abc(), b.set(2, 20'000, 30'000), b.look(), b.play(2, 1'000, 4'000);
             b.set(2, 15'000, 25'000);
         },
         "A 0-10000[0-10000] B 10000-20000[0-10000] C 20000-25000[2500-4000]"},
        {"one that does not reach past the end ahead moves whole", [](Bench& b) { b.abc(), b.set(1, 2'000, 9'000); },
         "A 0-10000[0-10000] B 10000-17000[0-10000] C 20000-30000[0-10000]"},
        {"one that has not been set moves whole", [](Bench& b) { b.abc(), b.look(), b.set(0, 0, 12'000); },
         "A 0-12000[0-10000] B 12000-22000[0-10000] C 22000-32000[0-10000]"},
        {"a new one moves whole, though it reaches past",
         [](Bench& b) { b.add(1), b.put(5, 1, 3'000, 0), b.set(1, 3'000, 14'000); },
         "A 0-10000[0-10000] E 10000-21000[0-1000]"},
        {"what is removed ahead of it changes nothing for it",
         [](Bench& b) { b.abc(), b.look(), b.set(2, 15'000, 25'000), b.take(0); },
         "B 10000-20000[0-10000] C 20000-25000[5000-10000]"},
        {"back at its old place it has its old media",
         [](Bench& b) { b.abc(), b.look(), b.set(1, 3'333, 20'000), b.play(1, 77, 7'777); },
         "A 0-10000[0-10000] B 10000-20000[0-10000] C 20000-30000[0-10000]"},
        {"nothing is below 0", [](Bench& b) { b.add(1), b.look(), b.set(0, -2'000, 8'000); }, "A 0-8000[2000-10000]"},
        {"a new one neither", [](Bench& b) { b.add(5, -400); }, "E 0-1000[0-1000]"},
        {"settling is for good",
         [](Bench& b) { b.abc(), b.set(0, 0, 12'000), b.duration(b.video), b.set(0, 0, 10'000); },
         "A 0-10000[0-10000] B 12000-22000[0-10000] C 22000-32000[0-10000]"},
        {"counts and modes do not settle",
         [](Bench& b) {
             b.abc(), b.look(), b.set(0, 0, 12'000), b.count(kSource, b.video), b.mode(b.video, 1);
             b.stream(b.video, 1), b.selected(kSource, b.video, 1), b.set(0, 0, 10'000);
         },
         "A 0-10000[0-10000] B 10000-20000[0-10000] C 20000-30000[0-10000]"},
    });
}

TEST(TrackRules, Order)
{
    expectAll({
        {"an appended item set ahead of its predecessor goes there, ahead of an equal one",
         [](Bench& b) {
             b.add(1), b.add(2), b.add(5);
             b.set(2, 10'000, 11'000), b.play(2, 100, 900), b.stretch(2, 1);
         },
         "A 0-10000[0-10000] E 10000-11000[100-900]*1 B 11000-21000[0-10000]"},
        {"before the next call that is not about it",
         [](Bench& b) { b.add(1), b.add(5), b.set(1, 0, 1'000), b.take(0); }, "A 0-10000[0-10000]"},
        {"and when its times are read at once it still has its number",
         [](Bench& b) {
             b.add(1), b.add(5), b.set(1, 0, 1'000);
             EXPECT_EQ(b.times(kSource, b.video, 1).stop, 1'000);
             b.stretch(1, 2);
         },
         "E 0-1000[0-1000]*2 A 1000-11000[0-10000]"},
        {"nor does it keep it beyond a call on another list",
         [](Bench& b) {
             b.add(1), b.add(5), b.set(1, 0, 1'000);
             b.remove(kTransition, b.video, 0), b.stretch(1, 2);
         },
         "E 0-1000[0-1000] A 1000-11000[0-10000]*2"},
        {"an item that is only appended stays last, for all that is not taken",
         [](Bench& b) { b.add(1), b.add(5, 0), b.set(1, 9, 5); }, "A 0-10000[0-10000] E 10000-11000[0-1000]"},
        {"an inserted one keeps its number", [](Bench& b) { b.add(1), b.put(5, 1, 0, 0), b.set(1, 0, 1'000); },
         "A 0-10000[0-10000] E 10000-11000[0-1000]"},
        {"a standing one too", [](Bench& b) { b.abc(), b.look(), b.set(2, 0, 4'000); },
         "A 0-10000[0-10000] B 10000-20000[0-10000] C 20000-24000[0-10000]"},
    });
}

TEST(TrackRules, RangesThatMakeNoSense)
{
    expectAll({
        {"are not taken, nor the media range that follows",
         [](Bench& b) { b.add(1), b.set(0, 5, 5), b.play(0, 1, 2), b.stretch(0, 1); }, "A 0-10000[0-10000]*1"},
        {"but the one after that", [](Bench& b) { b.add(1), b.set(0, 9, 5), b.play(0, 1, 2), b.play(0, 3, 4); },
         "A 0-10000[3-4]"},
        {"and one that follows a range that was taken",
         [](Bench& b) { b.add(1), b.set(0, 9, 5), b.set(0, 5, 9), b.play(0, 1, 2); }, "A 5-9[1-2]"},
        {"a source without range lasts as long as its stream, its media range is taken",
         [](Bench& b) { b.put(5, 0, 700, 0), b.play(0, 20, 30); }, "E 700-1700[20-30]"},
        {"not so behind a stop that was meant", [](Bench& b) { b.put(5, 0, 700, 600), b.play(0, 20, 30); },
         "E 700-1700[0-1000]"},
        {"nothing lasts no time at all", [](Bench& b) { b.add(6), b.add(5); }, "F 0-1[0-0] E 1-1001[0-1000]"},
        {"a media range may be anything", [](Bench& b) { b.abc(), b.play(0, 9, 3), b.play(1, -5, 99'999); },
         "A 0-10000[9-3] B 10000-20000[-5-99999] C 20000-30000[0-10000]"},
    });
}

TEST(TrackRules, MediaMovesOnlyAStartThatWasDrawnOut)
{
    expectAll({
        {"over a gap, back to its old start", [](Bench& b) { b.drawnOut(0), b.play(0, -5'000, 10'000); },
         "C 20000-30000[0-10000]"},
        {"though another comes in ahead before anyone looks",
         [](Bench& b) {
             b.lay(1, {0, 5'000}, {0, 5'000}), b.lay(3, {20'000, 30'000}, {0, 10'000}), b.set(1, 15'000, 30'000);
             b.play(1, -5'000, 10'000), b.put(5, 0, 0, 1'000);
         },
         "E 0-1000[0-1000] A 1000-6000[0-5000] C 20000-30000[0-10000]"},
        {"within a millisecond of it", [](Bench& b) { b.drawnOut(0), b.play(0, -4'998, 10'000); },
         "C 20000-30000[0-10000]"},
        {"but no more than that",
         [](Bench& b) {
             b.drawnOut(0);
             b.play(0, -4'997, 10'000);
         },
         "C 19998-30000[0-10000]"},
        {"a millisecond of a slow medium counts as long as it lasts",
         [](Bench& b) {
             b.lay(5, {20'000, 30'000}, {0, 1'000}), b.set(0, 15'006, 30'000);
             b.play(0, -499, 1'000);
         },
         "E 20000-30000[0-1000]"},
        {"which a shift carries along",
         [](Bench& b) {
             b.lay(3, {20'000, 30'000}, {0, 10'000}), b.shift(kSource, b.video, 0, 5'000);
             b.set(0, 20'000, 35'000), b.play(0, -5'000, 10'000);
         },
         "C 25000-35000[0-10000]"},
        {"not without a media range of its own", [](Bench& b) { b.drawnOut(-300); }, "C 15000-30000[-300-9700]"},
        {"and not past it: black that stood stays", [](Bench& b) { b.drawnOut(-300), b.play(0, -5'300, 9'700); },
         "C 20000-30000[-300-9700]"},
        {"as far as the medium reaches",
         [](Bench& b) {
             b.lay(3, {20'000, 26'000}, {2'000, 8'000}), b.set(0, 15'000, 26'000), b.play(0, -3'000, 8'000);
         },
         "C 18000-26000[0-8000]"},
        {"not a start that was drawn in",
         [](Bench& b) {
             b.lay(1, {0, 3'000}, {100, 1'100}), b.set(0, 1'000, 3'000), b.play(0, -400, 1'100);
         },
         "A 1000-3000[-400-1100]"},
        {"nor one that moved with its stop",
         [](Bench& b) {
             b.lay(3, {20'000, 30'000}, {0, 10'000}), b.set(0, 15'000, 29'000), b.play(0, -5'000, 9'000);
         },
         "C 15000-29000[-5000-9000]"},
        {"nor a new one", [](Bench& b) { b.put(3, 0, 20'000, 0), b.set(0, 15'000, 30'000), b.play(0, -5'000, 9'000); },
         "C 15000-30000[-5000-9000]"},
    });
}

TEST(TrackRules, EffectsAddedByTime)
{
    struct Step {
        std::int32_t start, stop;
        bool ok;
        const char* effects;
    };
    const Step steps[] = {
        {0, -1, false, ""}, // no source yet
        {3'000, 4'000, true, " | Blur 3000-4000"},
        {1'500, -1, true, " | Blur 1500-3000, Blur 3000-4000"},
        {9'000, -1, true, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000"},
        {10'000, -1, false, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000"},
        {2'999, 3'000, false, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000"},
        {1'000, 1'501, false, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000"},
        {800, 800, true, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000"}, // no range: nothing comes of it
        {12'000, 13'000, true, " | Blur 1500-3000, Blur 3000-4000, Blur 9000-10000, Blur 12000-13000"},
        {5'000, -1, true, " | Blur 1500-3000, Blur 3000-4000, Blur 5000-7000, Blur 9000-10000, Blur 12000-13000"},
    };
    Bench bench;
    for (const Step& step : steps) {
        SCOPED_TRACE(std::to_string(step.start) + "-" + std::to_string(step.stop));
        EXPECT_EQ(bench.addNamed(kEffect, bench.video, "Blur", step.start, step.stop), step.ok);
        const std::string text = bench.text(bench.video);
        EXPECT_EQ(text.substr(std::min(text.find(" |"), text.size())), step.effects);
        if (bench.count(kSource, bench.video) == 0) {
            bench.append(bench.video, 1);
        }
    }
    bench.insertNamed(kEffect, bench.video, "Wave", 0, 0, 1'600); // pushes the first, which pushes the second
    EXPECT_FALSE(bench.addNamed(kEffect, bench.video, "Blur", 4'000, 4'100));
}

} // namespace
} // namespace model_test
