// The journal without a kill: what is offered, what is kept, and what never gets into it.

#include "journal/journal.h"

#include "app/child_process.h"
#include "app/edit_dump.h"
#include "app/edit_hand.h"
#include "app/edit_words.h"
#include "core/forms/frmMediaList.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "items/transition_key.h"
#include "journal/journal_file.h"
#include "journal/leftover.h"
#include "media/moduleTarnwick.h"
#include "support/files.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/resource.h>
#include <thread>

namespace journal_test {
namespace {

namespace fs = std::filesystem;
using Answer = MessageAnswer;

/// Answers the questions of one start, and writes down what is told.
class Person final : public MessageBoxes {
public:
    explicit Person(Answer answer) : answer_(answer) { ports.messages = this; }
    Answer show(std::string_view text, MessageIcon, MessageButtons, std::string_view) override
    {
        told += text;
        ++count;
        return answer_;
    }

    std::string told;
    int count = 0;

private:
    Answer answer_;
};

/// A program over the journal in a folder. It ends without a word, as by a kill.
class Program {
public:
    explicit Program(const testmedia::TempFolder& folder, Answer answer = Answer::kYes) : person(answer)
    {
        session_.openJournal(folder.path());
    }

    void run(const std::string& lines)
    {
        std::istringstream script(lines);
        for (std::string line; std::getline(script, line);) {
            app::runLine(session_, line, ignored_);
        }
    }
    /// A stretch mode and a key as a dialogue gives them, without a step of the history.
    static void setLooks(std::int16_t mode, std::int16_t red)
    {
        engine::check(
            engine::EngineAs<engine::ITWTimeline>()->SetSourceStretchMode(state::TrackCollection.Item(1), 0, mode));
        moduleEdit::ApplyTransitionKey(state::OverlayTrack, 0, red, 0, 0);
        state::markModified();
    }
    static std::string looks()
    {
        const auto image = ModuleHistory::ReadTimeline();
        return std::to_string(image.Sources.at(0).StretchMode) + " " + std::to_string(image.Transitions.at(0).KeyRed);
    }
    std::string text() const { return app::asText(app::readTimeline(session_)) + app::historyText(); }

private:
    std::ostringstream ignored_;
    app::EditSession session_{ignored_};

public:
    Person person;
};

std::set<std::string> setAside(const testmedia::TempFolder& folder)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder / "journal")) {
        if (entry.path().filename().string().starts_with("set-aside-")) {
            names.insert(entry.path());
        }
    }
    return names;
}

const std::string kWork = "media clip 3000 va\nadd clip\nslider 1000\nsplit";

TEST(Journal, BringsBackAllWithItsNameAndItsFlags)
{
    const testmedia::TempFolder folder;
    std::string text;
    {
        Program program(folder);
        state::ProjectFilePath = folder / "film.qpj";
        program.run(kWork + "\nrange 500 1500\nlock audio2 on\noverlay clip\noverlay clip\nundo\nlink overlay off");
        forms::frmTimeline.chkDisableOverlay[0].Value = std::int16_t{1};
        program.setLooks(2, 11);
        program.run("slider 2000");
        text = program.text();
    }
    Program program(folder);
    EXPECT_NE(program.person.told.find("\"film.qpj\""), std::string::npos) << program.person.told;
    EXPECT_EQ(program.text(), text);
    EXPECT_EQ(program.looks(), "2 11");
    EXPECT_EQ(state::ProjectFilePath, (folder / "film.qpj").string());
    EXPECT_EQ(forms::frmMediaList.Caption.get(), "Media List - Project: film.qpj");
    EXPECT_TRUE(state::ProjectModified && forms::mdiTarnwick.ProjectStarted);
    EXPECT_FALSE(state::ProjectSaved || state::BusyOpening || state::ProjectLoadLock || state::ProjectOpenFailed);
    EXPECT_EQ(forms::frmTimeline.chkLockAudio[1].Value, 1);
    EXPECT_EQ(forms::frmTimeline.chkLinkOverlay[0].Value, 0);
    EXPECT_EQ(forms::frmTimeline.chkDisableOverlay[0].Value, 1);
    EXPECT_EQ(state::SelStartPosition, 500);
    EXPECT_EQ(state::SelEndPosition, 1500);
    program.run("redo\nundo\nundo\nundo\nundo");
    EXPECT_EQ(program.text().find("video"), std::string::npos);
}

TEST(Journal, HoldsNothingBehindASaveOrANo)
{
    const testmedia::TempFolder folder;
    {
        Program program(folder);
        program.run(kWork);
        state::ProjectModified = state::MediaListDirty = false; // as by a save
        journal::end();
        program.run("slider 500");
    }
    {
        Program program(folder);
        EXPECT_EQ(program.person.told, "");
        program.run(kWork); // and work behind the end is journalled again
    }
    EXPECT_EQ(Program(folder).person.count, 1);
}

