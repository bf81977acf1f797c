#include "screens/screen_harness.h"

#include "core/forms/frmAddText.h"
#include "core/forms/frmAdvancedSaveOptions.h"
#include "core/forms/frmCapture.h"
#include "core/forms/frmCaptureOptions.h"
#include "core/forms/frmCaptureValues.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmNewProject.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmTakeSnap.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/start_up.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "media/moduleTarnwick.h"
#include "report/error_log.h"
#include "report/frmbug_form.h"
#include "shell/frmSplash_form.h"
#include "support/manifest.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "twcore/tarnwick_timeline.h"
#include "volume/frmVolume.h"
#include "windowing/scheme.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QSizeGrip>
#include <QStyleHints>
#include <QTreeView>
#include <QWindow>

namespace screens_test {

namespace {

template <class Form>
void renew(Form& form)
{
    std::destroy_at(&form);
    std::construct_at(&form);
}

} // namespace

std::string media(const std::string& name) { return (testmedia::mediaFolder() / name).string(); }

ScreenTest::ScreenTest()
{
    ModuleHistory::EmptyHistory();
    state::reset();
    renew(forms::frmTimeline);
    renew(forms::frmMediaList);
    renew(forms::frmNewProject);
    renew(forms::frmAdvancedSaveOptions);
    renew(forms::frmCapture);
    renew(forms::frmCaptureValues);
    renew(forms::frmCaptureOptions);
    renew(forms::frmAddText);
    renew(forms::frmTakeSnap);
    renew(forms::frmPreview);
    renew(forms::frmTools);
    renew(forms::mdiTarnwick);
    renew(forms::frmVolume);
    ports = {&messages_, &dialogs_, &events_, &fonts_, &settings_, &shell, &machine_, &lettering_};
}

ScreenTest::~ScreenTest() { ports = {}; }

void ScreenTest::SetUp()
{
    pass_ = std::make_unique<ShowPass>();
    twcore::registerTarnwickTimeline();
    frmbug::connectScreens();
    std::unique_ptr<SplashForm> splash;
    StartProgram({
        .anotherInstanceRuns = [] { return false; },
        .showSplash =
            [&] {
                splash = std::make_unique<SplashForm>();
                splash->show();
            },
        .init = moduleTarnwick::Init,
        .loadMainWindow = [&] { window = std::make_unique<MainWindow>(); },
        .showMainWindow = [&] { window->show(); },
        .unloadSplash = [&] { splash.reset(); },
        .endProcess = [] {},
    });
    ASSERT_NE(window, nullptr);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    settle();
}

void ScreenTest::TearDown()
{
    window.reset();
    EXPECT_EQ(!error_log::read().empty(), expectsErrors) << error_log::read();
    error_log::remove();
    engine::Engine.reset();
    pass_.reset();
}

void ScreenTest::press(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    QTest::mousePress(window->windowHandle(), button, keys, inWindow(widget, at));
    settle();
}

void ScreenTest::moveTo(QWidget& widget, QPoint at)
{
    QTest::mouseMove(window->windowHandle(), inWindow(widget, at));
    settle();
}

void ScreenTest::release(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    QTest::mouseRelease(window->windowHandle(), button, keys, inWindow(widget, at));
    settle();
}

void ScreenTest::click(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys, Qt::MouseButton button)
{
    // Clicks that follow one another on one spot are no double clicks.
    QTest::mouseClick(window->windowHandle(), button, keys, inWindow(widget, at),
                      QGuiApplication::styleHints()->mouseDoubleClickInterval() / 40);
    settle();
}

void ScreenTest::tap(QWidget& widget, QPoint at, const std::function<void()>& behind)
{
    const QPointF inWindow = widget.mapTo(window.get(), at);
    const QPointF onScreen = widget.mapToGlobal(at);
    const auto post = [&](QEvent::Type type, Qt::MouseButtons held) {
        auto* const event = new QMouseEvent(type, inWindow, onScreen, Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::postEvent(window->windowHandle(), event);
    };
    post(QEvent::MouseButtonPress, Qt::LeftButton);
    post(QEvent::MouseButtonRelease, Qt::NoButton);
    if (behind) {
        QMetaObject::invokeMethod(window.get(), behind, Qt::QueuedConnection);
    }
    settle();
}

void ScreenTest::drag(QWidget& widget, QPoint from, int byX)
{
    constexpr int kSteps = 4;
    QWidget& ground = *window; // the widget moves along, the ground does not
    const QPoint start = inWindow(widget, from);
    press(ground, start);
    for (int step = 1; step <= kSteps; ++step) {
        moveTo(ground, start + QPoint(byX * step / kSteps, 0));
    }
    release(ground, start + QPoint(byX, 0));
}

void ScreenTest::wheel(QWidget& widget, QPoint at, int notches, Qt::KeyboardModifiers keys)
{
    constexpr int kNotch = 120;
    QWheelEvent turn(at, widget.mapToGlobal(at), {}, {0, notches * kNotch}, Qt::NoButton, keys, Qt::NoScrollPhase,
                     false);
    QCoreApplication::sendEvent(&widget, &turn);
    settle();
}

void ScreenTest::key(Qt::Key key, Qt::KeyboardModifiers keys)
{
    if (QApplication::activeWindow() == nullptr) { // behind a dialogue, as nothing manages windows here
        window->activateWindow();
        EXPECT_TRUE(until([&] { return window->isActiveWindow(); }));
    }
    QWidget* const focus = window->focusWidget();
    QTest::keyClick(focus != nullptr ? focus : window.get(), key, keys);
    settle();
}

void ScreenTest::choose(const char* menu, const char* item)
{
    const auto actionOf = [](const QWidget& in, const char* text) {
        for (QAction* const action : in.actions()) {
            if (action->text() == text) {
                return action;
            }
        }
        throw std::runtime_error(std::string("there is no menu ") + text);
    };
    QMenuBar& bar = *window->menuBar();
    QAction* const top = actionOf(bar, menu);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(top).center());
    QMenu& opened = *top->menu();
    ASSERT_TRUE(until([&] { return opened.isVisible(); }));
    QTest::mouseClick(&opened, Qt::LeftButton, {}, opened.actionGeometry(actionOf(opened, item)).center());
    settle();
}

bool ScreenTest::drop(const std::vector<std::string>& paths)
{
    QMimeData files;
    QList<QUrl> urls;
    for (const std::string& path : paths) {
        urls << QUrl::fromLocalFile(QString::fromStdString(path));
    }
    files.setUrls(urls);
    const QPoint at = window->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent dropped(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window.get(), &dropped);
    return dropped.isAccepted();
}

bool ScreenTest::until(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 5000); }

