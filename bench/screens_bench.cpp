// quillmont-screens-bench: how long the main window takes, painting included, in ms. Needs no display.
//
// Every line is the median and the worst of its rounds, from the event or the call to the next frame that is painted,
// with 2,000 items on the tracks. The dialogues of a save: from the command until they are painted. The first line is
// the longest time in which no event was served while 100 small files were being opened.

#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmProgressBar.h"
#include "core/forms/frmTimeline.h"
#include "core/upcalls.h"
#include "export/frmExportTimeline.h"
#include "export/frmProgressBar.h"
#include "media/moduleTarnwick.h"
#include "screens_program.h"
#include "shell/file_commands.h"
#include "timeline/moduleTimeline.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cstdio>
#include <thread>

namespace {

void dragHandle(const Program& program, const char* what, const char* handleName)
{
    QWidget& handle = program.find(handleName);
    const QPointF middle = handle.rect().center();
    sendMouse(handle, QEvent::MouseButtonPress, middle);
    measure(what, 16,
            [&](int round) { sendMouse(handle, QEvent::MouseMove, middle + QPointF(round % 20 < 10 ? 3 : -3, 0)); });
    sendMouse(handle, QEvent::MouseButtonRelease, middle);
}

void turnWheel(QWidget& widget, int notches, Qt::KeyboardModifiers keys)
{
    const QPointF at = widget.rect().center();
    QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, notches * 120}, Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

void measureTimeline(const Program& program)
{
    QWidget& row = program.find("picVideo0");
    setZoom(10);
    measure("UpdateTreeView, 2,000 items", 10, [](int) { UpdateTreeView(); });
    measure("the same with all bars drawn", 16, [](int) {
        UpdateTreeView();
        RenderAllBars();
    });
    measure("a scroll step, 10 items a row in view", 16, [&](int) { turnWheel(row, -1, {}); });
    setZoom(10);
    measure("a zoom step, in and out", 16,
            [&](int round) { turnWheel(row, round % 2 == 0 ? -1 : 1, Qt::ControlModifier); });
    setZoom(10);
    measure("zoom steps over the whole range", 16,
            [&](int round) { turnWheel(row, (round + 2) / 11 % 2 == 0 ? -1 : 1, Qt::ControlModifier); });
    setZoom(10);
    moduleTimeline::SetSliderPosition(2000, false);
    QApplication::processEvents();
    dragHandle(program, "a drag step of the main slider", "imgSliderHandle");
    moduleTimeline::ToggleSelSliders();
    QApplication::processEvents();
    dragHandle(program, "a drag step of the selection's end", "imgEndSelHandle");
    setZoom(500);
    measure("a scroll step, all 2,000 items in view", 16,
            [](int round) { forms::frmTimeline.hsb.SetValue(1 + round % 2); });
    measure("a zoom step, all 2,000 items in view", 16,
            [&](int round) { turnWheel(row, round % 2 == 0 ? -1 : 1, Qt::ControlModifier); });
}

void measureOpening(const std::vector<std::string>& paths)
{
    double longest = 0;
    auto last = Clock::now();
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, &turns, [&] {
        longest = std::max(longest, millisecondsSince(last));
        last = Clock::now();
    });
    turns.start(0);
    QApplication::processEvents();
    longest = 0;
    const auto begin = last = Clock::now();
    moduleTarnwick::OpenDroppedFiles(paths);
    QApplication::processEvents();
    const double all = millisecondsSince(begin);
    const std::int32_t rows = forms::frmMediaList.lvwMediaList.Count();
    std::printf("opening %d files: %.0f ms in all; no event was served for %.1f ms at the longest   asked 50 ms   %s\n",
                rows, all, longest, longest < 50 ? "yes" : "NO");
}

/// Runs the command, whose dialogue is painted, timed, worked in and closed.
void openDialogue(void (*command)(), std::vector<double>& times, const std::function<void()>& deeds = {})
{
    const auto begin = Clock::now();
    QTimer::singleShot(0, [&] {
        QWidget* const dialogue = QApplication::activeModalWidget();
        dialogue->grab();
        times.push_back(millisecondsSince(begin));
        if (deeds) {
            deeds();
        }
        dialogue->close();
    });
    command();
}

void measureSave(const QString& movie)
{
    std::vector<double> save;
    std::vector<double> advanced;
    std::vector<double> preparing;
    std::vector<double> ticks;
    std::vector<double> cancelling;
    auto pressed = Clock::now();
    const auto options = [&] { openDialogue(frmExportTimeline::cmdAdvanced_Click, advanced); };
    for (int round = 0; round < 20; ++round) {
        openDialogue(mdiTarnwick::mnuFileExportTimeline_Click, save, options);
    }
    const auto window = std::exchange(frmProgressBar::showDialogue, [&] {
        preparing.push_back(millisecondsSince(pressed));
        for (int round = 0; round < 100; ++round) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            const auto begin = Clock::now();
            forms::frmProgressBar.tmSave.tick();
            ticks.push_back(millisecondsSince(begin));
        }
        const auto begin = Clock::now();
        frmProgressBar::cmdCancel_Click();
        cancelling.push_back(millisecondsSince(begin));
    });
    openDialogue(mdiTarnwick::mnuFileExportTimeline_Click, save, [&] {
        forms::frmExportTimeline.txtSaveFileName.Text = movie.toStdString();
        pressed = Clock::now();
        frmExportTimeline::cmdOK_Click();
    });
    frmProgressBar::showDialogue = window;
    print("opening Save Timeline", save, 300);
    print("opening its advanced options", advanced, 300);
    print("preparing the save of 100 files", preparing, 200);
    print("a tick while a movie is saved", ticks, 2);
    print("cancelling it", cancelling, 200);
}

} // namespace

int main(int count, char** words)
{
    const QTemporaryDir folder;
    QFile screen(folder.filePath("screen.json"));
    screen.open(QIODevice::WriteOnly);
    screen.write(R"({"screens": [{"name": "s0", "x": 0, "y": 0, "width": 1600, "height": 1000, "logicalDpi": 96,
                     "logicalBaseDpi": 96, "dpr": 1}]})");
    screen.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen.fileName()).toUtf8());
    qputenv("SDL_AUDIODRIVER", "dummy");
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, folder.path().toUtf8());
    }
    const QApplication application(count, words);
    const Program program;
    measureOpening(writeFiles(folder.path(), 100));
    fillTracks();
    measureTimeline(program);
    measureCommands(program);
    measureSave(folder.filePath("film.avi"));
    std::fflush(stdout);
}
