// The main window: closing while it is busy, reports of errors, names for those who cannot see the controls.

#include "core/trap.h"
#include "report/error_log.h"
#include "screens/screen_harness.h"

#include <QAbstractButton>
#include <QLabel>

namespace screens_test {
namespace {

void failInAHandler()
{
    Trapped("frmTimeline", "cmdZoomIn_Click", [] { throw engine::RuntimeError(5, "Invalid procedure call"); });
}

TEST_F(ScreenTest, AnErrorOpensTheReportAndDontSendKeepsTheLog)
{
    expectsErrors = true;
    answers.click("Don't Send");
    std::string words;
    answers.meanwhile = [&] {
        for (const QLabel* const label : QApplication::activeModalWidget()->findChildren<QLabel*>()) {
            words += label->text().toStdString() + "\n";
        }
    };
    failInAHandler();
    EXPECT_NE(words.find("Please tell Brindlecove about this problem\n"), std::string::npos) << words;
    const std::string log = error_log::read();
    for (const char* const part : {"Invalid procedure call", "frmTimeline", "cmdZoomIn_Click"}) {
        EXPECT_NE(log.find(part), std::string::npos) << log;
    }
    EXPECT_TRUE(shell.opened.empty());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ScreenTest, AReportTellsWhatItHoldsAndIsSent)
{
    answers.click("Send Error Report");
    answers.meanwhile = [&] {
        answers.boxes.clear();
        // The link is followed while the dialogue stands; its box is one more to be answered.
        auto* const link = QApplication::activeModalWidget()->findChild<QLabel*>("lblReportContents");
        ASSERT_NE(link, nullptr);
        QTimer::singleShot(0, link, [this, link] {
            answers.click("OK");
            emit link->linkActivated("#");
        });
        ASSERT_TRUE(until([&] { return answers.boxes.size() == 1; }));
    };
    failInAHandler();
    ASSERT_EQ(answers.boxes.size(), 1U);
    EXPECT_TRUE(answers.boxes[0].starts_with("This error report includes information")) << answers.boxes[0];
    EXPECT_EQ(shell.opened.size(), 1U); // the page that sends it, after which the log is gone
}

TEST_F(ScreenTest, TheWindowStaysWhileFilesAreBeingOpened)
{
    bool hasClosed = true;
    answers.click("OK");
    answers.meanwhile = [&] { hasClosed = window->close(); };
    ASSERT_TRUE(drop({media("still.png"), media("bad/text.avi"), media("still.bmp")}));
    EXPECT_TRUE(says("Selected file: \"still.bmp\". Total Files in Media List: 2."));
    EXPECT_FALSE(hasClosed);
    EXPECT_TRUE(window->isVisible());
    answers.click("&No"); // the files are work that is not saved
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ScreenTest, AnOpeningThatIsCancelledEndsBetweenTwoFiles)
{
    answers.click("OK");
    answers.meanwhile = [&] {
        for (QAbstractButton* const button : window->findChildren<QAbstractButton*>()) {
            if (button->text() == "Cancel") {
                button->click();
            }
        }
    };
    ASSERT_TRUE(drop({media("still.png"), media("bad/text.avi"), media("still.bmp")}));
    EXPECT_TRUE(says("Done"));
    EXPECT_EQ(rowCount(), 1);
    EXPECT_FALSE(find("pbarMain").isVisible());
}

TEST_F(ScreenTest, TheMediaListIsHiddenAndShownAgain)
{
    QWidget& list = find("frmMediaList");
    EXPECT_TRUE(list.isVisible());
    const int previewWidth = find("frmPreview").width();
    for (QAbstractButton* const button : list.parentWidget()->findChildren<QAbstractButton*>()) {
        if (button->accessibleName() == "Hide this panel") {
            click(*button);
        }
    }
    EXPECT_TRUE(until([&] { return !list.isVisible() && find("frmPreview").width() > previewWidth; }));
    choose("&Window", "&Media List");
    EXPECT_TRUE(until([&] { return list.isVisible() && find("frmPreview").width() == previewWidth; }));
}

TEST_F(ScreenTest, EveryControlThatIsSeenHasAName)
{
    opened({"mpeg4.avi"});
    onTheTracks();
    key(Qt::Key_F5);
    const int seen = expectNames(*window);
    EXPECT_GT(seen, 25);
}

} // namespace
} // namespace screens_test
