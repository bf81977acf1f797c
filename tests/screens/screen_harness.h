#pragma once

// The main window over the real engine and the real ports, as a person has it before them.
//
// Texts are read off the widgets, never off the program's state, and everything is done by presses, moves, keys and
// drops on widgets. Tracks are filled by calls of the engine.

#include "engine/types.h"
#include "screens/answers.h"
#include "shell/mdiTarnwick_form.h"
#include "windowing/ini_settings.h"
#include "windowing/qt_lettering.h"
#include "windowing/qt_machine.h"
#include "windowing/qt_ports.h"
#include "windowing/show_pass.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace screens_test {

/// The path of a test medium.
std::string media(const std::string& name);

/// The real one, but that the log stands in a folder of the test's own and nothing is opened on the desktop.
class TestShell final : public Shell {
public:
    bool openWithDesktop(std::string_view path) override
    {
        opened.emplace_back(path);
        return true;
    }
    std::string programFolder() override { return real_.stateFolder(); }
    std::string temporaryFolder() override { return real_.temporaryFolder(); }
    std::string runtimeFolder() override { return real_.runtimeFolder(); }
    std::string stateFolder() override { return real_.stateFolder(); }
    std::int64_t fileLength(std::string_view path) override { return real_.fileLength(path); }
    DateTime fileTime(std::string_view path) override { return real_.fileTime(path); }
    DateTime now() override { return real_.now(); }
    std::string asText(const DateTime& moment) override { return real_.asText(moment); }
    std::string systemText() override { return real_.systemText(); }
    int colourDepth() override { return real_.colourDepth(); }
    void copyWithRename(std::string_view from, std::string_view to) override { real_.copyWithRename(from, to); }

    std::vector<std::string> opened;

private:
    QtShell real_;
};

class ScreenTest : public testing::Test {
protected:
    ScreenTest();
    ~ScreenTest() override;
    void SetUp() override;
    void TearDown() override;

    template <class Widget>
    Widget& find(const char* name) const
    {
        auto* const found = window->findChild<Widget*>(name);
        if (found == nullptr) {
            throw std::runtime_error(std::string("there is no ") + name);
        }
        return *found;
    }
    QWidget& find(const char* name) const { return find<QWidget>(name); }

    /// The dialogue in front; nullptr when there is none.
    static QDialog* front() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
    /// A widget of the dialogue in front.
    template <class Widget>
    static Widget& part(const char* name)
    {
        auto* const found = front() != nullptr ? front()->findChild<Widget*>(name) : nullptr;
        if (found == nullptr) {
            throw std::runtime_error(std::string("there is no ") + name);
        }
        return *found;
    }

    // --- Doing -----------------------------------------------------------------------------------------------------

    /// At a place of the widget, through the window as the system would tell it; the middle by default.
    void press(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton);
    void moveTo(QWidget& widget, QPoint at);
    void release(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton);
    void click(QWidget& widget, QPoint at, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton);
    void click(QWidget& widget) { click(widget, widget.rect().center()); }
    /// Press and release stand in the queue together, as those of a tap on a busy window.
    void tap(QWidget& widget, QPoint at, const std::function<void()>& behind = {});
    /// Presses, moves by so many pixels in steps, and releases.
    void drag(QWidget& widget, QPoint from, int byX);
    void wheel(QWidget& widget, QPoint at, int notches, Qt::KeyboardModifiers keys = {});
    /// A key where the focus is, or to the window.
    void key(Qt::Key key, Qt::KeyboardModifiers keys = {});
    /// Opens the menu and clicks the item, by their texts ("&File", "&Close File").
    void choose(const char* menu, const char* item);
    /// Enters with files and drops them; true when the window took them.
    bool drop(const std::vector<std::string>& paths);

    // --- Seeing ----------------------------------------------------------------------------------------------------

    /// Lets events run until the condition holds; false after five seconds.
    static bool until(const std::function<bool()>& condition);
    /// Lets what is due be shown and painted.
    static void settle();
    std::string status(int panel = 1) const;
    /// Until the first panel of the status bar says so.
    bool says(const std::string& text) const;
    /// The cells of the media list's row, from 0: "a.avi|Video|...".
    std::string row(int place) const;
    int rowCount() const;
    QRect rowRect(int place) const;
    /// The nodes of the timeline list below the root: "Video[a.avi b.bmp] Effects[] ...".
    std::string tree() const;
    /// Where on the row's picture the last bar ends, pixels; -1 when there is no bar.
    int barEnd(const char* picture) const;
    QRgb pixel(const char* widget, int x, int y) const;
    /// Every control below it that is seen has a name for those who cannot see it. How many these are.
    static int expectNames(const QWidget& ground);
    /// Share of a widget's pixels that are bright.
    double brightShare(const char* widget) const;

    // --- Before the journey begins ---------------------------------------------------------------------------------

    /// Opens test media as a drop does, until the last is selected.
    void opened(const std::vector<std::string>& names);
    /// Puts every open stream behind the last one of its track, and shows it.
    void onTheTracks();

    Answers answers;
    TestShell shell;
    bool expectsErrors = false;
    std::unique_ptr<MainWindow> window;

private:
    QPoint inWindow(const QWidget& widget, QPoint at) const { return widget.mapTo(window.get(), at); }

    QtMessageBoxes messages_;
    QtCommonDialogs dialogs_;
    QtEvents events_;
    QtFonts fonts_;
    IniSettings settings_;
    QtMachine machine_;
    QtLettering lettering_;
    std::unique_ptr<ShowPass> pass_;
};

/// mpeg4.avi of 5 s with its sound of 5.04 s, behind it no-sound.mp4 of 2 s: at 10 ms a pixel bars end at 500, 504 and
/// 700. The film is 7 s long.
class TwoFilmScreen : public ScreenTest {
protected:
    void SetUp() override;
    QWidget& video() { return find("picVideo0"); }
    int middle() { return video().height() / 2; }
};

} // namespace screens_test
