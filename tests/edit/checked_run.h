#pragma once

// A script run line by line over the whole program, with everything that is told about each line checked behind it.

#include "app/edit_session.h"
#include "edit/history_model.h"
#include "edit/plain_timeline.h"
#include "edit/told_commands.h"

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace edit_test {

using Script = std::vector<std::string>;

class CheckedRun {
public:
    CheckedRun();

    /// Runs one line. What is wrong then, empty when nothing is.
    std::string run(const std::string& line);

    const PlainTimeline& timeline() const { return now_; }
    const std::vector<Media>& media() const { return media_; }
    const HistoryModel& history() const { return history_; }

private:
    /// The line against the plain timeline and the history: what must stand then. False for what is not told as items.
    void tell(const std::vector<std::string>& words, PlainTimeline& told);
    void tellCommand(const std::string& word, PlainTimeline& told, Outcome outcome);
    void tellStep(std::optional<std::string> image);
    void readNow();
    std::string wrongNow(const std::vector<std::string>& words, const PlainTimeline& told);
    bool mayLoseStep(const std::string& word) const;

    std::ostringstream messages_;
    app::EditSession session_;
    std::vector<Media> media_;
    HistoryModel history_;
    PlainTimeline now_;
    std::string text_; // of the timeline
    bool keysInStep_ = true;

    // Of the line that is being run.
    std::string historyWord_; // of a command whose entry stands; empty: none
    bool isStored_ = false;
    std::optional<std::string> image_; // that a step in the history must bring back
};

/// The first line that goes wrong, and how.
struct Failure {
    std::size_t line = 0;
    std::string what;
};
std::optional<Failure> failureOf(const Script& script);

/// The script with all lines dropped that it fails without, whatever the failure. Gives up after so many seconds, with
/// what it has.
Script shrunk(Script script, int seconds);

/// As text, to be pasted.
std::string asText(const Script& script);

} // namespace edit_test
