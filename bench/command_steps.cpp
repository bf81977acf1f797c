// Every command of the menus with 2,000 items on the tracks: with its history image and the menu update, to the next
// painted frame.

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/shuffle.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/tree_drop.h"
#include "history/ModuleHistory.h"
#include "screens_program.h"
#include "shell/menu_table.h"
#include "timeline/moduleTimeline.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr double kAskedMs = 50;

void run(std::string_view menu)
{
    const shell::MenuRow* const row = shell::findMenu(menu);
    if (row == nullptr || row->handler == nullptr) {
        std::fprintf(stderr, "there is no command %.*s\n", static_cast<int>(menu.size()), menu.data());
        std::exit(EXIT_FAILURE);
    }
    row->handler();
}

/// Ten sources in the middle of the video track and of both audio tracks.
void selectSome()
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    for (const engine::Handle track : state::TrackCollection) {
        for (std::int16_t seq = 0; seq < 400; ++seq) {
            engine::check(
                timeline->SetSourceSelected(track, seq, seq >= 200 && seq < 210 ? engine::kTrue : engine::kFalse));
        }
    }
}

void showRange(bool isShown)
{
    moduleTimeline::ShowSelSliders(isShown);
    if (isShown) {
        moduleTimeline::SetSelSliderPosition(3500, true);
        moduleTimeline::SetSelSliderPosition(7200, false);
    }
}

/// The command from the same timeline each time: its change is undone before the next round.
void measureCommand(const char* menu, bool overRange = false)
{
    constexpr int kRounds = 15;
    const std::string what = std::string(menu) + (overRange ? ", over a range" : "");
    std::size_t rows = ModuleHistory::HistoryIndex;
    measure(
        what.c_str(), kAskedMs, [&](int) { run(menu); },
        [&](int round) {
            if (round > -2 && ModuleHistory::HistoryIndex > static_cast<std::int16_t>(rows)) {
                ModuleHistory::OnEditUndoClick();
            }
            rows = static_cast<std::size_t>(ModuleHistory::HistoryIndex);
            selectSome();
            showRange(overRange);
            moduleTimeline::SetSliderPosition(5300, false);
        },
        kRounds);
    if (ModuleHistory::HistoryIndex > static_cast<std::int16_t>(rows)) {
        ModuleHistory::OnEditUndoClick();
    }
    showRange(false);
}

/// Nothing changes with it, and so nothing is painted.
void measureMenuUpdate()
{
    constexpr int kRounds = 60;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const auto begin = Clock::now();
        EnableOrDisableMenuItems();
        times.push_back(millisecondsSince(begin));
    }
    print("the menu update", std::move(times), 2);
}

void measureDrag(const Program& program)
{
    QWidget& row = program.find("picVideo0");
    const QPointF middle(250, row.height() / 2.0); // in the third bar
    sendMouse(row, QEvent::MouseButtonPress, middle);
    measure("a drag step of a bar with all behind it", 16, [&](int round) {
        QMouseEvent move(QEvent::MouseMove, middle + QPointF(round % 20 < 10 ? round % 20 : 20 - round % 20, 0),
                         row.mapToGlobal(middle), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&row, &move);
    });
    sendMouse(row, QEvent::MouseButtonRelease, middle + QPointF(5, 0));
}

} // namespace

void measureCommands(const Program& program)
{
    setZoom(10);
    moduleTimeline::ShowSelSliders(false);
    forms::frmMediaList.lvwMediaList.Change(1).Selected = true;
    measureMenuUpdate();
    for (const char* const menu :
         {"mnuEditAddToTimeline", "mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditClear", "mnuEditCrop",
          "mnuToolsSplitTimeline", "mnuToolsPackTimelineBars", "mnuEditRestoreSize", "mnuEditClearEffect",
          "mnuEditClearOverlay", "mnuEditClearTimeline", "mnuEditAddToOverlay"}) {
        measureCommand(menu);
    }
    for (const char* const menu :
         {"mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditClear", "mnuEditCrop", "mnuEditCropSources"}) {
        measureCommand(menu, true);
    }
    measure(
        "a shuffle in the list", kAskedMs,
        [](int round) {
            frmTimeline::tvwTimeline_OLEDragDrop({0, 300 + round % 10}, {0, 20});
        },
        {}, 15);
    measureDrag(program);
    run("mnuEditClear");
    measure(
        "undo", kAskedMs, [](int) { ModuleHistory::OnEditUndoClick(); }, [](int) { ModuleHistory::OnEditRedoClick(); },
        20);
    measure(
        "redo", kAskedMs, [](int) { ModuleHistory::OnEditRedoClick(); }, [](int) { ModuleHistory::OnEditUndoClick(); },
        20);
}