TEST(Journal, KeepsTheLastFiveThatWereNotWanted)
{
    const testmedia::TempFolder folder;
    std::string text;
    for (int i = 1; i <= 7; ++i) {
        Program program(folder, Answer::kNo);
        EXPECT_EQ(program.text().find("video"), std::string::npos);
        program.run("media clip" + std::to_string(i) + " 3000 va\nadd clip" + std::to_string(i));
        text = i == 6 ? program.text() : text;
    }
    EXPECT_EQ(setAside(folder).size(), 5U);
    std::vector<std::string> shown;
    journal::chooseLeftover = [&](const std::vector<std::string>& descriptions) {
        shown = descriptions;
        return std::optional<std::size_t>(0);
    };
    {
        Program program(folder, Answer::kNo);
        EXPECT_EQ(shown.size(), 5U);
        EXPECT_EQ(program.text(), text); // the newest of them; the seventh was declined just now
    }
    journal::chooseLeftover = nullptr;
    Program program(folder);
    EXPECT_EQ(program.text(), text) << "what was chosen is journalled like any other work";
    journal::setAside("another project was opened");
    journal::stop();
    journal::Objects objects;
    ASSERT_TRUE(journal::readJournal(*setAside(folder).rbegin(), objects));
    const auto work = journal::leftoverOf(objects);
    ASSERT_TRUE(work.has_value());
    EXPECT_NE(journal::describe(*work).find("another project was opened"), std::string::npos);
}

TEST(Journal, TellsWhenTheProjectsFileIsAnother)
{
    const testmedia::TempFolder folder;
    const fs::path project = folder / "film.qpj";
    for (const char* const change : {"", "was changed", "is newer", "no longer there"}) {
        std::ofstream(project) << "old";
        {
            Program program(folder, Answer::kNo);
            state::ProjectFilePath = project;
            state::ProjectSaved = true;
            program.run(kWork);
        }
        const std::string what = change;
        if (what == "no longer there") {
            fs::remove(project);
        } else if (!what.empty()) {
            std::ofstream(project) << "other";
            const auto by = std::chrono::hours(what == "is newer" ? 1 : -1);
            fs::last_write_time(project, fs::file_time_type::clock::now() + by);
        }
        const Program program(folder, Answer::kNo);
        EXPECT_EQ(program.person.told.find("the project's file") != std::string::npos, !what.empty());
        EXPECT_NE(program.person.told.find(what), std::string::npos) << program.person.told;
    }
}

TEST(Journal, BringsBackAllButAMissingFileAndKeepsTheRest)
{
    const testmedia::TempFolder folder;
    {
        Program program(folder);
        program.run("media gone 2000 va\nmedia clip 3000 va\nadd gone\nadd clip\nadd gone\nslider 2500\nsplit");
    }
    fs::rename(folder / "media/gone.avi", folder / "media/elsewhere");
    {
        Program program(folder);
        EXPECT_NE(program.person.told.find("gone.avi"), std::string::npos);
        EXPECT_TRUE(program.text().starts_with("video 0 2000 2500 0 500 clip\nvideo 1 2500 5000 500 3000 clip\n"))
            << program.text();
        program.run("undo\nundo\nundo\nundo\nredo");
    }
    EXPECT_EQ(setAside(folder).size(), 1U);
}

/// Of a project that was opened: the pattern is its first marker.
TEST(Journal, BringsBackMarkersAsTheyStand)
{
    const testmedia::TempFolder folder;
    auto& form = forms::frmTimeline;
    {
        Program program(folder);
        form.imgBookmark.resize(3, form.imgBookmark.front());
        form.BookmarkTimes = {700, 100, 900};
        form.BookmarkCount = 2;
        form.imgBookmark[0].Visible = form.imgBookmark[2].Visible = true;
        form.imgBookmark[0].Picture = std::string("BOOKMARKSEL");
        state::markModified();
        program.run("slider 0");
    }
    const Program program(folder);
    EXPECT_EQ(form.BookmarkTimes, (std::vector<std::int32_t>{700, 100, 900}));
    EXPECT_TRUE(form.imgBookmark[0].Visible && !form.imgBookmark[1].Visible && form.imgBookmark[2].Visible);
    EXPECT_EQ(form.imgBookmark[0].Picture.get(), "BOOKMARKSEL");
    EXPECT_EQ(form.imgBookmark[2].Left - form.imgBookmark[1].Left, 800); // at one ms a pixel
    EXPECT_EQ(form.BookmarkCount, 2);
}

