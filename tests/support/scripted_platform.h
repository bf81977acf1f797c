#pragma once

// The program's ports with scripted answers, and the program put back to its start; for tests of the logic.

#include "core/block_letters.h"
#include "core/platform.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>

namespace testsupport {

/// One message box as it was shown.
struct ShownMessage {
    std::string text;
    MessageIcon icon;
    MessageButtons buttons;
    std::string title;
};

class ScriptedPlatform final : public MessageBoxes,
                               public CommonDialogs,
                               public Events,
                               public Fonts,
                               public SettingsStore,
                               public Shell,
                               public Machine,
                               public ClassRoot {
public:
    /// Sets the ports to this object and puts shared state and forms back to their start values.
    ScriptedPlatform();
    ~ScriptedPlatform() override;

    std::vector<ShownMessage> messages;
    std::deque<MessageAnswer> answers;     // for boxes with more than "OK"; No when there is none left
    std::deque<std::string> chosenFiles;   // for the open dialogue; error 32755 when there is none left
    std::deque<std::int32_t> dialogErrors; // raised ahead of `chosenFiles`
    std::vector<OpenFileRequest> requests;
    std::deque<std::string> savedFiles; // for the save dialogue, in the same way
    std::vector<SaveFileRequest> saveRequests;
    std::deque<std::string> chosenColours; // "C0E0FF", in the same way
    std::vector<std::int32_t> colourRequests;
    TextFont chosenFont; // for the font dialogue, with the next of the colours
    bool isVolumeSilent = false;
    std::optional<std::int64_t> freeBytes = std::int64_t{1} << 40;
    bool hasTrash = true;
    std::vector<std::string> trashed;      // or meant to be; names without folders
    std::weak_ptr<void> awake;             // what keeps the machine so
    std::deque<std::string> pickedFolders; // for the folder picker; cancelled when there is none left
    std::function<void()> whileEventsRun;  // called by letRun
    int eventsRun = 0;
    std::uint32_t tickCount = 0;
    double characterWidth = 7;
    std::map<std::string, std::string> settings; // "application/section/key"
    std::vector<std::string> openedWithDesktop;
    std::string classRows;   // "key: text" and "key name: text" a line, numbers in brackets, "changed" behind them
    std::string folder;      // temporary, program, runtime and state folder; made and removed by this object
    std::string programPart; // below it, "/name"; of the other two as well
    std::string statePart;
    std::string temporaryPart;
    bool opensWithDesktop = true;
    int depth = 24; // of the screen's colours
    DateTime moment{2026, 3, 4, 5, 6, 7};

    MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                       std::string_view title) override;
    std::string openFiles(const OpenFileRequest& request) override;
    std::string saveFile(const SaveFileRequest& request) override;
    std::string pickFolder(std::string_view title, std::string_view folder) override;
    std::int32_t chooseColour(std::int32_t present) override;
    void chooseFont(TextFont& font, std::int32_t& colour) override;
    VolumeNews askVolume(std::string_view path, std::int32_t longestMs) override;
    bool moveToTrash(std::string_view path) override;
    std::shared_ptr<void> keepAwake(std::string_view why) override;
    void letRun() override;
    std::uint32_t ticks() override { return tickCount; }
    double textWidth(std::string_view text) override { return characterWidth * static_cast<double>(text.size()); }
    double textHeight() override { return 13; }
    int generation() override { return 0; }
    std::optional<std::string> get(std::string_view application, std::string_view section,
                                   std::string_view key) override;
    void save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override;
    void deleteSection(std::string_view application, std::string_view section) override;
    bool openWithDesktop(std::string_view path) override;
    std::string temporaryFolder() override { return folder + temporaryPart + "/"; }
    std::string programFolder() override { return folder + programPart; }
    std::string runtimeFolder() override { return folder; }
    std::string stateFolder() override { return folder + statePart; }
    std::int64_t fileLength(std::string_view path) override;
    DateTime fileTime(std::string_view path) override;
    DateTime now() override { return moment; }
    std::string asText(const DateTime& moment) override;
    std::string systemText() override { return "Test system"; }
    int colourDepth() override { return depth; }
    void copyWithRename(std::string_view from, std::string_view to) override;
    void setString(std::string_view key, std::string_view name, std::string_view text) override;
    void setNumber(std::string_view key, std::string_view name, std::uint32_t number) override;
    void notifyChanged() override { classRows += "changed\n"; }

private:
    std::string nextPath(std::deque<std::string>& paths);

    BlockLetters letters_;
    Ports before_;
};

} // namespace testsupport
