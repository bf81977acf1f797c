#pragma once

// The whole program without screens: every panel loaded over the real engine, at one millisecond a pixel, and what a
// person does with it as calls. `quillmont-edit` and the tests of the commands stand on it.
//
// An item that does not exist: nothing happens. Commands run whether or not their menu entry is enabled. What cannot be
// meant raises `WrongWords`, with nothing changed. Only one session stands at a time; interface thread only.

#include "app/edit_platform.h"
#include "app/edit_tracks.h"
#include "disk/run_folder.h"
#include "items/items.h"

#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace app {

class WrongWords : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A media file as it was opened. Streams are 0 where it has none.
struct OpenedMedia {
    std::string name;
    engine::Handle file = 0;
    engine::Handle picture = 0;
    engine::Handle sound = 0;
};

class EditSession {
public:
    /// Starts the program; what it tells the person is written to `told`, which outlives the session. Raises
    /// std::runtime_error when the program does not start.
    explicit EditSession(std::ostream& told);
    ~EditSession();
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    /// From now on keeps a journal in that folder, where its media files are made too, so that they outlive the run.
    /// Ahead of anything else; what a killed run left there is brought back, when the question is answered Yes.
    void openJournal(const std::string& folder);

    // --- What lies there -------------------------------------------------------------------------------------------

    /// Makes a media file of that length (ms) and opens it through the media list.
    void openMedia(const std::string& name, std::int32_t lengthMs, bool hasPicture, bool hasSound);
    /// Lays a part of a file by engine calls: without history, locked or not. An overlay gets its key.
    void put(EditTrack track, std::string_view name, items::ItemTimes times, items::ItemTimes media);
    /// The same for an effect; nothing happens where it would meet another one.
    void putEffect(std::string_view name, items::ItemTimes times);

    // --- The project -----------------------------------------------------------------------------------------------

    /// Saves it under that path.
    void saveProject(const std::string& path);
    /// Opens one in place of what is there, unsaved or not. Its media bear the names of their files without the ending.
    void openProject(const std::string& path);

    // --- What is chosen --------------------------------------------------------------------------------------------

    /// Adds to what is selected.
    void select(EditTrack track, std::int16_t seq);
    void deselect();
    void lock(EditTrack track, bool isOn);
    void link(EditTrack track, bool isOn);
    void moveSlider(engine::Milliseconds pos);
    /// Shows the selection sliders at these times; hides them without.
    void showRange(std::optional<items::ItemTimes> range);

    // --- Adding ----------------------------------------------------------------------------------------------------

    void addToTimeline(std::string_view name);
    void addToOverlay(std::string_view name);
    /// A drop of the file on that row, at that time.
    void insert(EditTrack track, std::string_view name, engine::Milliseconds pos);
    /// Writes the name over the picture at the slider and puts it over the film. The file of an earlier title of that
    /// name is written over.
    void addTitle(const std::string& name);
    /// A name of the tools panel's list.
    void addEffect(std::string_view name);

    const std::vector<OpenedMedia>& media() const { return media_; }
    /// Of the file that a stream belongs to; "?" for a stream that is not known.
    std::string_view nameOfStream(engine::Handle stream) const;

private:
    const OpenedMedia& mediaNamed(std::string_view name) const;
    void chooseRow(const OpenedMedia& media);
    void nameListedMedia();

    disk::RunFolder folder_;
    std::string mediaFolder_ = folder_.path();
    EditPlatform platform_;
    std::vector<OpenedMedia> media_;
};

} // namespace app