void ScreenTest::settle()
{
    for (int turn = 0; turn < 3; ++turn) { // a handler, the show pass that it asks for, the painting after that
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

std::string ScreenTest::status(int panel) const
{
    return find<QLabel>(("sbr" + std::to_string(panel)).c_str()).text().toStdString();
}

bool ScreenTest::says(const std::string& text) const
{
    const bool said = until([&] { return status() == text; });
    EXPECT_EQ(status(), text);
    return said;
}

std::string ScreenTest::row(int place) const
{
    const QAbstractItemModel& rows = *find<QTreeView>("lvwMediaList").model();
    std::string cells;
    for (int column = 0; column < rows.columnCount(); ++column) {
        cells += (column == 0 ? "" : "|") + rows.index(place, column).data().toString().toStdString();
    }
    return cells;
}

int ScreenTest::rowCount() const { return find<QTreeView>("lvwMediaList").model()->rowCount(); }

QRect ScreenTest::rowRect(int place) const
{
    const auto& list = find<QTreeView>("lvwMediaList");
    return list.visualRect(list.model()->index(place, 0));
}

std::string ScreenTest::tree() const
{
    const QAbstractItemModel& nodes = *find<QTreeView>("tvwTimeline").model();
    const QModelIndex root = nodes.index(0, 0);
    std::string all;
    for (int track = 0; track < nodes.rowCount(root); ++track) {
        const QModelIndex node = nodes.index(track, 0, root);
        all += (track == 0 ? "" : " ") + node.data().toString().toStdString() + "[";
        for (int item = 0; item < nodes.rowCount(node); ++item) {
            all += (item == 0 ? "" : " ") + nodes.index(item, 0, node).data().toString().toStdString();
        }
        all += "]";
    }
    return all;
}

int ScreenTest::barEnd(const char* picture) const
{
    const QImage image = find(picture).grab().toImage();
    for (int x = image.width() - 2; x >= 1; --x) { // the focus is marked in the outermost pixels
        if (image.pixel(x, image.height() / 2) != kTrackPaper) {
            return x;
        }
    }
    return -1;
}

QRgb ScreenTest::pixel(const char* widget, int x, int y) const { return find(widget).grab().toImage().pixel(x, y); }

int ScreenTest::expectNames(const QWidget& ground)
{
    int seen = 0;
    for (const QWidget* const widget : ground.findChildren<QWidget*>()) {
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const bool isPart = widget->objectName().startsWith("qt_") || qobject_cast<const QLabel*>(widget) != nullptr
                            || qobject_cast<const QHeaderView*>(widget) != nullptr
                            || qobject_cast<const QSizeGrip*>(widget) != nullptr
                            || qobject_cast<const QLineEdit*>(widget->parentWidget()) != nullptr
                            || widget->parentWidget()->objectName().endsWith("container") // bars of a list
                            || widget->testAttribute(Qt::WA_TransparentForMouseEvents);
        const bool isControl = button != nullptr || qobject_cast<const QAbstractSlider*>(widget) != nullptr
                               || qobject_cast<const QAbstractItemView*>(widget) != nullptr
                               || qobject_cast<const QProgressBar*>(widget) != nullptr
                               || widget->focusPolicy() == Qt::StrongFocus || widget->testAttribute(Qt::WA_SetCursor);
        if (!isControl || isPart || !widget->isVisible()) {
            continue;
        }
        ++seen;
        EXPECT_TRUE(!widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty()))
            << widget->metaObject()->className() << " " << widget->objectName().toStdString() << " in "
            << widget->parentWidget()->objectName().toStdString();
    }
    return seen;
}

double ScreenTest::brightShare(const char* widget) const
{
    const QImage image = find(widget).grab().toImage();
    int bright = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            bright += qGray(image.pixel(x, y)) > 128 ? 1 : 0;
        }
    }
    return double(bright) / (image.width() * image.height());
}

