#include "screens_program.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/start_up.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "media/moduleTarnwick.h"
#include "timeline/moduleScaleRenderer.h"
#include "twcore/tarnwick_timeline.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFile>
#include <QImage>
#include <QMouseEvent>
#include <algorithm>
#include <cstdio>

namespace {

using engine::check;
using engine::Handle;

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

/// Until there is nothing more to show or to paint.
void serveAllEvents()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

} // namespace

void print(const char* what, std::vector<double> times, double askedMs)
{
    std::ranges::sort(times);
    const double median = times[times.size() / 2];
    std::printf("%-46s median %7.2f ms   worst %7.2f ms   asked %4.0f ms   %s\n", what, median, times.back(), askedMs,
                median < askedMs ? "yes" : "NO");
}

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

MessageAnswer NoBoxes::show(std::string_view text, MessageIcon, MessageButtons buttons, std::string_view)
{
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    return buttons == MessageButtons::kOk ? MessageAnswer::kOk : MessageAnswer::kYes;
}

Program::Program()
{
    ports = {&boxes_, &dialogs_, &events_, &fonts_, &settings_, &shell_, &machine_, &lettering_};
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

Program::~Program()
{
    window_.reset();
    engine::Engine.reset();
}

QWidget& Program::find(const char* name) const
{
    auto* const found = window_->findChild<QWidget*>(name);
    if (found == nullptr) {
        std::fprintf(stderr, "there is no %s\n", name);
        std::exit(EXIT_FAILURE);
    }
    return *found;
}

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

void setZoom(std::int16_t msPerPixel)
{
    moduleScaleRenderer::SetZoomFactor(msPerPixel);
    moduleScaleRenderer::AdjustScroll();
    forms::frmTimeline.hsb.SetValue(0);
    RenderAllBars();
    QApplication::processEvents();
}

void measure(const char* what, double askedMs, const std::function<void(int round)>& act,
             const std::function<void(int round)>& prepare, int rounds)
{
    PaintWatch watch;
    std::vector<double> times;
    for (int round = -2; round < rounds; ++round) { // the first two fill what is remembered
        if (prepare) {
            prepare(round);
        }
        serveAllEvents();
        watch.isPainted = false;
        const auto begin = Clock::now();
        act(round);
        serveAllEvents();
        if (round >= 0 && watch.isPainted) {
            times.push_back(millisecondsSince(begin));
        }
    }
    if (static_cast<int>(times.size()) < rounds / 2) {
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
