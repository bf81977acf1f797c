#pragma once

// The history against what was seen of the timeline on the way: a step back must bring exactly what was, a step
// forward what had become of it.

#include <string>
#include <vector>

namespace walk_test {

class Past {
public:
    /// What is wrong behind a line. The texts hold all of the timeline, before the line and now.
    std::string wrongBehind(const std::vector<std::string>& words, const std::string& before, const std::string& now);

    static int index();
    static int entryCount();

private:
    struct Marks {
        int index = 0;
        int entries = 0;
        std::vector<std::string> rows; // their captions
        int inForce = 0;               // of the rows

        int rowCount() const { return static_cast<int>(rows.size()); }
        bool hasUndone() const { return inForce < rowCount(); }
        bool operator==(const Marks&) const = default;
    };
    static Marks readMarks();
    std::string wrongInStep(const std::vector<std::string>& words, const Marks& was, const std::string& before,
                            const std::string& now);
    std::string wrongInCommand(const Marks& was, const std::string& before, const std::string& now);

    Marks marks_;
    std::vector<std::string> images_; // ahead of each entry's command; empty: not known
    std::string newest_;
};

} // namespace walk_test
