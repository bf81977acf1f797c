#pragma once

// A script run line by line over the whole program, with everything that is told about each line checked behind it.

#include "app/edit_dump.h"
#include "app/edit_session.h"
#include "walk/history_model.h"
#include "walk/plain_timeline.h"
#include "walk/told_commands.h"

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace walk_test {

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
    /// Works out what the line must leave. An image that a step in the history must bring back stands in its place.
    std::optional<std::string> tell(const std::vector<std::string>& words, PlainTimeline& told);
    void tellHistory(const std::string& textBefore);
    void markAdded(const std::string& word);
    void readNow();
    std::string wrongNow(const PlainTimeline& told, const std::optional<std::string>& image) const;

    std::ostringstream messages_;
    app::EditSession session_;
    std::vector<Media> media_;
    HistoryModel history_;
    app::LaidTimeline laid_;
    std::string text_;  // of what is laid
    PlainTimeline now_; // the same

    // Of the line that is being run.
    std::string historyWord_;
    Outcome outcome_ = Outcome::kNothing;
};

/// The first line that goes wrong, and how.
struct Failure {
    std::size_t line = 0;
    std::string what;
};
std::optional<Failure> failureOf(const Script& script);

/// The script without lines that it fails without, whatever the failure. Stops after so many seconds with what it has.
Script shrunk(Script script, int seconds);

/// As text, to be pasted.
std::string asText(const Script& script);

} // namespace walk_test
