#pragma once

// The logic over the real engine, without screens: a timeline laid and read as text, commands with their history, what
// stands on the screen, and engine calls that fail.
//
// The view is 400 pixels wide and begins 100 pixels right of the form's ground, at 10 ms a pixel; a row is 24 pixels
// high. A character is 7 pixels wide and 13 high.

#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/frmTimeline_events.h"
#include "history/ModuleHistory.h"
#include "items/track_locks.h"
#include "media/moduleTarnwick.h"
#include "report/error_log.h"
#include "support/engine_calls.h"
#include "support/layout.h"
#include "support/manifest.h"
#include "support/scripted_platform.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <gtest/gtest.h>

namespace logic_test {

using engine::check;
using engine::Handle;
using engine::Milliseconds;

/// The path of a test medium.
inline std::string media(const std::string& name) { return (testmedia::mediaFolder() / name).string(); }

class LogicTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // --- The timeline, as support/layout.h writes it ----------------------------------------------------------------

    /// In place of what lies on the tracks; the history is empty then.
    void lay(const std::string& text);
    /// Behind what lies there.
    void put(const std::string& text) { laid.put(text); }
    std::string text() { return laid.text(); }
    /// The clipboard, written and read alike.
    void fill(const std::string& clips);
    std::string clipboard() { return laid.clips(); }
    /// Selected flags of the rows' items, a digit each: "V 010 E 0 O 1".
    std::string flags();
    static std::string unselected(std::string text)
    {
        std::erase(text, '*');
        return text;
    }
    static Handle video() { return state::TrackCollection.Item(1); }
    static Handle audio(int number) { return state::TrackCollection.Item(1 + number); }
    void select(Handle track, std::int16_t seq) { check(timelineCalls->SetSourceSelected(track, seq, engine::kTrue)); }
    void remove(Handle track, std::int16_t seq)
    {
        engine::Bool16 ok = engine::kFalse;
        check(timelineCalls->RemoveSource(track, seq, ok));
    }
    /// Words: Lv Le Lo La Lb lock a row, -v -e -o -a -b unlink it. All others are unlocked and linked.
    void setRows(const std::string& words);
    /// A selection between two times.
    static void showSelection(Milliseconds from, Milliseconds to);

    // --- Commands and their history ---------------------------------------------------------------------------------

    struct Edit {
        const char* what;
        const char* before;
        std::function<void()> operation;
        const char* after;
    };
    /// Before, after, undone and redone.
    void run(const Edit& edit);
    /// The present timeline is `after`; an undo gives `before`, a redo this again. Both leave nothing selected.
    void expectStep(const std::string& before, const std::string& after);
    /// The nth of these calls fails: nothing has changed, and the entry is out of force.
    void runFailing(const std::string& before, const std::function<void()>& operation,
                    const std::set<std::string>& calls, int nth = 1);
    /// A command as all commands run; one that comes to nothing does not raise the index.
    static void command(std::string_view word, const std::function<void()>& operation, bool takesEffect = true);
    /// Captions of the rows with what is undone in brackets, and index and number of entries: "Cut (Paste) | 1/2".
    static std::string history();
    static void click(std::int32_t historyRow);

    // --- The screen -------------------------------------------------------------------------------------------------

    /// Opens test media as the file manager hands them over; the last one is selected.
    static void open(std::initializer_list<const char*> names);
    /// What the selected node of the list is called, with its place below its track: "Video 2".
    std::string selectedNode() const;
    static std::string panel(std::string_view key) { return forms::mdiTarnwick.sbr.Panel(key); }

    forms::FrmTimeline& form = forms::frmTimeline;
    bool expectsErrors = false;
    testsupport::ScriptedPlatform platform;
    testsupport::EngineCalls engineCalls;
    testsupport::Layout laid;
    engine::ITWTimeline* timelineCalls = nullptr; // the engine's
};

} // namespace logic_test
