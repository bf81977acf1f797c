// The offer at the start as a person meets it; when the journal is told of the end of an event.

#include "core/colours.h"
#include "core/forms/frmTimeline.h"
#include "core/platform.h"
#include "journal/journal.h"
#include "journal/journal_file.h"
#include "journal/offer_form.h"
#include "journal/state_coding.h"
#include "screens/screen_harness.h"
#include "windowing/turn_end.h"

#include <QDialog>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <filesystem>

namespace screens_test {
namespace {

class JournalScreen : public ScreenTest {};

TEST_F(JournalScreen, ATurnEndsBehindAHandlerAndNeverInIt)
{
    bool isBusy = false;
    int inside = 0;
    int ended = 0;
    const TurnEnd turns([&] {
        ++ended;
        inside += isBusy ? 1 : 0;
    });
    QEventLoop program; // as the program's own
    QTimer other;
    other.start(1);
    QTimer::singleShot(0, &program, [&] {
        isBusy = true;
        for (int step = 0; step < 5; ++step) {
            QThread::msleep(2);
            ports.events->letRun();
        }
        QEventLoop box;
        QTimer::singleShot(30, &box, &QEventLoop::quit);
        box.exec();
        isBusy = false;
        QTimer::singleShot(30, &program, &QEventLoop::quit);
    });
    program.exec();
    EXPECT_EQ(inside, 0);
    EXPECT_GT(ended, 0);
}

TEST_F(JournalScreen, ATurnEndsInAWindowOfWholeCommandsAndInNoBox)
{
    for (const bool isForCommands : {false, true}) {
        int inside = 0;
        QDialog dialogue;
        const TurnEnd turns([&] { inside += dialogue.isVisible() ? 1 : 0; });
        if (isForCommands) {
            TurnEnd::endTurnsIn(dialogue);
        }
        QEventLoop program;
        answers.work([&] { QTimer::singleShot(30, &dialogue, &QDialog::accept); });
        QTimer::singleShot(0, &program, [&] {
            dialogue.exec();
            program.quit();
        });
        program.exec();
        EXPECT_EQ(inside > 0, isForCommands);
    }
}

/// One clip of a second, just added, and a marker; as a killed run has left it.
void leaveWork(const std::string& folder)
{
    journal::StateImage image;
    image.media = std::make_shared<journal::MediaTable>(journal::MediaTable{{{media("mpeg4.avi"), 7, 8}}, 1});
    image.tracks = {1, 2, 3, 4};
    ModuleHistory::ImageRecords laid;
    laid.Sources = {{.Stop = 1000, .MediaStop = 1000, .Stream = 7, .Track = 1}};
    image.timeline = image.newest = std::make_shared<ModuleHistory::ImageRecords>(laid);
    image.isNewestWhole = true;
    image.entries = {{"ADD_TO_TIMELINE", 0, true, std::make_shared<ModuleHistory::ImageRecords>()}};
    image.desk.projectPath = "/films/holiday.qpj";
    image.desk.isModified = true;
    image.desk.historyIndex = 1;
    image.desk.historyRows = {{"", "Add to Timeline", "ADD_TO_TIMELINE", colours::kWindowText}};
    image.desk.bookmarks = {{}, {500, true}};
    std::filesystem::create_directories(folder);
    journal::StateWriter writer;
    EXPECT_TRUE(journal::JournalFile::open(folder + "/work.journal")->append(writer.difference(image, {}, 1)));
}

TEST_F(JournalScreen, AcceptedWorkStandsOnTheScreenAndCanBeTakenBack)
{
    const std::string folder = ports.shell->stateFolder() + "/journal";
    leaveWork(folder);
    const std::string empty = tree();
    answers.click("&Yes");
    journal::start();
    EXPECT_TRUE(journal::offer());
    settle();
    EXPECT_NE(answers.boxes.back().find("\"holiday.qpj\""), std::string::npos);
    EXPECT_EQ(find<QAbstractItemView>("lvwMediaList").model()->rowCount(), 1);
    EXPECT_NE(tree().find("mpeg4"), std::string::npos) << tree();
    EXPECT_TRUE(forms::frmTimeline.imgBookmark[1].Visible);
    window->activateWindow(); // the box had the keys
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(tree(), empty);
    journal::stop();
    std::filesystem::remove_all(folder);
}

TEST_F(JournalScreen, OneOfTheWorksSetAsideIsChosenOrNone)
{
    answers.click("&Bring Back");
    EXPECT_EQ(journal::showLeftovers({"new", "old"}), 0U);
    answers.meanwhile = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down); };
    answers.click("&Bring Back");
    EXPECT_EQ(journal::showLeftovers({"new", "old"}), 1U);
    answers.click("Cancel");
    EXPECT_EQ(journal::showLeftovers({"new", "old"}), std::nullopt);
}

} // namespace
} // namespace screens_test
