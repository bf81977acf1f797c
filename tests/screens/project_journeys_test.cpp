// Projects as a person keeps them: saved, left unsaved, opened from dialogue, menu and command line, closed.

#include "screens/screen_harness.h"

#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <filesystem>

namespace screens_test {
namespace {

namespace fs = std::filesystem;

class ProjectScreen : public ScreenTest {
protected:
    std::string path(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }
    std::string caption() const { return find("frmMediaList").windowTitle().toStdString(); }
    bool isClosed() const { return !window->isVisible(); }
    void film()
    {
        opened({"still.png"});
        key(Qt::Key_F2);
        EXPECT_TRUE(until([&] { return barEnd("picVideo0") > 0; }));
    }
    void saveAs(const std::string& file)
    {
        answers.open({file});
        key(Qt::Key_S, Qt::ControlModifier);
        EXPECT_TRUE(says("Saved " + fs::path(file).filename().string() + "."));
    }

private:
    QTemporaryDir folder_;
};

TEST_F(ProjectScreen, SavedLeftAndOpenedAgain)
{
    film();
    answers.open({});
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(fs::exists(path("film.qpj")), false);
    answers.open({path("film")}); // the ending is the program's to add
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(says("Saved film.qpj."));
    EXPECT_TRUE(fs::exists(path("film.qpj")));
    for (const char* const name : {"film.v2", "a \"new\" one"}) { // whole names, and what ends them is no ending
        answers.open({path(name)});
        choose("&File", "Save Project &As...");
        EXPECT_TRUE(says("Saved " + std::string(name) + ".qpj."));
        EXPECT_TRUE(fs::exists(path(name + std::string(".qpj"))));
    }
    answers.open({path("film")});
    answers.click("&Yes"); // to replace it
    choose("&File", "Save Project &As...");

    key(Qt::Key_F8);
    answers.click("Cancel");
    window->close();
    EXPECT_FALSE(isClosed());
    key(Qt::Key_S, Qt::ControlModifier); // no dialogue any more
    EXPECT_TRUE(says("Saved film.qpj."));

    answers.click("&Yes");
    choose("&File", "Clos&e Project");
    EXPECT_EQ(barEnd("picVideo0"), -1);
    EXPECT_EQ(rowCount(), 0);
    answers.open({path("film.qpj")});
    key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(says("Done"));
    EXPECT_GT(barEnd("picVideo0"), 0);
    EXPECT_EQ(rowCount(), 1);
    window->close();
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(answers.boxes, (std::vector<std::string>{"Save As: film.qpj already exists.\nDo you want to replace it?",
                                                       "?: Do you want save your changes before closing?",
                                                       "?: Are you sure you want to close the current project?"}));
}

TEST_F(ProjectScreen, UnsavedWorkIsAskedForAndGivenUp)
{
    film();
    saveAs(path("one.qpj"));
    key(Qt::Key_F8);
    answers.open({path("one.qpj")});
    answers.click("Cancel");
    key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_GT(barEnd("picVideo0"), 0);
    answers.click("&Yes");
    answers.open({}); // Escape is no No
    choose("&File", "Clos&e Project");
    EXPECT_EQ(rowCount(), 1);
    answers.click("&Yes");
    answers.click("&No");
    choose("&File", "Clos&e Project");
    EXPECT_EQ(rowCount(), 0);
    QMenu* recent = nullptr;
    for (QMenu* const menu : window->menuBar()->findChildren<QMenu*>()) {
        recent = menu->title() == "Recent &Projects" ? menu : recent;
    }
    ASSERT_NE(recent, nullptr);
    ASSERT_FALSE(recent->isEmpty());
    EXPECT_EQ(recent->actions().front()->text().toStdString(), path("one.qpj"));
    recent->popup({});
    QTest::mouseClick(recent, Qt::LeftButton, {}, recent->actionGeometry(recent->actions().front()).center());
    EXPECT_TRUE(says("Done"));
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(answers.boxes, (std::vector<std::string>{"?: Save changes to one.qpj ?",
                                                       "?: Are you sure you want to close the current project?",
                                                       "Save Project: ?: Do you want to save your changes?",
                                                       "?: Are you sure you want to close the current project?",
                                                       "Save Project: ?: Do you want to save your changes?"}));
}

} // namespace
} // namespace screens_test