void ScreenTest::opened(const std::vector<std::string>& names)
{
    std::vector<std::string> paths;
    for (const std::string& name : names) {
        paths.push_back(media(name));
    }
    ASSERT_TRUE(drop(paths));
    ASSERT_TRUE(until([&] { return status().starts_with("Selected file"); })) << status();
}

void ScreenTest::onTheTracks()
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    for (const engine::Handle stream : state::StreamCollection) {
        engine::Bool16 ok = engine::kFalse;
        engine::Bool16 isVideo = engine::kFalse;
        engine::check(engine::EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
        engine::check(engine::EngineAs<engine::ITWStreamInfo>()->IsVideo(isVideo));
        const engine::Handle track = state::TrackCollection.Item(isVideo != engine::kFalse ? 1 : 2);
        engine::check(timeline->AppendSource(track, stream, -1, ok));
        ASSERT_NE(ok, engine::kFalse);
    }
    moduleScaleRenderer::AdjustScroll();
    RenderAllBars();
    UpdateTreeView();
    moduleTimeline::UpdateTrackOptions();
    UpdatePreview();
    settle();
}

void TwoFilmScreen::SetUp()
{
    ScreenTest::SetUp();
    window->resize(1560, 900); // room for all of it at this zoom
    opened({"mpeg4.avi", "no-sound.mp4"});
    onTheTracks();
    ModuleHistory::EmptyHistory();
    ASSERT_EQ(barEnd("picVideo0"), 700);
    ASSERT_EQ(barEnd("picAudio0"), 504);
}

} // namespace screens_test
