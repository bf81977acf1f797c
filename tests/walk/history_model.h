#pragma once

// The history as it is told, over plain lists, with all its oddities. Images are texts: equal ones are equal timelines.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace walk_test {

class HistoryModel {
public:
    // --- What commands do ------------------------------------------------------------------------------------------

    /// Ahead of a command: undone rows go, and its entry holds the timeline as it stands.
    void begin(std::string_view word, const std::string& image);
    /// The command has taken effect.
    void bringIntoForce();
    /// A press has moved nothing: its entry goes with its row.
    void takeBack();
    /// Last of a command: the newest state.
    void store(const std::string& image) { newest_ = image; }

    // --- What a person does ----------------------------------------------------------------------------------------
    // Each answers the image that stands then; nothing when the timeline was left alone.

    std::optional<std::string> undoFromMenu();
    std::optional<std::string> redoFromMenu();
    /// A click on a row, from 1.
    std::optional<std::string> click(int row);

    int index() const { return index_; }
    int entryCount() const { return static_cast<int>(entries_.size()); }
    /// "2 of 3: Cut/CUT (Paste/PASTE)": index, entries, rows with what is undone in brackets.
    std::string text() const;

private:
    struct Entry {
        std::string word;
        std::string image;
    };
    struct Row {
        std::string face; // caption and icon
        bool isUndone = false;
    };

    int rowCount() const { return static_cast<int>(rows_.size()); }
    bool isUndone(int row) const
    {
        return row >= 1 && row <= rowCount() && rows_[static_cast<std::size_t>(row) - 1].isUndone;
    }
    void setUndone(int first, int last, bool isUndone);
    void removeDisabled();
    void dropBehindIndex();
    std::optional<std::string> undo();
    std::optional<std::string> redo();

    std::vector<Entry> entries_;
    std::vector<Row> rows_;
    std::string newest_;
    int index_ = 0;
};

} // namespace walk_test
