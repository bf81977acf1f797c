// Help > About.

#include "screens/screen_harness.h"
#include "shell/about_form.h"
#include "twcore/libraries.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTreeWidget>

namespace screens_test {
namespace {

TEST_F(ScreenTest, AboutTellsLibrariesAndLicenceAndIsLeftByAKey)
{
    about::engineLibraries = twcore::libraries;
    std::string told;
    answers.work([&] {
        QWidget* const dialogue = QApplication::activeModalWidget();
        const auto* const list = dialogue->findChild<QTreeWidget*>("lvwLibraries");
        EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0) << "there is room for all columns";
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            const QTreeWidgetItem& line = *list->topLevelItem(row);
            told += line.text(0).toStdString() + ";";
            // A number of two parts at least; and a licence.
            EXPECT_TRUE(line.text(1).contains(QRegularExpression("^\\d+\\.\\d+"))) << line.text(1).toStdString();
            EXPECT_GT(line.text(2).size(), 2) << line.text(0).toStdString();
        }
        const auto* const licence = dialogue->findChild<QPlainTextEdit*>("txtLicence");
        EXPECT_TRUE(licence->toPlainText().contains("GNU GENERAL PUBLIC LICENSE"));
        EXPECT_TRUE(licence->toPlainText().contains("END OF TERMS AND CONDITIONS"));
        QTest::mouseClick(dialogue->findChild<QPushButton*>("cmdCopy"), Qt::LeftButton);
        QTest::keyClick(dialogue, Qt::Key_Escape);
    });
    window->findChild<QAction*>("mnuHelpAbout")->trigger();
    EXPECT_EQ(told, "Qt;FFmpeg;FluidSynth;SDL;libjpeg-turbo;pugixml;");
    EXPECT_TRUE(QApplication::clipboard()->text().contains(QString("\nQt ") + qVersion() + "\n"));
    about::engineLibraries = nullptr;
}

} // namespace
} // namespace screens_test
