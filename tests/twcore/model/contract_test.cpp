// What every operation answers at its edges: unknown tracks and items, full tracks, far times, names, keys, loading.

#include "twcore/model/calls.h"

#include <limits>

namespace model_test {
namespace {

constexpr std::int32_t kFar = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kFarBelow = std::numeric_limits<std::int32_t>::min();

struct Bench : Tracks {
    Bench() { streams.durations = {{1, 10'000}, {2, 5'000}, {3, kFar}}; }
};

TEST(TimelineContract, AnUnknownTrackIsAFailureOfEveryOperation)
{
    Bench bench;
    auto& engine = bench.engine;
    const Handle none = 99;
    Bool16 ok = 1;
    std::int16_t small = 1;
    std::int32_t a = 1, b = 1;
    char buffer[4] = {'x', 'x', 'x', 'x'};
    std::vector<engine::Status> answers{engine.AppendSource(none, 1, 0, ok),
                                        engine.AddEffectAt(none, "x", 0, 1, ok),
                                        engine.AddTransitionAt(none, "x", 0, 1, ok),
                                        engine.InsertSource(none, 1, 0, 0, 1, ok),
                                        engine.InsertEffect(none, "x", 0, 0, 1, 0, ok),
                                        engine.InsertTransition(none, "x", 0, 0, 1, 0, ok),
                                        engine.IsVideoTrack(none, ok),
                                        engine.GetSourceMediaTimes(none, 0, a, b, ok),
                                        engine.SetSourceMediaTimes(none, 0, 0, 1, ok),
                                        engine.GetSourceStream(none, 0, a),
                                        engine.GetEffectName(none, 0, buffer),
                                        engine.GetTransitionName(none, 0, buffer),
                                        engine.GetTrackDuration(none, a),
                                        engine.GetTrackLink(none, ok),
                                        engine.IsSourceSelected(none, 0, ok),
                                        engine.IsEffectItemSelected(none, 0, ok),
                                        engine.SetTrackLink(none, 1),
                                        engine.SetTrackDisabled(none, 1),
                                        engine.SetSourceStretchMode(none, 0, 1),
                                        engine.GetSourceStretchMode(none, 0, small),
                                        engine.SetKeyColor(none, 0, 1, 1, 1, ok),
                                        engine.GetKeyRed(none, 0, small),
                                        engine.GetKeyGreen(none, 0, small),
                                        engine.GetKeyBlue(none, 0, small),
                                        engine.SetKeyParameter(none, 0, "x", 1, ok),
                                        engine.ClearKeyParameters(none, 0)};
    for (const Kind kind : kKinds) {
        for (const auto& status : {(engine.*kGetCount[kind])(none, small), (engine.*kGetTimes[kind])(none, 0, a, b, ok),
                                   (engine.*kSetTimes[kind])(none, 0, 0, 1, ok), (engine.*kShift[kind])(none, 0, 1, ok),
                                   (engine.*kRemove[kind])(none, 0, ok), (engine.*kSelect[kind])(none, 0, 1)}) {
            answers.push_back(status);
        }
    }
    for (std::size_t i = 0; i < answers.size(); ++i) {
        EXPECT_EQ(answers[i].code(), 0x80070057u) << "operation " << i;
    }
}

TEST(TimelineContract, AnUnknownItemIsNotOkAndAnswersZero)
{
    Bench bench;
    const Handle track = bench.overlay;
    EXPECT_EQ(bench.duration(track), 0);
    for (int items : {0, 1}) {
        for (int seq : {-1, items, 32'767}) {
            SCOPED_TRACE(seq);
            for (Kind kind : kKinds) {
                const Range times = bench.times(kind, track, seq);
                EXPECT_FALSE(times.ok || times.start != 0 || times.stop != 0);
                EXPECT_FALSE(bench.setTimes(kind, track, seq, 1, 2));
                EXPECT_FALSE(bench.shift(kind, track, seq, 5));
                EXPECT_FALSE(bench.remove(kind, track, seq));
                bench.select(kind, track, seq);
            }
            const Range media = bench.media(track, seq);
            EXPECT_FALSE(media.ok || media.start != 0 || media.stop != 0 || bench.setMedia(track, seq, 1, 2));
            EXPECT_FALSE(bench.insert(track, 1, seq < 0 ? seq : seq + 1, 0, 5));
            const Key key = bench.key(track, seq);
            EXPECT_EQ(bench.stream(track, seq) + bench.mode(track, seq) + key.red + key.green + key.blue, 0);
            EXPECT_FALSE(bench.selected(kSource, track, seq) || bench.selected(kEffect, track, seq));
            EXPECT_EQ(bench.name(kEffect, track, seq, 10) + bench.name(kTransition, track, seq, 10), "");
        }
        if (items == 0) {
            bench.appendKeyed(track, 1);
            bench.addNamed(kEffect, track, "Blur", 0, 10);
        }
    }
    EXPECT_EQ(bench.text(track), "A 0-10000[0-10000] | Blur 0-10 | DxtKey 0-10000#0,0,0");
    EXPECT_FALSE(bench.append(track, 77)) << "there is no such stream";
    EXPECT_FALSE(bench.insert(track, 77, 0, 0, 5));
}

TEST(TimelineContract, ATrackHoldsWhatACountCanTell)
{
    Bench bench;
    for (int i = 0; i < 32'767; ++i) {
        ASSERT_TRUE(bench.append(bench.video, 2, i * 10));
        ASSERT_TRUE(bench.setTimes(kSource, bench.video, i, i * 10, i * 10 + 10));
    }
    EXPECT_FALSE(bench.append(bench.video, 2));
    EXPECT_FALSE(bench.insert(bench.video, 2, 0, 0, 5));
    EXPECT_EQ(bench.count(kSource, bench.video), 32'767);
    EXPECT_EQ(bench.duration(bench.video), 327'670);
    bench.setTimes(kSource, bench.video, 0, 0, kFar - 10); // all others are pushed against the end of time
    EXPECT_EQ(bench.duration(bench.video), kFar);
    EXPECT_EQ(bench.times(kSource, bench.video, 0).stop, kFar - 32'766);
}

TEST(TimelineContract, FarTimesDoNotOverflow)
{
    Bench bench;
    const Handle track = bench.video;
    bench.append(track, 1);
    EXPECT_TRUE(bench.append(track, 3)); // longer than what is left of time
    EXPECT_EQ(bench.text(track), "A 0-10000[0-10000] C 10000-2147483647[0-2147483647]");
    EXPECT_FALSE(bench.append(track, 1)) << "there is no room behind it";
    bench.remove(kSource, track, 1);

    bench.append(track, 2);
    EXPECT_TRUE(bench.shift(kSource, track, 1, kFar));
    EXPECT_EQ(bench.text(track), "A 0-10000[0-10000] B 2147478647-2147483647[0-5000]");
    EXPECT_TRUE(bench.shift(kSource, track, 1, kFarBelow));
    EXPECT_TRUE(bench.setTimes(kSource, track, 0, kFarBelow, kFar));
    bench.setMedia(track, 0, kFarBelow, kFar);
    EXPECT_EQ(bench.text(track), "A 0-2147483646[0-2147483647] B 2147483646-2147483647[0-5000]");
    EXPECT_FALSE(bench.addNamed(kEffect, track, "Blur", kFar, -1));
    EXPECT_FALSE(bench.addNamed(kEffect, track, "Blur", kFarBelow, kFar));
}

TEST(TimelineContract, NamesAndBuffers)
{
    struct Case {
        const char* name;
        std::size_t bufferLength;
        const char* read;
    };
    const Case cases[] = {
        {"Wave", 10, "Wave"},
        {"Pixelate all", 260, "Pixelate a"},
        {"123456789\xC3\xA4", 10, "123456789"}, // no half of a character is kept
        {"12345678\xC3\xA4z", 20, "12345678\xC3\xA4"},
        {"\xE2\x82\xAC\xE2\x82\xAC", 5, "\xE2\x82\xAC"}, // nor read
        {"\xF0\x9F\x8E\xAC", 3, ""},
        {"Wave", 0, ""},
    };
    for (const Case& it : cases) {
        SCOPED_TRACE(it.name);
        Bench bench;
        bench.insertNamed(kEffect, bench.video, it.name, 0, 0, 100);
        bench.addNamed(kTransition, bench.video, it.name, 0, 100);
        for (Kind kind : {kEffect, kTransition}) {
            EXPECT_EQ(bench.name(kind, bench.video, 0, it.bufferLength), it.read);
        }
    }
}

TEST(TimelineContract, Keys)
{
    Bench bench;
    bench.appendKeyed(bench.overlay, 1);
    Bool16 ok = 0;
    check(bench.engine.SetKeyColor(bench.overlay, 0, -1, 256, 77, ok));
    EXPECT_EQ(ok, engine::kTrue);
    EXPECT_EQ(bench.text(bench.overlay), "A 0-10000[0-10000] | DxtKey 0-10000#0,255,77");
    for (int value : {3, 4}) {
        check(bench.engine.SetKeyParameter(bench.overlay, 0, "Softness", value, ok));
    }
    using Parameters = std::vector<std::pair<std::string, std::int32_t>>;
    const auto parameters = [&] { return bench.timeline.peek().tracks.back().transitions.at(0).parameters; };
    EXPECT_EQ(parameters(), (Parameters{{"KeyType", 0}, {"Softness", 4}}));
    check(bench.engine.ClearKeyParameters(bench.overlay, 0));
    EXPECT_EQ(parameters(), Parameters{});
    EXPECT_EQ(bench.text(bench.overlay), "A 0-10000[0-10000] | DxtKey 0-10000#0,0,0");

    bench.insertNamed(kTransition, bench.overlay, "Half", 0, 50, 0); // lasts as long as its source, and pushes
    bench.insertNamed(kTransition, bench.overlay, "No source", 2, 0, 0);
    EXPECT_EQ(bench.text(bench.overlay), "A 0-10000[0-10000] | Half 50-10050#0,0,0, DxtKey 10050-20050#0,0,0, "
                                         "No source 20050-22050#0,0,0");
    EXPECT_TRUE(bench.insertNamed(kEffect, bench.overlay, "Blur", 0, 50, 0));
    EXPECT_EQ(bench.count(kEffect, bench.overlay), 0) << "an effect without range is none";
}

TEST(TimelineContract, SnapshotAndLoading)
{
    Bench bench;
    bench.append(bench.video, 1), bench.append(bench.audio1, 2);
    bench.appendKeyed(bench.overlay, 2);
    bench.addNamed(kEffect, bench.video, "Blur", 100, 600);
    bench.setMode(bench.video, 0, -30'000);
    bench.select(kSource, bench.video, 0);
    bench.applyKey(bench.overlay, 0, {1, 2, 3});
    check(bench.engine.SetTrackLink(bench.audio1, 5));
    check(bench.engine.SetTrackDisabled(bench.audio1, 5));
    check(bench.engine.SetEffectsEnabled(engine::kFalse));
    for (const std::int16_t width : {std::int16_t{720}, std::int16_t{0}}) {
        check(bench.engine.SetFrameSize(width, 576));
    }
    const twcore::TimelineSnapshot whole = bench.timeline.snapshot();
    EXPECT_TRUE(whole.frameWidth == 720 && whole.frameHeight == 576 && !whole.effectsEnabled);
    ASSERT_EQ(whole.tracks.size(), 4u);
    EXPECT_TRUE(whole.tracks[1].linked && whole.tracks[1].disabled && !whole.tracks[1].isVideo);
    EXPECT_TRUE(whole.tracks[0].isVideo && whole.tracks[0].sources.at(0).selected);

    Bench other;
    for (const twcore::TrackSnapshot& track : whole.tracks) {
        EXPECT_TRUE(other.timeline.restore(track.handle, track));
    }
    EXPECT_EQ(other.everything(), bench.everything());
    EXPECT_TRUE(other.selected(kSource, other.video, 0));

    // A file may hold anything: it reads in order and apart all the same.
    twcore::TrackContents odd;
    odd.sources = {{1, 500, 900, 0, 400, 0, false}, {2, -70, 630, 7, 5, 1, false}, {2, 9, 9, 0, 40, 0, false}};
    odd.effects = {{"Blur", 5, 5, false}, {"Wave", -5, 5, false}};
    odd.transitions = {{"DxtKey", 0, 0, false, -1, 999, 5, {}}};
    EXPECT_TRUE(other.timeline.restore(other.overlay, odd));
    EXPECT_EQ(other.text(other.overlay), "A 500-900[0-400] B 900-1600[7-5]*1 B 1600-1640[0-40] | Wave 0-10 | "
                                         "DxtKey 0-400#0,255,5");
    EXPECT_FALSE(other.timeline.restore(99, odd));
}

TEST(TimelineContract, WhatShowsAtOnceRunsTheHookWithoutSettling)
{
    Bench bench;
    bench.append(bench.video, 1);
    bench.text(bench.video);
    std::int32_t seenStopMs = 0;
    twcore::TimelineInterface engine(bench.timeline,
                                     [&] { seenStopMs = bench.timeline.peek().tracks.at(0).sources.back().stopMs; });
    bench.insert(bench.video, 2, 0, 4'000, 0);
    check(engine.SetSourceStretchMode(bench.video, 0, 1));
    EXPECT_EQ(seenStopMs, 19'000);
    bench.remove(kSource, bench.video, 0);
    EXPECT_EQ(bench.text(bench.video), "A 0-10000[0-10000]");
    check(engine.SetTrackDisabled(bench.video, 1));
    EXPECT_EQ(seenStopMs, 10'000);
}

TEST(TimelineContract, NoExceptionLeavesAnOperation)
{
    struct Throwing final : twcore::StreamCatalogue {
        bool acquire(Handle stream) override
        {
            if (stream == 1) {
                throw std::bad_alloc();
            }
            throw std::runtime_error("broken");
        }
        std::int32_t durationMs(Handle) const override { return 0; }
    } streams;
    twcore::HandleCounter handles;
    twcore::Timeline timeline(streams, handles);
    twcore::TimelineInterface engine(timeline);
    Handle track = 0;
    Bool16 ok = 1;
    check(engine.CreateTrack(engine::kTrue, track));
    EXPECT_EQ(engine.AppendSource(track, 1, -1, ok), engine::kOutOfMemory);
    EXPECT_EQ(engine.InsertSource(track, 2, 0, 0, 0, ok), engine::kUnexpected);
    EXPECT_EQ(ok, engine::kFalse);
}

} // namespace
} // namespace model_test
