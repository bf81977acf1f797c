// The bars and the scale, stroke by stroke.

#include "support/logic_harness.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <sstream>

namespace logic_test {
namespace {

class BarsTest : public LogicTest {
protected:
    /// The kinds of strokes alone: "filled box box box box box text line".
    static std::string kinds(const PictureBox& picture)
    {
        std::string all;
        std::istringstream words(picture.drawing.inWords());
        for (std::string line; std::getline(words, line);) {
            all += (all.empty() ? "" : " ") + line.substr(0, line.find(' '));
        }
        return all;
    }
};

TEST_F(BarsTest, WholeBar)
{
    put("V 1000-3000 E 1000-3000 O 0-500#0 B 0-1000");
    moduleScaleRenderer::RenderAllBars();
    EXPECT_EQ(form.picVideo[0].drawing.inWords(), "filled 100 0 300 23 FFFF80\n"
                                                  "box 100 0 300 23 000000\n"
                                                  "box 102 2 102 21 FFFFFF\n"
                                                  "box 102 2 298 2 FFFFFF\n"
                                                  "box 299 2 299 22 C0C000\n"
                                                  "box 101 22 299 22 C0C000\n"
                                                  "text 110 5.5 still.bmp 80000008\n"
                                                  "line 288 0 300 12 000000\n");
    std::string effect = form.picVideo[0].drawing.inWords(); // alike but for colours and name
    for (const auto& [from, to] : {std::pair{"FFFF80", "80FF80"}, {"C0C000", "00C000"}, {"still.bmp", "Blur"}}) {
        for (std::size_t at; (at = effect.find(from)) != std::string::npos;) {
            effect.replace(at, std::strlen(from), to);
        }
    }
    EXPECT_EQ(form.picEffect[0].drawing.inWords(), effect);
    EXPECT_EQ(form.picOverlay[0].drawing.inWords().substr(0, 25), "filled 0 0 50 23 C0E0FF\nb");
    EXPECT_EQ(form.picAudio[0].drawing.inWords(), "");
    EXPECT_EQ(form.picAudio[1].drawing.inWords().substr(0, 26), "filled 0 0 100 23 80FFFF\nb");
}

TEST_F(BarsTest, CutAtBothEdgesOfTheView)
{
    put("V 0-900");    // ends ahead of the view
    put("V 900-6000"); // from 90 to 600 pixels, in a view from 100 to 500
    put("V 6000-7000");
    moduleScaleRenderer::AdjustScroll();
    form.hsb.SetValue(10);
    EXPECT_EQ(form.picVideo[0].drawing.inWords(),
              "filled -90 0 400 23 FFFF80\n" // 1000 - 900 ms, less the view's 100 px
              "box -10 0 500 23 000000\n"
              "box -8 2 -8 21 FFFFFF\n"
              "box -8 2 498 2 FFFFFF\n"
              "box 499 2 499 22 C0C000\n"
              "box -9 22 499 22 C0C000\n"
              "text 0 5.5 still.bmp 80000008\n"
              "line 488 0 500 12 000000\n");
}

TEST_F(BarsTest, WhatFits)
{
    const std::string body = "filled box box box box box";
    struct Case {
        std::int32_t widthPx;
        std::string source; // the name is 63 pixels wide
        std::string effect; // 28 pixels
    };
    const Case cases[] = {
        {11, body, body},
        {12, body + " line", body},
        {13, body + " line", body + " line"},
        {50, body + " line", body + " line"},
        {51, body + " line", body + " text line"},
        {85, body + " line", body + " text line"},
        {86, body + " text line", body + " text line"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.widthPx);
        engine::Bool16 ok = 0;
        const std::string item = "0-" + std::to_string(c.widthPx * 10);
        put("V " + item + " E " + item);
        moduleScaleRenderer::RenderAllBars();
        EXPECT_EQ(kinds(form.picVideo[0]), c.source);
        EXPECT_EQ(kinds(form.picEffect[0]), c.effect);
        check(timelineCalls->RemoveEffect(video(), 0, ok));
        remove(video(), 0);
    }
}

TEST_F(BarsTest, SelectedAndLocked)
{
    const auto strokes = [&] {
        moduleScaleRenderer::RenderAllBars();
        const std::string all = form.picVideo[0].drawing.inWords();
        return all.substr(0, all.find('\n')) + all.substr(all.rfind('\n', all.size() - 2));
    };
    put("V 0-1000 1000-3000 A 250-1500");
    select(video(), 1);
    EXPECT_EQ(strokes(), "filled 0 0 100 23 FFFF80\ndotted 101 1 299 22 000000\n");
    EXPECT_EQ(panel("SELECTION"), "0:00:01.000 - 0:00:03.000");
    select(audio(1), 0);
    strokes();
    EXPECT_EQ(panel("SELECTION"), "0:00:00.250 - 0:00:01.500") << "the last row drawn has the last word";

    form.chkLockAudio[0].Value = std::int16_t{1};
    form.chkLockVideo[0].Value = std::int16_t{1};
    forms::mdiTarnwick.sbr.Panel("SELECTION") = std::string("as it was");
    EXPECT_EQ(strokes(), "filled 0 0 100 23 8000000F\nline 288 0 300 12 000000\n");
    EXPECT_EQ(kinds(form.picAudio[0]), "filled box box box box box text line");
    EXPECT_EQ(panel("SELECTION"), "as it was");
    form.chkLockVideo[0].Value = std::int16_t{0};
    forms::mdiTarnwick.sbr.Panel("SELECTION") = std::string("as it was");
    form.imgEndSelHandle.Visible = true; // one handle is enough to keep the marks away
    EXPECT_EQ(strokes(), "filled 0 0 100 23 FFFF80\nline 288 0 300 12 000000\n");
    EXPECT_EQ(panel("SELECTION"), "as it was");
}

TEST_F(BarsTest, AsksForTheNameOfAStreamOnce)
{
    const Handle still = laid.stream('a');
    engine::Bool16 ok = 0;
    for (std::int16_t seq = 0; seq < 20; ++seq) {
        check(timelineCalls->InsertSource(video(), still, seq, seq * 1000, seq * 1000 + 1000, ok));
    }
    engineCalls.counts.clear();
    moduleScaleRenderer::RenderAllBars();
    EXPECT_EQ(engineCalls.counts["GetFileName"], 1);
    EXPECT_EQ(engineCalls.counts["GetSourceStream"], 5) << "items right of the view are left alone";
}

TEST_F(BarsTest, PicturesAndWavesLieBetweenFillAndOutline)
{
    put("V 1000-3000 B 0-2000=500-2500");
    forms::mdiTarnwick.mnuViewPicturesOnBars.Checked = forms::mdiTarnwick.mnuViewWavesOnBars.Checked = true;
    const auto wave = [&](std::int32_t ticks) {
        using Kind = DrawList::Kind;
        std::vector<engine::Peak> peaks;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        for (bool isThere = false; !isThere && std::chrono::steady_clock::now() < deadline;) {
            form.hsb.SetValue(ticks);
            moduleScaleRenderer::RenderAllBars();
            const auto& video = form.picVideo[0].drawing.strokes();
            const auto& sound = form.picAudio[1].drawing.strokes();
            isThere = std::ranges::count(video, Kind::kPicture, &DrawList::Stroke::kind) > 0
                      && std::ranges::count(sound, Kind::kWave, &DrawList::Stroke::kind) > 0
                      && std::ranges::all_of(sound.at(1).peaks, &engine::Peak::isKnown);
            peaks = isThere ? sound.at(1).peaks : peaks;
        }
        return peaks;
    };
    const auto peaks = wave(0);
    ASSERT_EQ(peaks.size(), 199u) << "from the outline on the left to that on the right";
    EXPECT_EQ(kinds(form.picAudio[1]), "filled wave box box box box box veil text line");
    std::string video = kinds(form.picVideo[0]);
    for (std::size_t at; (at = video.find("picture picture")) != std::string::npos;) {
        video.erase(at, 8); // as many as the bar has room for
    }
    EXPECT_EQ(video, "filled picture box box box box box veil text line");
    select(LogicTest::video(), 0);
    moduleScaleRenderer::RenderAllBars();
    EXPECT_TRUE(kinds(form.picVideo[0]).ends_with("line box dotted")) << "seen on a dark picture";
    form.chkLockVideo[0].Value = std::int16_t{1};
    moduleScaleRenderer::RenderAllBars();
    EXPECT_NE(kinds(form.picVideo[0]).find("picture veil box"), std::string::npos) << "grey while it is locked";
    const auto scrolled = wave(5); // the same times, 50 pixels further left
    EXPECT_EQ(std::vector(scrolled.end() - 100, scrolled.end()), std::vector(peaks.end() - 100, peaks.end()));
    forms::mdiTarnwick.mnuViewPicturesOnBars.Checked = forms::mdiTarnwick.mnuViewWavesOnBars.Checked = false;
    moduleScaleRenderer::RenderAllBars();
    EXPECT_EQ(kinds(form.picAudio[1]), "filled box box box box box text line");
}

TEST_F(BarsTest, Scale)
{
    form.picScale.ScaleWidth = 120;
    put("V 0-20000");
    frmTimeline::Form_Resize();
    form.hsb.SetValue(9); // the view begins at 90 pixels
    EXPECT_EQ(form.picScale.drawing.inWords(), "line 0 0 0 4 80000008\n"
                                               "line 10 0 10 8 80000008\n"
                                               "text -28.5 10 0:00:01.000 80000008\n"
                                               "line 20 0 20 4 80000008\n"
                                               "line 30 0 30 4 80000008\n"
                                               "line 40 0 40 4 80000008\n"
                                               "line 50 0 50 4 80000008\n"
                                               "line 60 0 60 4 80000008\n"
                                               "line 70 0 70 4 80000008\n"
                                               "line 80 0 80 4 80000008\n"
                                               "line 90 0 90 4 80000008\n"
                                               "line 100 0 100 4 80000008\n"
                                               "line 110 0 110 8 80000008\n"
                                               "text 71.5 10 0:00:02.000 80000008\n"
                                               "line 120 0 120 4 80000008\n");
    form.picScale.ScaleWidth = 5;
    showSelection(910, 1350); // less the view's 90
    EXPECT_EQ(form.picScale.drawing.inWords(), "filled 1 0 45 24 FFBBBB\n"
                                               "line 0 0 0 4 80000008\n");
}

} // namespace
} // namespace logic_test
