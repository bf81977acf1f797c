#include "walk/past.h"

#include "core/colours.h"
#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "history/ModuleHistory.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace walk_test {

int Past::index() { return ModuleHistory::HistoryIndex; }
int Past::entryCount() { return ModuleHistory::HistoryCollection.Count(); }

Past::Marks Past::readMarks()
{
    Marks marks{index(), entryCount(), {}};
    for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
        marks.rows.push_back(row.Text);
        marks.inForce += row.ForeColor == colours::kButtonFace ? 0 : 1;
    }
    return marks;
}

std::string Past::wrongBehind(const std::vector<std::string>& words, const std::string& before, const std::string& now)
{
    static constexpr std::array kSteps{"undo", "redo", "jump"};
    static constexpr std::array kUnnoted{"media", "put", "effect", "nudge", "stretch"};
    const Marks was = std::exchange(marks_, readMarks());
    const bool isModified = std::exchange(state::ProjectModified, false);
    std::string wrong;
    if (std::ranges::find(kSteps, words.front()) != kSteps.end()) {
        wrong = wrongInStep(words, was, before, now);
    } else if (std::ranges::find(kUnnoted, words.front()) == kUnnoted.end()) {
        wrong = wrongInCommand(was, before, now);
        wrong += isModified || now == before ? "" : "the project does not count as modified\n";
    }
    if (!wrong.empty()) {
        wrong += "  (" + words.front() + " from " + std::to_string(was.index) + " of " + std::to_string(was.entries)
                 + " to " + std::to_string(marks_.index) + " of " + std::to_string(marks_.entries) + ", rows "
                 + std::to_string(was.rowCount()) + " to " + std::to_string(marks_.rowCount()) + ")\n";
    }
    return wrong;
}

std::string Past::wrongInStep(const std::vector<std::string>& words, const Marks& was, const std::string& before,
                              const std::string& now)
{
    const int row = words.front() == "jump" ? std::stoi(words.at(1)) : 0;
    const bool isJump = row >= 1 && row <= was.rowCount() && row <= was.entries;
    const bool isBack = isJump ? row <= was.inForce : words.front() == "undo";
    int index = was.index;
    std::string* image = nullptr;
    if (words.front() == "jump" && !isJump) {
        // no such row
    } else if (const int from = isJump ? row : was.index; isBack && from >= 1 && from <= was.entries) {
        index = from - 1;
        image = &images_.at(static_cast<std::size_t>(index));
    } else if (const int to = isJump ? row : was.index + 1; !isBack && to <= was.entries) {
        index = to;
        // With no row left, the first redo shows what it all began with.
        const auto place = static_cast<std::size_t>(was.rows.empty() ? 0 : to);
        image = to == was.entries ? &newest_ : &images_.at(place);
    }
    std::string wrong = marks_.index == index && marks_.entries == was.entries ? "" : "the history stands elsewhere\n";
    if (isJump && marks_.inForce != index) {
        wrong += "the rows in force are not those up to the index\n";
    }
    if (image == nullptr ? now != before : !image->empty() && *image != now) {
        wrong += "there is now\n" + now + "  instead of\n" + (image == nullptr ? before : *image);
    } else if (image != nullptr) {
        *image = now;
    }
    return wrong;
}

std::string Past::wrongInCommand(const Marks& was, const std::string& before, const std::string& now)
{
    constexpr int kMost = 26;
    if (marks_ == was && (was.index < kMost || now == before)) {
        if (was.index == kMost && std::ranges::adjacent_find(was.rows, std::not_equal_to()) == was.rows.end()) {
            // Or it made an entry, the oldest one went, and all rows have one caption.
            images_.assign(kMost, "");
            newest_.clear();
        }
        if (was.entries == was.index + 1 && images_.back() != before) {
            images_.back().clear(); // or its entry, which came to nothing, waits in place of one that did too
            newest_.clear();
        }
        return now == before ? "" : "the timeline has changed, the history has not\n";
    }
    const bool isDropped = was.index == kMost; // the oldest entry, for this one
    const int index = was.index - (isDropped ? 1 : 0);
    const bool isInForce = marks_.index == index + 1;
    const bool isTakenBack = marks_.index == index && marks_.entries == index; // a press that moves nothing
    if ((!isInForce && (marks_.index != index || now != before)) || marks_.hasUndone()) {
        return "the command is not the newest one in force\n";
    }
    if (was.hasUndone() && !isDropped) { // with each undone row the entry below it went: which are left is not followed
        images_.assign(static_cast<std::size_t>(marks_.entries), "");
    } else {
        images_.erase(images_.begin(), images_.begin() + (isDropped ? 1 : 0));
        images_.resize(static_cast<std::size_t>(index + (isTakenBack ? 0 : 1)));
    }
    if (static_cast<int>(images_.size()) != marks_.entries) {
        return "there is not an entry for each command\n";
    }
    if (!isTakenBack) {
        images_.back() = before;
        newest_ = now;
    }
    return {};
}

} // namespace walk_test
