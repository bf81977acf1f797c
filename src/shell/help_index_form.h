#pragma once

// The index of the help: every command by its caption, and the words of `help/index.txt`, by the alphabet.

#include <QListWidget>
#include <functional>

class HelpIndex final : public QListWidget {
public:
    /// open: shows a topic.
    HelpIndex(QWidget* parent, const std::function<void(const QString& topic)>& open);
};