/// A file that was closed is named by images still; a step opens it again.
TEST(Journal, BringsBackWhatAStepOpensAgain)
{
    const testmedia::TempFolder folder;
    const std::string laid = "video 0 0 3000 0 3000 clip\nvideo 1 3000 5000 0 2000 ";
    {
        Program program(folder);
        program.run("media clip 3000 va\nmedia gone 2000 va\nadd clip\nadd gone");
        ASSERT_TRUE(program.text().starts_with(laid));
        forms::frmMediaList.lvwMediaList.Change(1).Selected = false;
        forms::frmMediaList.lvwMediaList.Change(2).Selected = true;
        moduleTarnwick::OnFileCloseClick();
        program.run("undo");
    }
    Program program(folder);
    EXPECT_EQ(state::FileCollection.Count(), 1);
    program.run("redo");
    EXPECT_TRUE(program.text().starts_with(laid)) << program.text();
    EXPECT_EQ(state::FileCollection.Count(), 2);
}

/// Events that run while a command does must not journal what is half done.
TEST(Journal, WaitsForTheEndOfADragAndOfAnOpening)
{
    const testmedia::TempFolder folder;
    Program program(folder);
    const auto isWritten = [&] {
        journal::Objects objects;
        return journal::readJournal(folder / "journal/work.journal", objects) && journal::leftoverOf(objects);
    };
    for (bool* const flag :
         {&state::BusyOpening, &state::ProjectLoadLock, &state::InSelectionUpdate, &forms::frmTimeline.DragActive,
          &forms::frmTimeline.Trimming, &forms::frmTimeline.DraggingBookmark}) {
        *flag = true;
        program.run(flag == &state::BusyOpening ? "effect Blur 0 1000" : "slider 100");
        *flag = false;
        journal::stop();
        EXPECT_FALSE(isWritten());
        journal::start();
        journal::offer();
    }
    program.run("slider 100");
    journal::stop();
    EXPECT_TRUE(isWritten());
}

TEST(Journal, GoesOnWithoutADisk)
{
    const testmedia::TempFolder folder;
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    std::string text;
    {
        Program program(folder);
        program.run(kWork);
        const rlimit none{0, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
        int told = 0;
        for (const char* const line : {"slider 1500", "split", "undo", "redo", "undo", "redo"}) {
            program.run(line);
            told += forms::mdiTarnwick.sbr.Panel(1).get().find("not being secured") != std::string::npos ? 1 : 0;
            forms::mdiTarnwick.sbr.Panel(1) = std::string();
        }
        ::setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(told, 1);
        program.run("slider 2000\nsplit"); // there is room again
        text = program.text();
    }
    EXPECT_EQ(Program(folder).text(), text);
}

int stepsIn(const std::string& path)
{
    journal::Objects objects;
    const auto work = journal::readJournal(path, objects) ? journal::leftoverOf(objects) : std::nullopt;
    return work ? work->image.desk.historyIndex : 0;
}

TEST(Journal, StandsAgainWhenItWasTakenAway)
{
    const std::pair<const char*, void (*)(const fs::path&)> ways[] = {
        {"file", [](const fs::path& file) { fs::remove(file); }},
        {"folder", [](const fs::path& file) { fs::remove_all(file.parent_path()); }},
        {"another", [](const fs::path& file) { fs::rename(file, file.string() + ".old"), std::ofstream(file) << "x"; }},
        {"cut", [](const fs::path& file) { fs::resize_file(file, 100); }},
        {"emptied", [](const fs::path& file) { fs::resize_file(file, 0); }},
    };
    for (const auto& [name, takeAway] : ways) {
        SCOPED_TRACE(name);
        const testmedia::TempFolder folder;
        std::string text;
        {
            Program program(folder);
            program.run(kWork);
            while (stepsIn(folder / "journal/work.journal") < ModuleHistory::HistoryIndex) {
                std::this_thread::yield();
            }
            takeAway(folder / "journal/work.journal");
            program.run("slider 1500\nsplit");
            text = program.text();
        }
        EXPECT_EQ(Program(folder).text(), text);
    }
}

TEST(Journal, OfAnotherVersionIsKept)
{
    const testmedia::TempFolder folder;
    const std::string work = "QMJRNL99 and what nobody knows yet";
    fs::create_directories(folder / "journal");
    std::ofstream(folder / "journal/work.journal") << work;
    const std::string future = folder / "journal/set-aside-00002999999999999999.journal";
    std::ofstream(future) << "set aside before the clock was set back";
    Program(folder).run(kWork);
    ASSERT_EQ(setAside(folder).size(), 2U);
    EXPECT_EQ(testmedia::bytesOf(*setAside(folder).rbegin()), work);
}

TEST(Journal, BelongsToOneProcess)
{
    const testmedia::TempFolder folder;
    const std::string path = folder / "work.journal";
    const auto first = journal::JournalFile::open(path);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(journal::JournalFile::open(path), nullptr);
}

} // namespace
} // namespace journal_test
