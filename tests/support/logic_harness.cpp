#include "support/logic_harness.h"

#include "editing/clipboard.h"
#include "engine/factory.h"
#include "twcore/tarnwick_timeline.h"

#include <sstream>

namespace logic_test {

void LogicTest::SetUp()
{
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    timelineCalls = engine::EngineAs<engine::ITWTimeline>().get();
    frmTimeline::Load();
    form.lblHighlight.Left = 100;
    for (PictureBox* const picture : {&form.picVideo[0], &form.picEffect[0], &form.picOverlay[0], &form.picAudio[0],
                                      &form.picAudio[1], &form.picScale}) {
        picture->ScaleWidth = 400;
        picture->ScaleHeight = 24;
    }
    frmTimeline::Form_Resize();
    ModuleHistory::EmptyHistory();
    fill("");
}

void LogicTest::TearDown()
{
    ModuleHistory::EmptyHistory();
    EXPECT_EQ(error_log::read() != "", expectsErrors) << error_log::read();
    engine::Engine.reset();
}

void LogicTest::lay(const std::string& text)
{
    ModuleHistory::EmptyTimeline();
    ModuleHistory::EmptyHistory();
    put(text);
    UpdateTreeView();
    moduleScaleRenderer::AdjustScroll();
    state::ProjectModified = false;
    ASSERT_EQ(this->text(), text);
}

void LogicTest::fill(const std::string& clips)
{
    moduleEdit::ClearSourceClips();
    moduleEdit::ClearEffectClips();
    moduleEdit::ClearTransitionClips();
    laid.addClips(clips);
    ASSERT_EQ(clipboard(), clips);
}

std::string LogicTest::flags()
{
    std::string all;
    std::istringstream words(text());
    for (std::string word; words >> word;) {
        all += word.size() > 1 ? (word.ends_with('*') ? "1" : "0") : (all.empty() ? "" : " ") + word + " ";
    }
    return all;
}

void LogicTest::setRows(const std::string& words)
{
    moduleTimeline::ReInitLinkLockDisable();
    const std::map<char, std::pair<CheckBox*, CheckBox*>> boxes{
        {'v', {&form.chkLockVideo[0], &form.chkLinkVideo[0]}},
        {'e', {&form.chkLockEffect[0], &form.chkLinkEffect[0]}},
        {'o', {&form.chkLockOverlay[0], &form.chkLinkOverlay[0]}},
        {'a', {&form.chkLockAudio[0], &form.chkLinkAudio[0]}},
        {'b', {&form.chkLockAudio[1], &form.chkLinkAudio[1]}}};
    std::istringstream all(words);
    for (std::string word; all >> word;) {
        const auto& [lock, link] = boxes.at(word[1]);
        (word[0] == 'L' ? lock : link)->Value = static_cast<std::int16_t>(word[0] == 'L' ? 1 : 0);
    }
}

void LogicTest::showSelection(Milliseconds from, Milliseconds to)
{
    state::SelStartPosition = from;
    state::SelEndPosition = to;
    moduleTimeline::SetSelSliderPosition(from, true);
    moduleTimeline::SetSelSliderPosition(to, false);
    moduleTimeline::ShowSelSliders(true);
}

void LogicTest::run(const Edit& edit)
{
    SCOPED_TRACE(edit.what);
    lay(edit.before);
    edit.operation();
    if (std::string_view(edit.before) == edit.after) {
        EXPECT_EQ(text(), edit.after);
        return;
    }
    EXPECT_TRUE(state::ProjectModified);
    EXPECT_EQ(ModuleHistory::HistoryIndex, 1);
    expectStep(edit.before, edit.after);
}

void LogicTest::expectStep(const std::string& before, const std::string& after)
{
    EXPECT_EQ(text(), after);
    ModuleHistory::OnEditUndoClick();
    EXPECT_EQ(text(), unselected(before)) << "undone";
    ModuleHistory::OnEditRedoClick();
    EXPECT_EQ(text(), unselected(after)) << "redone";
}

void LogicTest::runFailing(const std::string& before, const std::function<void()>& operation,
                           const std::set<std::string>& calls, int nth)
{
    SCOPED_TRACE(*calls.begin());
    expectsErrors = true;
    lay(before);
    engineCalls.failCall(calls, nth);
    operation();
    EXPECT_FALSE(engineCalls.failsLater());
    EXPECT_EQ(unselected(text()), unselected(before));
    EXPECT_TRUE(history().ends_with(" | 0/1")) << history();
    EXPECT_FALSE(state::ProjectModified);
}

void LogicTest::command(std::string_view word, const std::function<void()>& operation, bool takesEffect)
{
    ModuleHistory::RemoveDisabledEntries();
    ModuleHistory::AddOperationToHistory(word);
    operation();
    if (takesEffect) {
        ++ModuleHistory::HistoryIndex;
        ModuleHistory::RearrangeHistoryCollection();
    }
    ModuleHistory::StoreCurrentTLImage();
}

std::string LogicTest::history()
{
    std::string all;
    for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
        const bool isUndone = row.ForeColor == static_cast<std::int32_t>(0x8000000F);
        EXPECT_TRUE(isUndone || row.ForeColor == static_cast<std::int32_t>(0x80000008));
        all += (all.empty() ? "" : " ") + (isUndone ? "(" + row.Text + ")" : row.Text);
    }
    return all + " | " + std::to_string(ModuleHistory::HistoryIndex) + "/"
           + std::to_string(ModuleHistory::HistoryCollection.Count());
}

void LogicTest::click(std::int32_t historyRow)
{
    forms::frmTools.lvwHistorySelected = historyRow;
    ModuleHistory::OnHistoryListClick();
}

void LogicTest::open(std::initializer_list<const char*> names)
{
    std::vector<std::string> paths;
    for (const char* const name : names) {
        paths.push_back(media(name));
    }
    moduleTarnwick::OpenDroppedFiles(paths);
}

std::string LogicTest::selectedNode() const
{
    const std::vector<std::int32_t>& places = form.tvwTimeline.Selected;
    if (places.empty()) {
        return "none";
    }
    const TreeNode& track = form.tvwTimeline.Root().Children.at(static_cast<std::size_t>(places[0]));
    return track.Text + (places.size() > 1 ? " " + std::to_string(places[1] + 1) : "");
}

} // namespace logic_test
