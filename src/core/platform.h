#pragma once

// What the program asks of the platform, as small interfaces: `windowing/` implements them with the screens' toolkit,
// tests with scripted answers.
//
// All of it is called from the interface thread. Texts and paths are UTF-8. A port raises no error but those told here.

#include "core/lettering.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class MessageIcon : std::uint8_t { kNone, kInformation, kQuestion, kExclamation, kCritical };
enum class MessageButtons : std::uint8_t { kOk, kYesNo, kYesNoCancel };
enum class MessageAnswer : std::uint8_t { kOk, kYes, kNo, kCancel };

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    /// A modal box; other handlers may run while it waits. A question that is left by Escape is answered `kCancel`.
    virtual MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                               std::string_view title) = 0;
};

/// A box with one button "OK" and the product's title.
void tellUser(std::string_view text, MessageIcon icon = MessageIcon::kInformation);
/// A question with the product's title.
MessageAnswer askUser(std::string_view text, MessageButtons buttons, MessageIcon icon = MessageIcon::kQuestion);

struct FileFilter {
    std::string name;                  // as it is shown
    std::vector<std::string> patterns; // "*.avi"
};

struct OpenFileRequest {
    std::vector<FileFilter> filters;
    int filterIndex = 1; // from 1
    std::string folder;  // where it opens; empty: where it was last
    bool multiple = false;
    std::size_t bufferLength = 0; // 0: no limit
};

struct SaveFileRequest {
    std::vector<FileFilter> filters;
    std::string folder;           // where it opens; empty: where it was last
    std::string defaultExtension; // without a dot; what a name without any gets
    std::string name = {};        // in the box at first
};

class CommonDialogs {
public:
    virtual ~CommonDialogs() = default;
    /// One path, or a folder and behind it the names from there, all separated by NUL. A name may be one of which there
    /// is no file. Raises error 32755 when it is cancelled, error 20476 when the names do not fit the buffer.
    virtual std::string openFiles(const OpenFileRequest& request) = 0;
    /// One whole path. The person has agreed that a file of that name is overwritten. Raises error 32755 when it is
    /// cancelled.
    virtual std::string saveFile(const SaveFileRequest& request) = 0;
    /// One folder, without a separator at its end; empty when it is cancelled.
    virtual std::string pickFolder(std::string_view title, std::string_view folder) = 0;
    /// A colour, red in its low byte. present: the one that it begins with. Raises error 32755 when it is cancelled.
    virtual std::int32_t chooseColour(std::int32_t present) = 0;
    /// A font and its colour, changed in place; errors as above.
    virtual void chooseFont(TextFont& font, std::int32_t& colour) = 0;
};

class Events {
public:
    virtual ~Events() = default;
    /// Lets pending events run once: handlers, timers and the show pass.
    virtual void letRun() = 0;
    /// Milliseconds since some fixed moment.
    virtual std::uint32_t ticks() = 0;
};

class Fonts {
public:
    virtual ~Fonts() = default;
    /// Logical pixels, in the font of the track pictures.
    virtual double textWidth(std::string_view text) = 0;
    virtual double textHeight() = 0;
    /// Another number whenever the font or its measures change.
    virtual int generation() = 0;
};

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// The value as text; nothing when the key is missing or the store cannot be read.
    virtual std::optional<std::string> get(std::string_view application, std::string_view section,
                                           std::string_view key) = 0;
    /// Kept in memory for this run even when the store cannot be written.
    virtual void save(std::string_view application, std::string_view section, std::string_view key,
                      std::string_view value) = 0;
    virtual void deleteSection(std::string_view application, std::string_view section) = 0;
};

/// A point of local time.
struct DateTime {
    int year = 0;
    int month = 0; // 1 to 12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

class Shell {
public:
    virtual ~Shell() = default;
    /// Opens a file or a page with its associated program; false when there is none.
    virtual bool openWithDesktop(std::string_view path) = 0;
    /// Ends in the platform's separator.
    virtual std::string temporaryFolder() = 0;
    /// Where the executable's data lie, without a separator at its end.
    virtual std::string programFolder() = 0;
    /// A folder of the user's that is gone with the session, for files that nobody keeps; without a separator at its
    /// end.
    virtual std::string runtimeFolder() = 0;
    /// The user's folder for logs and the like, made when it is missing; without a separator at its end.
    virtual std::string stateFolder() = 0;
    /// The user's folder for what can be made anew, which need not be there; without a separator at its end. Empty:
    /// nothing is to be kept.
    virtual std::string cacheFolder() { return {}; }
    /// Bytes. Raises error 53 when there is no such file, 52 for a name that cannot be one, 76 without its folder.
    virtual std::int64_t fileLength(std::string_view path) = 0;
    /// The moment of a file's last change; errors as above.
    virtual DateTime fileTime(std::string_view path) = 0;
    virtual DateTime now() = 0;
    /// A moment as a short date and a time in the user's format.
    virtual std::string asText(const DateTime& moment) = 0;
    /// What "OS" says in a report: the system's name and its version numbers.
    virtual std::string systemText() = 0;
    /// Bits that the screen has for a pixel's colour.
    virtual int colourDepth() = 0;
    /// Copies with a new name on a collision, showing its progress. Raises error 53, 70 or 76.
    virtual void copyWithRename(std::string_view from, std::string_view to) = 0;
};

/// What a volume says of a file on it, that is there or not yet.
struct VolumeNews {
    bool hasAnswered = false;              // else it keeps silent, as a disk does that is gone
    std::optional<std::int64_t> freeBytes; // for this person; nothing: it cannot be asked
    std::int64_t fileBytes = 0;            // 0 when there is no file
};

/// What a long piece of work asks of the machine.
class Machine {
public:
    virtual ~Machine() = default;
    /// Asks on a thread of its own, so that nothing hangs with a disk. Lets events run while it waits, where it is told
    /// to wait for longer than a moment; what the person does meanwhile is answered behind it.
    virtual VolumeNews askVolume(std::string_view path, std::int32_t longestMs) = 0;
    /// To the trash of its volume; false, and the file stays, where there is none.
    virtual bool moveToTrash(std::string_view path) = 0;
    /// The machine does not go to sleep by itself for as long as somebody holds the object. why: for whoever lists what
    /// keeps it awake.
    virtual std::shared_ptr<void> keepAwake(std::string_view why) = 0;
};

/// The system's table of what belongs to which kind of file. Keys are paths with back slashes; a value without a name
/// is the key's own. What cannot be kept is passed over.
class ClassRoot {
public:
    virtual ~ClassRoot() = default;
    virtual void setString(std::string_view key, std::string_view name, std::string_view text) = 0;
    virtual void setNumber(std::string_view key, std::string_view name, std::uint32_t number) = 0;
    /// The table stands: the desktop is to look at it anew.
    virtual void notifyChanged() = 0;
};

/// The ports in use. Set before the entry routine runs; they outlive the program's state.
struct Ports {
    MessageBoxes* messages = nullptr;
    CommonDialogs* dialogs = nullptr;
    Events* events = nullptr;
    Fonts* fonts = nullptr;
    SettingsStore* settings = nullptr;
    Shell* shell = nullptr;
    Machine* machine = nullptr;
    Lettering* lettering = nullptr;
    ClassRoot* classRoot = nullptr; // may stay none: then nothing is told to the desktop
};
inline Ports ports;
