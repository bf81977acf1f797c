#pragma once

// The platform of a run without screens: questions are answered Yes, what is told goes to a stream, settings live in
// memory, and every folder that the program writes into is the run's own.
//
// Interface thread only, as the ports.

#include "core/block_letters.h"
#include "core/platform.h"

#include <iosfwd>
#include <map>

namespace app {

class EditPlatform final : public MessageBoxes,
                           public CommonDialogs,
                           public Events,
                           public Fonts,
                           public SettingsStore,
                           public Shell,
                           public Machine {
public:
    /// Sets the ports to this object until it goes. Messages are written to `told`, a line each. `folder` is there
    /// already, without a separator at its end. Both outlive this object.
    EditPlatform(std::ostream& told, std::string folder);
    /// A state folder that outlives the run.
    void useStateFolder(std::string folder) { stateFolder_ = std::move(folder); }
    ~EditPlatform() override;
    EditPlatform(const EditPlatform&) = delete;
    EditPlatform& operator=(const EditPlatform&) = delete;

    /// What the next open dialogue answers; without one it is cancelled.
    std::string chosenFile;
    /// What the next save dialogue answers; without one it is cancelled.
    std::string savedFile;

    MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                       std::string_view title) override;
    std::string openFiles(const OpenFileRequest& request) override;
    std::string saveFile(const SaveFileRequest& request) override;
    std::string pickFolder(std::string_view, std::string_view) override { return {}; }
    std::int32_t chooseColour(std::int32_t present) override { return present; }
    void chooseFont(TextFont&, std::int32_t&) override {}
    void letRun() override {}
    VolumeNews askVolume(std::string_view path, std::int32_t longestMs) override;
    bool moveToTrash(std::string_view) override { return false; }
    std::shared_ptr<void> keepAwake(std::string_view) override { return nullptr; }
    std::uint32_t ticks() override;
    double textWidth(std::string_view text) override { return 7.0 * static_cast<double>(text.size()); }
    double textHeight() override { return 13; }
    int generation() override { return 0; }
    std::optional<std::string> get(std::string_view application, std::string_view section,
                                   std::string_view key) override;
    void save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override;
    void deleteSection(std::string_view application, std::string_view section) override;
    bool openWithDesktop(std::string_view) override { return false; }
    std::string temporaryFolder() override { return folder_ + "/"; }
    std::string programFolder() override { return folder_; }
    std::string runtimeFolder() override { return folder_; }
    std::string stateFolder() override { return stateFolder_; }
    std::int64_t fileLength(std::string_view path) override;
    DateTime fileTime(std::string_view path) override;
    DateTime now() override { return {}; }
    std::string asText(const DateTime&) override { return {}; }
    std::string systemText() override { return {}; }
    int colourDepth() override { return 0; }
    void copyWithRename(std::string_view from, std::string_view to) override;

private:
    std::ostream& told_;
    std::string folder_;
    std::string stateFolder_ = folder_;
    std::map<std::string, std::string> settings_; // "application/section/key"
    BlockLetters letters_;
    Ports before_;
};

} // namespace app
