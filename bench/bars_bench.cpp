// quillmont-bars-bench: what pictures and waves on bars cost. Needs no display, and ffmpeg for its media.
//
//   quillmont-bars-bench [FOLDER]     where its media are written and found again: 700 MB; a temporary one by default
//
// First the processor's time from asking until the last peak has come, of the maker at normal priority and of who asks
// him together. Then the interface thread's own time for a scroll step, 200 of 2,000 bars in view at 1920 x 1080: as
// the bars were, while pictures and waves come, and when they stand. Last the memory that all this takes more.

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "measures.h"
#include "media/moduleTarnwick.h"
#include "screens_program.h"
#include "shell/view_switches.h"
#include "timeline/moduleScaleRenderer.h"
#include "twcore/bars/bar_pictures_interface.h"
#include "twcore/tarnwick_timeline.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <thread>

namespace {

double residentMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(6)) / 1024;
        }
    }
    return 0;
}

std::string made(const QString& path, const QStringList& words)
{
    if (!QFile::exists(path)) {
        QProcess::execute("ffmpeg", QStringList{"-v", "error", "-y"} + words + QStringList{path});
    }
    return path.toStdString();
}

void measurePeaks(const char* what, const std::string& path, double from, double seconds, double asked)
{
    twcore::HandleCounter handles;
    twcore::FileRegistry files(handles);
    twcore::BarPicturesInterface bars(files, false);
    const auto sound = files.streamOfKind(files.openFile(path), false);
    std::vector<engine::Peak> peaks(1760);
    const double begin = bench::processorSeconds();
    for (engine::Bool16 ok = engine::kFalse; sound != 0;) {
        (void)bars.BeginView();
        (void)bars.GetPeaks(sound, from * 1000, seconds * 1000 / static_cast<double>(peaks.size()), peaks, ok);
        (void)bars.EndView();
        if (ok != engine::kFalse) {
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(80)); // as often as bars are painted again
    }
    const double took = bench::processorSeconds() - begin;
    std::printf("%-46s %7.2f s of the processor   asked %.1f s   %s\n", what, took, asked,
                sound != 0 && took < asked ? "yes" : "NO");
}

/// The interface thread's time for each step to the right, by a notch of the wheel, painting included.
void measureScrolling(const char* what, double askedMs)
{
    std::vector<double> times;
    forms::frmTimeline.hsb.SetValue(0);
    QApplication::processEvents();
    for (int step = 0; step < 300; ++step) {
        const double begin = bench::secondsOf(CLOCK_THREAD_CPUTIME_ID);
        moduleScaleRenderer::ScrollTo(forms::frmTimeline.hsb.Value() + 5);
        QApplication::processEvents();
        times.push_back((bench::secondsOf(CLOCK_THREAD_CPUTIME_ID) - begin) * 1000);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    print(what, times, askedMs);
}

/// Waits until each bar in view shows what lies in it, a minute at most.
void settle()
{
    using Kind = DrawList::Kind;
    const auto isShown = [](const PictureBox& row, Kind kind) {
        const auto& strokes = row.drawing.strokes();
        const auto bars = std::ranges::count(strokes, Kind::kFilledBox, &DrawList::Stroke::kind);
        return std::ranges::count(strokes, kind, &DrawList::Stroke::kind) + 1 >= bars; // the last may be too narrow
    };
    auto& form = forms::frmTimeline;
    for (int quiet = 0, round = 0; quiet < 20 && round < 1200; ++round) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        QApplication::processEvents();
        const bool isThere = isShown(form.picVideo[0], Kind::kPicture) && isShown(form.picOverlay[0], Kind::kPicture)
                             && isShown(form.picAudio[0], Kind::kWave) && isShown(form.picAudio[1], Kind::kWave);
        quiet = isThere ? quiet + 1 : 0;
        if (round == 1199) {
            std::printf("not all bars show what lies in them\n");
        }
    }
}

void measureScreen(const QString& folder)
{
    std::vector<std::string> paths; // a sound and a film in turn, as `fillTracks` wants them
    for (int i = 0; i < 20; ++i) {
        const QString number = QString::number(i);
        paths.push_back(
            made(folder + "/sound " + number + ".wav",
                 {"-f", "lavfi", "-i", "anoisesrc=d=60:seed=" + number + ",aformat=channel_layouts=stereo"}));
        paths.push_back(made(folder + "/film " + number + ".mp4",
                             {"-f", "lavfi", "-i", "testsrc2=s=1280x720:r=25:d=20,hue=h=" + number + "*18", "-g", "25",
                              "-c:v", "libx264", "-preset", "ultrafast"}));
    }
    moduleTarnwick::OpenDroppedFiles(paths);
    fillTracks();
    const int width = forms::frmTimeline.picScale.ScaleWidth;
    setZoom(static_cast<std::int16_t>(40'000 / width)); // 40 bars of a second on each of five rows
    const double before = residentMegabytes();
    measureScrolling("a scroll step, 200 of 2,000 bars in view", 16);
    mdiTarnwick::mnuViewPicturesOnBars_Click();
    mdiTarnwick::mnuViewWavesOnBars_Click();
    measureScrolling("the same while pictures and waves come", 16);
    forms::frmTimeline.hsb.SetValue(0);
    settle();
    measureScrolling("the same when they stand", 16);
    setZoom(5);
    settle();
    const double more = residentMegabytes() - before;
    std::printf("%-46s %7.1f MB more   asked 60 MB   %s\n", "memory", more, more < 60 ? "yes" : "NO");
}

} // namespace

int main(int count, char** words)
{
    const QTemporaryDir temporary;
    const QString folder = count > 1 ? QString(words[1]) : temporary.path();
    QDir().mkpath(folder);
    QFile screen(temporary.filePath("screen.json"));
    screen.open(QIODevice::WriteOnly);
    screen.write(R"({"screens": [{"name": "s0", "x": 0, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96,
                     "logicalBaseDpi": 96, "dpr": 1}]})");
    screen.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen.fileName()).toUtf8());
    qputenv("SDL_AUDIODRIVER", "dummy");
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"}) {
        qputenv(name, temporary.path().toUtf8());
    }
    const QApplication application(count, words);
    const Program program;
    const QStringList noise{"-f", "lavfi", "-i", "anoisesrc=d=3600:r=48000:a=0.3,aformat=channel_layouts=stereo"};
    const std::string wave = made(folder + "/hour.wav", noise);
    const std::string mp3 = made(folder + "/hour.mp3", noise + QStringList{"-b:a", "192k"});
    measurePeaks("waves of a minute in view, PCM", wave, 1800, 60, 0.5);
    measurePeaks("waves of a minute in view, MP3", mp3, 1800, 60, 0.5);
    measurePeaks("waves of an hour of PCM", wave, 0, 3600, 2);
    measurePeaks("waves of an hour of MP3", mp3, 0, 3600, 5);
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        window->resize(1920, 1080);
    }
    QApplication::processEvents();
    measureScreen(folder);
    std::fflush(stdout);
}
