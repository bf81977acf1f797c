#pragma once

// The media list over the real engine with generated media and a scripted platform; what stands on the screen and on
// the tracks as text. The small player is the real one, whose clock goes on only when the test says so.

#include "engine/ITWFilePreview.h"
#include "media/frmMediaList_events.h"
#include "media/moduleTarnwick.h"
#include "shell/file_commands.h"
#include "support/logic_harness.h"

#include <filesystem>

namespace logic_test {

namespace fs = std::filesystem;

class MediaListTest : public LogicTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(moduleTarnwick::Init());
        LogicTest::SetUp();
        smallPlayer = engine::EngineAs<engine::ITWFilePreview>().get();
        engineCalls.answer = std::ref(heldPlayer);
        frmMediaList::Load();
        platform.whileEventsRun = [this] { seen.push_back(statusText()); };
    }

    static std::string statusText() { return forms::mdiTarnwick.sbr.Panel(1); }
    static ListView& list() { return forms::frmMediaList.lvwMediaList; }

    void open(std::initializer_list<const char*> names)
    {
        LogicTest::open(names);
        seen.clear();
    }
    /// A copy of a test medium in the platform's folder; its whole path.
    std::string copied(const std::string& name, const std::string& to) const
    {
        const fs::path path = fs::path(platform.folder) / to;
        fs::create_directories(path.parent_path());
        fs::copy_file(media(name), path);
        return path.string();
    }

    /// How long the file is that the small player has loaded, and where it stands.
    std::int32_t loadedMs()
    {
        std::int32_t length = -1;
        engine::check(smallPlayer->GetDuration(length));
        return length;
    }
    std::int32_t playedMs()
    {
        std::int32_t position = -1;
        engine::check(smallPlayer->GetPosition(position));
        return position;
    }

    /// The texts of all message boxes since the last time, each in brackets; folders of the media left out.
    std::string takeMessages()
    {
        std::string all;
        for (const auto& message : std::exchange(platform.messages, {})) {
            EXPECT_EQ(message.title, "Quillmont");
            EXPECT_EQ(message.icon, MessageIcon::kInformation);
            all += "[" + plain(message.text) + "]";
        }
        return all;
    }
    std::string plain(std::string text) const
    {
        for (const std::string& folder : {testmedia::mediaFolder().string() + "/", platform.folder + "/"}) {
            for (std::size_t at; (at = text.find(folder)) != std::string::npos;) {
                text.erase(at, folder.size());
            }
        }
        for (std::size_t at; (at = text.find("\r\n")) != std::string::npos;) {
            text.replace(at, 2, "|");
        }
        return text;
    }

    /// Names of the rows, "*" behind a selected one, "<" at the focus. Fails when rows and files are out of step.
    static std::string rows()
    {
        EXPECT_EQ(list().Count(), state::FileCollection.Count());
        std::string all;
        for (std::int32_t place = 1; place <= list().Count(); ++place) {
            const ListItem& row = list().Row(place);
            all += (place > 1 ? " " : "") + row.Text + (row.Selected ? "*" : "")
                   + (list().SelectedItem == place ? "<" : "");
        }
        return all;
    }
    std::string recentFiles() const
    {
        std::string all;
        for (const Menu& item : forms::mdiTarnwick.mnuFileRF) {
            all += (all.empty() ? "" : " ") + plain(item.Caption);
        }
        return all;
    }
    static void select(std::initializer_list<std::int32_t> places)
    {
        frmMediaList::ClearMediaListSelections();
        for (const std::int32_t place : places) {
            list().Change(place).Selected = true;
            list().SelectedItem = place;
        }
    }

    std::vector<std::string> seen; // status texts while events ran
    engine::ITWFilePreview* smallPlayer = nullptr;
    testsupport::HeldPlayer heldPlayer{"FilePreviewInterface"};
};

} // namespace logic_test
