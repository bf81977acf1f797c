#pragma once

// Answers the boxes and dialogues that open while a test runs, by clicking and typing in the real ones.

#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <string>
#include <vector>

class QFileDialog;
class QMessageBox;

namespace screens_test {

/// Looks for an open box every few milliseconds. One that no answer was planned for is closed and fails the test.
class Answers {
public:
    Answers();
    ~Answers();

    /// The next box is answered by the button of this text ("&Yes").
    void click(const std::string& button) { planned_.push_back({button, {}, {}}); }
    /// The next dialogue asks for files, to open or to save; these paths are typed into it. None: whatever it asks, it
    /// is left by Escape.
    void open(std::vector<std::string> paths) { planned_.push_back({{}, std::move(paths), {}}); }
    /// The next dialogue is one of the program's own: this is done in it, which closes it.
    void work(std::function<void()> deeds) { planned_.push_back({{}, {}, std::move(deeds)}); }
    /// Runs in the next dialogue, ahead of its answer.
    std::function<void()> meanwhile;

    /// What the message boxes said: "i: text" with information, "?: text" with a question; "\r\n" as "|". Ahead of it
    /// the title, where it is not the product's.
    std::vector<std::string> boxes;

private:
    struct Answer {
        std::string button;
        std::vector<std::string> paths;
        std::function<void()> deeds;
    };

    void look();
    void answer(QWidget& dialog, const Answer& planned);
    void note(const QMessageBox& box);
    static void typePaths(QFileDialog& dialog, const std::vector<std::string>& paths);

    QTimer timer_;
    std::deque<Answer> planned_;
};

} // namespace screens_test
