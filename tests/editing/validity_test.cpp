// What is valid on small layouts.

#include "timeline/timeline_harness.h"

#include "core/forms/frmMediaList.h"
#include "editing/moduleTWState.h"
#include "editing/selection_edges.h"

#include <sstream>

namespace editing_test {
namespace {

using namespace moduleTWState;
using engine::Handle;

class ValidityTest : public timeline_test::TimelineTest {
protected:
    /// video  0-1000 (of a still of 5000) 1000-6000     effects  500-1500     overlay  2000-3000     Audio 1  0-500
    void fill()
    {
        put(video(), 0, 1000);
        put(video(), 1000, 6000);
        putEffect(500, 1500);
        put(state::OverlayTrack, 2000, 3000);
        put(audio(1), 0, 500);
    }
    /// Words: v0 v1 e o a select; Lv Le Lo La lock; -v -e -o -a unlink.
    void apply(const std::string& words)
    {
        moduleTimeline::ClearMFSTSubSelections();
        moduleTimeline::ReInitLinkLockDisable();
        std::istringstream all(words);
        for (std::string word; all >> word;) {
            if (word[0] == 'L') {
                boxOf(word[1], form.chkLockVideo[0], form.chkLockEffect[0], form.chkLockOverlay[0],
                      form.chkLockAudio[0])
                    .Value = std::int16_t{1};
            } else if (word[0] == '-') {
                boxOf(word[1], form.chkLinkVideo[0], form.chkLinkEffect[0], form.chkLinkOverlay[0],
                      form.chkLinkAudio[0])
                    .Value = std::int16_t{0};
            } else if (word[0] == 'e') {
                engine::check(timelineCalls->SetEffectSelected(video(), 0, engine::kTrue));
            } else {
                const Handle track = word[0] == 'v' ? video() : word[0] == 'o' ? state::OverlayTrack : audio(1);
                select(track, word == "v1" ? 1 : 0);
            }
        }
    }
    static CheckBox& boxOf(char row, CheckBox& v, CheckBox& e, CheckBox& o, CheckBox& a)
    {
        return row == 'v' ? v : row == 'e' ? e : row == 'o' ? o : a;
    }
    /// The questions that are answered with yes.
    static std::string answers()
    {
        const std::pair<const char*, bool (*)()> questions[] = {
            {"noVideo", IsVideoTrackEmpty},
            {"noEffect", IsEffectTrackEmpty},
            {"noOverlay", IsOverlayTrackEmpty},
            {"video", IsVideoSourceSelected},
            {"audio", IsAudioSourceSelected},
            {"audio1", IsAudio1SourceSelected},
            {"audio2", IsAudio2SourceSelected},
            {"overlay", IsOverlaySourceSelected},
            {"edit", IsEditingValid},
            {"restore", IsRestoreSizeValid},
            {"key", IsSetOverlayTransparencyValid},
        };
        std::string all;
        for (const auto& [name, question] : questions) {
            all += question() ? std::string(all.empty() ? "" : " ") + name : "";
        }
        return all;
    }
};

TEST_F(ValidityTest, EmptyTimeline)
{
    EXPECT_EQ(answers(), "noVideo noEffect noOverlay");
    showSelection(10, 90);
    EXPECT_EQ(answers(), "noVideo noEffect noOverlay");
    putEffect(0, 100); // effects alone are no timeline
    apply("e");
    EXPECT_EQ(answers(), "noVideo noOverlay");
    EXPECT_FALSE(IsAnyEffectSelected(video()));
    moduleTimeline::ShowSelSliders(false);
    put(audio(2), 0, 100);
    select(audio(2), 0);
    EXPECT_EQ(answers(), "noVideo noOverlay audio audio2 edit restore");
}

TEST_F(ValidityTest, SelectedItems)
{
    fill();
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"v0", "video edit restore"},
        {"v1", "video edit"}, // as long as its medium
        {"e", "edit"},
        {"o", "overlay edit restore key"},
        {"a", "audio audio1 edit restore"},
        {"v0 Lv", "video"},
        {"v0 v1 a Lv", "video audio audio1 edit restore"},
        {"e Le", ""},
        {"e Lv", "edit"},
        {"o Lo", "overlay"},
        {"a La", "audio audio1"},
        {"v0 -v -e -o -a", "video edit restore"}, // links matter to a selection alone
    };
    for (const auto& [words, expected] : cases) {
        apply(words);
        EXPECT_EQ(answers(), expected) << words;
    }
}

