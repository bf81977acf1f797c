// What is valid on small layouts.

#include "support/logic_harness.h"

#include "core/forms/frmMediaList.h"
#include "editing/moduleTWState.h"
#include "editing/selection_edges.h"

#include <sstream>

namespace logic_test {
namespace {

using namespace moduleTWState;
using engine::Handle;

class ValidityTest : public LogicTest {
protected:
    /// The second still is as long as its medium.
    void fillRows() { put("V 0-1000=0-5000 1000-6000 E 500-1500 O 2000-3000=0-5000#0 A 0-500=0-5000"); }
    /// Words: v0 v1 e o a select; locks and links as in setRows.
    void apply(const std::string& words)
    {
        moduleTimeline::ClearMFSTSubSelections();
        std::istringstream all(words);
        std::string rows;
        for (std::string word; all >> word;) {
            if (std::islower(static_cast<unsigned char>(word[0])) == 0) {
                rows += word + " ";
            } else if (word[0] == 'e') {
                engine::check(timelineCalls->SetEffectSelected(video(), 0, engine::kTrue));
            } else {
                select(laid.trackOf(static_cast<char>(std::toupper(word[0]))), word == "v1" ? 1 : 0);
            }
        }
        setRows(rows);
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
    showSelection(150, 950);
    EXPECT_EQ(answers(), "noVideo noEffect noOverlay");
    put("E 0-100"); // effects alone are no timeline
    apply("e");
    EXPECT_EQ(answers(), "noVideo noOverlay");
    EXPECT_FALSE(IsAnyEffectSelected(video()));
    moduleTimeline::ShowSelSliders(false);
    put("B 0-100=0-5000");
    select(audio(2), 0);
    EXPECT_EQ(answers(), "noVideo noOverlay audio audio2 edit restore");
}

TEST_F(ValidityTest, SelectedItems)
{
    fillRows();
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
    fillRows();
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
        showSelection((c.startLeft + 5) * 10, (c.endLeft + 5) * 10);
        EXPECT_EQ(answers(), c.answers);
    }
    apply("o -v -e -o -a");
    moduleTimeline::ShowStartSelSlider(false); // one slider left: by items, but neither size nor key
    EXPECT_EQ(answers(), "overlay edit");
}

TEST_F(ValidityTest, EdgesOfTheSelection)
{
    put("V 0-60000");
    moduleScaleRenderer::AdjustScroll();
    showSelection(500, 1500);
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
    fillRows();
    form.chkLockEffect[0].Value = std::int16_t{1};
    form.chkDisableEffect[0].Value = std::int16_t{1};
    for (bool (*const question)(Handle) : {IsEffectLocked, IsEffectDisabled, IsEffectSelected}) {
        EXPECT_TRUE(question(video()));
        EXPECT_FALSE(question(state::OverlayTrack) || question(audio(1)) || question(4711));
    }
    form.chkLinkEffect[0].Value = std::int16_t{0};
    EXPECT_FALSE(IsEffectSelected(video()));
    select(audio(1), 0);
    EXPECT_TRUE(IsAnySourceSelected(audio(1)));
    EXPECT_FALSE(IsAnySourceSelected(video()) || IsAnyEffectSelected(video()));
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
} // namespace logic_test
