#pragma once

// Projects over the harness of the main window: a folder for them, their files as text, a film of every kind.

#include "project/ModuleProject.h"
#include "shell/file_commands.h"
#include "shell/project_commands.h"
#include "shell/shell_harness.h"
#include "support/files.h"
#include "timeline/slider_places.h"

#include <filesystem>

namespace logic_test {

using testmedia::bytesOf;
using testmedia::writeBytes;

class ProjectTest : public ShellTest {
protected:
    std::string path(const std::string& name) const { return platform.folder + "/" + name; }
    /// Everything in the test's folder, by name.
    std::string files() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(platform.folder)) {
            names.insert(entry.path().filename().string());
        }
        std::string all;
        for (const std::string& name : names) {
            all += (all.empty() ? "" : " ") + name;
        }
        return all;
    }
    std::string lastMessage() const { return platform.messages.empty() ? "" : platform.messages.back().text; }

    /// Opens three files and lays them, with their handles under the letters x, y (picture and sound) and z.
    void makeFilm(const std::string& text)
    {
        open({"h264.mp4", "still.png", "stereo-44k.wav"});
        nameStreams();
        lay(text);
        state::markModified();
    }
    void nameStreams()
    {
        laid.streams = {};
        for (std::size_t i = 0; i < 4 && std::cmp_less(i, state::StreamCollection.Count()); ++i) {
            laid.streams["xsaz"[i]] = state::StreamCollection.Item(static_cast<std::int32_t>(i) + 1);
        }
    }
    /// A first save under that name.
    std::string saved(const std::string& name)
    {
        platform.savedFiles = {path(name)};
        mdiTarnwick::mnuFileSaveProject_Click();
        EXPECT_FALSE(state::SaveCancelled) << lastMessage();
        return path(name);
    }
    void openByDialogue(const std::string& file)
    {
        platform.chosenFiles = {file};
        mdiTarnwick::mnuFileOpenProject_Click();
        nameStreams();
    }
    /// What is kept beside the timeline, in words.
    static std::string view()
    {
        std::string all = "zoom " + std::to_string(state::ZoomFactor) + " size " + std::to_string(state::ProjectWidth)
                          + "x" + std::to_string(state::ProjectHeight);
        if (forms::frmTimeline.imgStartSelHandle.Visible) {
            all +=
                " selection " + std::to_string(state::SelStartPosition) + "-" + std::to_string(state::SelEndPosition);
        }
        for (std::size_t i = 0; i < forms::frmTimeline.imgBookmark.size(); ++i) {
            const ImageBox& image = forms::frmTimeline.imgBookmark[i];
            const Milliseconds time = forms::frmTimeline.BookmarkTimes[i];
            all += image.Visible ? " marker " + std::to_string(time) : std::string();
            EXPECT_EQ(image.Left, moduleScaleRenderer::MsToPixels(time) - timeline::viewLeft() - 4) << time;
        }
        return all;
    }
    static std::string flagsOfProject()
    {
        std::string all;
        for (const auto& [name, isSet] : {std::pair{"modified", state::ProjectModified},
                                          {"dirty", state::MediaListDirty},
                                          {"saved", state::ProjectSaved},
                                          {"failed", state::ProjectOpenFailed},
                                          {"started", forms::mdiTarnwick.ProjectStarted},
                                          {"busy", state::BusyOpening},
                                          {"locked", state::ProjectLoadLock},
                                          {"recent", state::OpeningRecentProject}}) {
            all += isSet ? std::string(all.empty() ? "" : " ") + name : std::string();
        }
        return all;
    }
};

} // namespace logic_test