TEST_F(ValidityTest, WithTheSelectionShown)
{
    fill();
    struct Case {
        const char* words;
        std::int32_t startLeft; // pixels at 10 ms each; a time is 5 pixels further
        std::int32_t endLeft;
        const char* answers;
    };
    const Case cases[] = {
        {"", 10, 20, "edit"},           {"v0 o", 10, 20, "video overlay edit"}, // but no size and no key
        {"-v -e -o -a", 10, 20, ""},    {"o -v -e -o -a", 10, 20, "overlay"},   {"-e -o -a", 10, 20, "edit"},
        {"-e -o -a", 700, 800, "edit"},                               // wherever it lies
        {"-e -o -a Lv", 10, 20, ""},    {"-v -o -a", 10, 20, "edit"}, // the effects
        {"-v -o -a Le", 10, 20, ""},    {"-v -e -o", 10, 20, "edit"},           {"-v -e -o La", 10, 20, ""},
        {"-v -e -a", 100, 194, ""}, // the overlay alone: an edge must fall on it
        {"-v -e -a", 100, 195, "edit"}, {"-v -e -a", 295, 350, "edit"},         {"-v -e -a", 296, 350, ""},
        {"-v -e -a", 100, 350, ""},     {"-v -e -a Lo", 100, 250, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.words) + " " + std::to_string(c.startLeft));
        apply(c.words);
        showSelection(c.startLeft, c.endLeft);
        EXPECT_EQ(answers(), c.answers);
    }
    apply("o -v -e -o -a");
    moduleTimeline::ShowStartSelSlider(false); // one slider left: by items, but neither size nor key
    EXPECT_EQ(answers(), "overlay edit");
}

TEST_F(ValidityTest, EdgesOfTheSelection)
{
    put(video(), 0, 60'000);
    moduleScaleRenderer::AdjustScroll();
    showSelection(45, 145);
    const auto edges = [] {
        const editing::SelectionEdges found = editing::selectionEdges();
        return std::to_string(found.start) + "-" + std::to_string(found.stop);
    };
    EXPECT_EQ(edges(), "500-1500");
    form.hsb.SetValue(20); // out of view
    EXPECT_EQ(edges(), "500-1500");
    moduleScaleRenderer::SetZoomFactor(40);
    form.hsb.SetValue(0);
    moduleTimeline::SetSelSliderPosition(501, true);
    EXPECT_EQ(edges().substr(0, 4), "520-") << "as fine as the zoom";
}

TEST_F(ValidityTest, OneTrack)
{
    fill();
    const Handle tracks[] = {video(), state::OverlayTrack, audio(1), audio(2), 4711};
    const auto ask = [&](bool (*question)(Handle)) {
        std::string all;
        for (const Handle track : tracks) {
            all += question(track) ? '1' : '0';
        }
        return all;
    };
    for (CheckBox* const box : {&form.chkLockEffect[0], &form.chkDisableEffect[0], &form.chkDisableAudio[1],
                                &form.chkDisableOverlay[0], &form.chkLockAudio[0]}) {
        box->Value = std::int16_t{1};
    }
    EXPECT_EQ(ask(IsTrackLocked), "00100");
    EXPECT_EQ(ask(IsTrackDisabled), "01010");
    EXPECT_EQ(ask(IsEffectLocked), "10000");
    EXPECT_EQ(ask(IsEffectDisabled), "10000");
    EXPECT_EQ(ask(IsEffectSelected), "10000");
    form.chkLinkEffect[0].Value = std::int16_t{0};
    EXPECT_FALSE(IsEffectSelected(video()));
    select(audio(1), 0);
    EXPECT_TRUE(IsAnySourceSelected(audio(1)));
    EXPECT_FALSE(IsAnySourceSelected(video()));
    EXPECT_FALSE(IsAnyEffectSelected(video()));
    expectsErrors = true;
    engineCalls.failCall({"IsSourceSelected"});
    EXPECT_FALSE(IsAnySourceSelected(audio(1)));
}

TEST_F(ValidityTest, RowsOfTheMediaList)
{
    ListView& list = forms::frmMediaList.lvwMediaList;
    EXPECT_FALSE(IsOneMediaFileSelected());
    list.Add({.Text = "a", .SubItems = {}, .Icon = 1, .Selected = true});
    EXPECT_TRUE(IsOneMediaFileSelected());
    list.Add({.Text = "b", .SubItems = {}, .Icon = 1, .Selected = true});
    EXPECT_FALSE(IsOneMediaFileSelected());
}

} // namespace
} // namespace editing_test
