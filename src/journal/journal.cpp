#include "journal/journal.h"

#include "core/forms/frmTimeline.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "journal/bring_back.h"
#include "journal/leftover.h"
#include "journal/writer.h"
#include "media/media_files.h"

#include <algorithm>
#include <filesystem>

namespace journal {

namespace {

constexpr const char* kModule = "journal";

/// Of the running program; nothing of it outlives `stop`.
struct Keeping {
    std::string folder;
    std::unique_ptr<JournalFile> file; // until the offer is answered
    std::optional<Leftover> left;
    std::unique_ptr<Writer> writer;
    Capture capture;
    std::shared_ptr<const StateImage> last; // handed over; nothing: the journal is empty
    bool isFailureTold = false;
    bool isOn = false;
};
Keeping keeping;

bool isInTheMiddle()
{
    const auto& form = forms::frmTimeline;
    const bool isDragging = form.DragActive || form.Trimming || form.Dragging || form.DraggingSlider
                            || form.DraggingStart || form.DraggingEnd || form.DraggingBookmark;
    return isDragging || state::BusyOpening || state::ProjectLoadLock || state::InSelectionUpdate;
}

void tellFailureOnce()
{
    const bool hasFailed = !keeping.writer || keeping.writer->hasFailed();
    if (hasFailed && !keeping.isFailureTold) {
        keeping.isFailureTold = true;
        media::say("Your work is not being secured against a crash: nothing can be written to " + keeping.folder);
    }
}

void journalState()
{
    const auto image = keeping.capture.take();
    if (image && (keeping.last || image->hasUnsavedWork())) {
        keeping.last = image;
        if (keeping.writer) {
            keeping.writer->write(image);
        }
    }
    if (keeping.last) {
        tellFailureOnce();
    }
}

void tellMissing(const std::vector<std::string>& missing)
{
    std::string text = "These files were not found, and what they were used for is left out:\r\n";
    for (const std::string& path : missing) {
        text += "\r\n" + path;
    }
    tellUser(text + "\r\n\r\nThe work with them is set aside, so that it can be brought back when they are there.");
}

/// What lies in the program's own file becomes one of those that were set aside.
void moveAway(std::string note, std::int64_t time)
{
    keeping.writer->moveAway(makeRoomForSetAside(keeping.folder), std::move(note), time);
    keeping.last.reset();
}

void startWriting()
{
    if (keeping.file) {
        keeping.writer = std::make_unique<Writer>(std::move(keeping.file));
    }
    keeping.isOn = true;
}

/// work: of the program's own file, or set aside.
void accept(const Leftover& work)
{
    Back back;
    Trapped(kModule, "accept", [&] { back = bringBack(work.image, keeping.capture); });
    const bool isOwn = work.path.empty();
    const bool isDone = back.isWhole && back.missing.empty();
    if (isOwn && !isDone) { // so that what was left out is not lost
        moveAway("brought back in part", work.time);
    }
    keeping.writer->goOnFrom(work.origin);
    keeping.capture.forget();
    journalState();
    if (!back.missing.empty()) {
        tellMissing(back.missing);
    }
    if (!isOwn && isDone) {
        keeping.writer->drain();
        std::error_code ignored;
        std::filesystem::remove(work.path, ignored);
    }
}

/// Nothing when nothing is wanted.
std::optional<Leftover> chosenOf(std::vector<Leftover> older)
{
    if (older.empty() || !chooseLeftover) {
        return std::nullopt;
    }
    std::vector<std::string> descriptions(older.size());
    std::ranges::transform(older, descriptions.begin(), describe);
    const auto chosen = chooseLeftover(descriptions);
    return chosen && *chosen < older.size() ? std::optional(std::move(older[*chosen])) : std::nullopt;
}

bool offerLeftover(const Leftover& left)
{
    const std::vector<Leftover> older = readSetAside(keeping.folder);
    if (isWanted(left, older)) {
        startWriting();
        accept(left);
        return true;
    }
    startWriting();
    moveAway("not wanted back", left.time);
    if (const auto chosen = chosenOf(older)) {
        accept(*chosen);
        return true;
    }
    return false;
}

} // namespace

void start()
{
    Trapped(kModule, "start*", [] {
        namespace fs = std::filesystem;
        keeping = {};
        keeping.folder = (fs::path(ports.shell->stateFolder()) / "journal").string();
        makeFolder(keeping.folder);
        keeping.file = JournalFile::open((fs::path(keeping.folder) / "work.journal").string());
        if (keeping.file) {
            if (keeping.file->isForeign() && !keeping.file->moveAway(makeRoomForSetAside(keeping.folder))) {
                keeping.file.reset(); // another version may bring it back, so that it is not written over
                return;
            }
            Objects objects;
            keeping.file->read(objects);
            keeping.left = leftoverOf(objects);
        }
    });
}

bool offer()
{
    bool isBack = false;
    Trapped(kModule, "offer", [&] {
        if (const auto left = std::exchange(keeping.left, {})) {
            isBack = offerLeftover(*left);
        } else {
            startWriting();
        }
    });
    return isBack;
}

void noteTurn()
{
    if (keeping.isOn && !isInTheMiddle()) {
        Trapped(kModule, "noteTurn*", [] { journalState(); });
    }
}

void end()
{
    Trapped(kModule, "end*", [] {
        if (keeping.writer && keeping.last) {
            keeping.writer->empty();
        }
        keeping.last.reset();
    });
}

void setAside(std::string_view why)
{
    Trapped(kModule, "setAside*", [&] {
        if (keeping.writer && keeping.last && keeping.last->hasUnsavedWork()) {
            moveAway(std::string(why), 0);
        } else {
            end();
        }
    });
}

void stop() { keeping = {}; }

} // namespace journal
