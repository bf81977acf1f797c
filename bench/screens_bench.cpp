// quillmont-screens-bench: how long the main window takes, painting included, in ms. Needs no display.
//
// Every line is the median and the worst of its rounds, from the event or the call to the next frame that is painted,
// with 2,000 items on the tracks; the last one is the longest time in which no event was served while 100 small files
// were being opened.

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/start_up.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/moduleTarnwick.h"
#include "shell/mdiTarnwick_form.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "twcore/tarnwick_timeline.h"
#include "windowing/ini_settings.h"
#include "windowing/qt_ports.h"
#include "windowing/show_pass.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

namespace {

using engine::check;
using engine::Handle;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// Boxes are told on standard error and answered "OK".
class NoBoxes final : public MessageBoxes {
public:
    MessageAnswer show(std::string_view text, MessageIcon, MessageButtons, std::string_view) override
    {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return MessageAnswer::kOk;
    }
};

/// Knows whether anything has been painted.
class PaintWatch final : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    bool isPainted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        isPainted = isPainted || event->type() == QEvent::Paint;
        return false;
    }
};

/// The program with its window and its ports.
class Program {
public:
    Program()
    {
        ports = {&boxes_, &dialogs_, &events_, &fonts_, &settings_, &shell_};
        twcore::registerTarnwickTimeline();
        StartProgram({.anotherInstanceRuns = [] { return false; },
                      .showSplash = [] {},
                      .init = moduleTarnwick::Init,
                      .loadMainWindow = [this] { window_ = std::make_unique<MainWindow>(); },
                      .showMainWindow =
                          [this] {
                              window_->resize(1560, 900);
                              window_->show();
                          },
                      .unloadSplash = [] {},
                      .endProcess = [] {}});
        QApplication::processEvents();
    }
    ~Program()
    {
        window_.reset();
        engine::Engine.reset();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    QWidget& find(const char* name) const
    {
        auto* const found = window_->findChild<QWidget*>(name);
        if (found == nullptr) {
            std::fprintf(stderr, "there is no %s\n", name);
            std::exit(EXIT_FAILURE);
        }
        return *found;
    }

private:
    NoBoxes boxes_;
    QtCommonDialogs dialogs_;
    QtEvents events_;
    QtFonts fonts_;
    IniSettings settings_;
    QtShell shell_;
    ShowPass pass_;
    std::unique_ptr<MainWindow> window_;
};

/// A second of silence at 8,000 Hz with 8 bits.
void writeSound(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32{36 + 8000};
    out.writeRawData("WAVEfmt ", 8);
    out << quint32{16} << quint16{1} << quint16{1} << quint32{8000} << quint32{8000} << quint16{1} << quint16{8};
    out.writeRawData("data", 4);
    out << quint32{8000};
    out.writeRawData(QByteArray(8000, '\x80').constData(), 8000);
}

/// Half sounds, half stills.
std::vector<std::string> writeFiles(const QString& folder, int count)
{
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        const bool isSound = i % 2 == 0;
        const QString path = folder + QString(isSound ? "/background sound %1.wav" : "/holiday picture %1.bmp").arg(i);
        if (isSound) {
            writeSound(path);
        } else {
            QImage picture(64, 48, QImage::Format_RGB888);
            picture.fill(QColor::fromHsv(i * 3 % 360, 200, 200));
            picture.save(path);
        }
        paths.push_back(path.toStdString());
    }
    return paths;
}

/// 400 items on each of the five rows, a second apiece.
void fillTracks()
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    engine::Bool16 ok = engine::kFalse;
    // Streams stand in the order of the files.
    const auto put = [&](Handle track, bool isPicture, std::int16_t seq) {
        const std::int32_t place = 1 + 2 * (seq % (state::StreamCollection.Count() / 2)) + (isPicture ? 1 : 0);
        check(
            timeline->InsertSource(track, state::StreamCollection.Item(place), seq, seq * 1000, seq * 1000 + 1000, ok));
    };
    for (std::int16_t seq = 0; seq < 400; ++seq) {
        put(state::TrackCollection.Item(1), true, seq);
        put(state::OverlayTrack, true, seq);
        put(state::TrackCollection.Item(2), false, seq);
        put(state::TrackCollection.Item(3), false, seq);
    }
    for (std::int16_t seq = 0; seq < 400; ++seq) {
        check(timeline->AddEffectAt(state::TrackCollection.Item(1), "Emboss", seq * 1000, seq * 1000 + 1000, ok));
    }
    moduleScaleRenderer::AdjustScroll();
    RenderAllBars();
    UpdateTreeView();
    QApplication::processEvents();
}

void print(const char* what, std::vector<double> times, double askedMs)
{
    std::ranges::sort(times);
    const double median = times[times.size() / 2];
    std::printf("%-46s median %7.2f ms   worst %7.2f ms   asked %4.0f ms   %s\n", what, median, times.back(), askedMs,
                median < askedMs ? "yes" : "NO");
}

/// Until there is nothing more to show or to paint.
void serveAllEvents()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

/// From each call until all that it changes is shown and painted.
void measure(const char* what, double askedMs, const std::function<void(int round)>& act)
{
    constexpr int kRounds = 60;
    PaintWatch watch;
    std::vector<double> times;
    for (int round = -2; round < kRounds; ++round) { // the first two fill what is remembered
        serveAllEvents();
        watch.isPainted = false;
        const auto begin = Clock::now();
        act(round);
        serveAllEvents();
        if (round >= 0 && watch.isPainted) {
            times.push_back(millisecondsSince(begin));
        }
    }
    if (times.size() < kRounds / 2) {
        std::printf("%-46s painted only %zu times\n", what, times.size());
        return;
    }
    print(what, std::move(times), askedMs);
}

void sendMouse(QWidget& widget, QEvent::Type type, QPointF at)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, at, widget.mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
    QCoreApplication::sendEvent(&widget, &event);
}

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

void setZoom(std::int16_t msPerPixel)
{
    moduleScaleRenderer::SetZoomFactor(msPerPixel);
    moduleScaleRenderer::AdjustScroll();
    forms::frmTimeline.hsb.SetValue(0);
    RenderAllBars();
    QApplication::processEvents();
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
    std::fflush(stdout);
}
