// Files on the disk: what the open dialogue shows and gives, folders, files that go and come back.

#include "screens/screen_harness.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTreeView>
#include <filesystem>
#include <fstream>

namespace screens_test {
namespace {

namespace fs = std::filesystem;

class MediaFilesScreen : public ScreenTest {
protected:
    /// A copy of a test medium in a folder of the test's own; its whole path.
    std::string copied(const std::string& name, const std::string& to) const
    {
        const fs::path path = fs::path(folder_.path().toStdString()) / to;
        fs::create_directories(path.parent_path());
        fs::copy_file(media(name), path);
        return path.string();
    }
    std::string folder() const { return folder_.path().toStdString(); }
    static QFileDialog& dialogue() { return *qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); }

    /// The files that the dialogue lists, blanks between.
    static std::string listed()
    {
        const auto& list = *dialogue().findChild<QListView*>("listView");
        std::string all;
        for (int i = 0; i < list.model()->rowCount(list.rootIndex()); ++i) {
            all += (i == 0 ? "" : " ") + list.model()->index(i, 0, list.rootIndex()).data().toString().toStdString();
        }
        return all;
    }
    std::string tipOf(int place) const
    {
        return find<QTreeView>("lvwMediaList").model()->index(place, 0).data(Qt::ToolTipRole).toString().toStdString();
    }
    QImage signOf(int place) const
    {
        const QVariant icon = find<QTreeView>("lvwMediaList").model()->index(place, 0).data(Qt::DecorationRole);
        return icon.value<QIcon>().pixmap(16, 16).toImage();
    }

private:
    QTemporaryDir folder_;
};

TEST_F(MediaFilesScreen, TheFiltersOfTheDialogueLetTheirKindsThrough)
{
    for (const char* const name : {"a.mp4", "b.MOV", "c.flac", "d.png", "e", "f.avi", "g.txt"}) {
        std::ofstream(fs::path(folder()) / name) << "x";
    }
    answers.open({});
    answers.meanwhile = [&] {
        dialogue().setDirectory(QString::fromStdString(folder()));
        auto& filters = *dialogue().findChild<QComboBox*>("fileTypeCombo");
        EXPECT_EQ(filters.currentText(), "All supported Media Files");
        QTest::keyClick(&filters, Qt::Key_Home);
        for (const char* const files : {"a.mp4 b.MOV f.avi", "c.flac", "d.png", "a.mp4 b.MOV c.flac d.png f.avi",
                                        "a.mp4 b.MOV c.flac d.png e f.avi g.txt", "a.mp4 b.MOV c.flac d.png"}) {
            EXPECT_TRUE(until([&] { return listed() == files; }))
                << filters.currentText().toStdString() << ": " << listed();
            QTest::keyClick(&filters, Qt::Key_Down);
        }
    };
    choose("&File", "Open &File...");
}

TEST_F(MediaFilesScreen, EveryNameThatIsTypedIsOpenedOrTold)
{
    copied("still.bmp", "one/still.bmp");
    copied("still.bmp", "one/hidden.xyz");
    const std::string other = copied("still.png", "two/still.png");
    answers.open({"still.bmp", "hidden.xyz", "gone.avi", other});
    answers.click("OK");
    answers.meanwhile = [&] { dialogue().setDirectory(QString::fromStdString(folder() + "/one")); };
    choose("&File", "Open &File...");
    EXPECT_TRUE(says("Selected file: \"still.png\". Total Files in Media List: 3."));
    EXPECT_EQ(answers.boxes, std::vector{"i: Unable to open " + folder() + "/one/gone.avi."});
    EXPECT_EQ(find<QLabel>("lblInfoDisplay0").toolTip().toStdString(), other);
    EXPECT_EQ(tipOf(0) + " " + tipOf(1), "still.bmp hidden.xyz");
}

TEST_F(MediaFilesScreen, APathThatLeadsUpIsOpenedFromAnyFolder)
{
    copied("still.bmp", "one/still.bmp");
    const std::string above = copied("still.png", "still.png");
    int count = 0;
    for (const std::string& path : {above, std::string("../still.png")}) {
        answers.work([&] {
            QFileDialog& open = dialogue();
            open.setDirectory(QString::fromStdString(folder() + "/one"));
            auto* const edit = open.findChild<QLineEdit*>("fileNameEdit");
            for (const char letter : path) { // the list is marked by each
                QTest::keyClick(edit, letter);
                settle();
            }
            QTest::keyClick(edit, Qt::Key_Return);
            EXPECT_FALSE(open.isVisible()) << path;
            open.close();
        });
        choose("&File", "Open &File...");
        EXPECT_TRUE(says("Selected file: \"still.png\". Total Files in Media List: " + std::to_string(++count) + "."));
    }
}

TEST_F(MediaFilesScreen, ComingBackToTheWindowShowsWhatWentAndCameMeanwhile)
{
    const std::string path = copied("mpeg4.avi", "going.avi");
    ASSERT_TRUE(drop({path, media("still.png")}));
    ASSERT_TRUE(until([&] { return status().starts_with("Selected file"); }));
    const auto awayAndBack = [&](const std::string& from, const std::string& to) {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        fs::rename(from, to);
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    };
    awayAndBack(path, path + ".away");
    EXPECT_TRUE(until([&] { return tipOf(0) == "going.avi is missing from the disk"; })) << tipOf(0);
    awayAndBack(path + ".away", path);
    EXPECT_TRUE(until([&] { return tipOf(0) == "going.avi"; })) << tipOf(0);
}

TEST_F(MediaFilesScreen, AFileThatHasGoneIsToldOnceAndMarkedUntilItIsBack)
{
    const std::string path = copied("mpeg4.avi", "going.avi");
    ASSERT_TRUE(drop({path, media("still.png")}));
    ASSERT_TRUE(until([&] { return status().starts_with("Selected file"); }));
    const QImage before = signOf(0);
    click(*find<QTreeView>("lvwMediaList").viewport(), rowRect(0).center());
    fs::rename(path, path + ".away");
    key(Qt::Key_F2); // the preview opens it
    const std::string told =
        "The file \"going.avi\" is missing from the disk. What lies of it on the timeline is black and silent.";
    EXPECT_TRUE(says(told));
    EXPECT_EQ(tipOf(0), "going.avi is missing from the disk");
    EXPECT_NE(signOf(0), before);
    EXPECT_EQ(tipOf(1), "still.png");

    // Told once.
    moveTo(*find<QTreeView>("lvwMediaList").viewport(), rowRect(1).center());
    const auto lookAgain = [&] {
        choose("&Window", "&Media List");
        choose("&Window", "&Media List");
    };
    lookAgain();
    EXPECT_FALSE(QTest::qWaitFor([&] { return status() == told; }, 300));
    EXPECT_NE(signOf(0), before);

    constexpr double kWords = 0.05; // on black
    EXPECT_TRUE(until([&] { return brightShare("picDisplay") < kWords; })) << brightShare("picDisplay");
    fs::rename(path + ".away", path);
    lookAgain();
    EXPECT_TRUE(until([&] { return signOf(0) == before; }));
    EXPECT_TRUE(until([&] { return brightShare("picDisplay") > kWords; })) << brightShare("picDisplay");

    // Seen at the list's showing as well, without the preview.
    fs::remove(path);
    lookAgain();
    EXPECT_TRUE(says(told));
    EXPECT_EQ(tipOf(0), "going.avi is missing from the disk");
}

} // namespace
} // namespace screens_test
