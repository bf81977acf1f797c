#include "shell/help_index_form.h"

#include "shell/command_help.h"
#include "windowing/help_pages.h"
#include "windowing/language.h"
#include "windowing/text.h"

#include <algorithm>
#include <vector>

namespace {

/// Commands of one caption that stand on one page are one line. Where the menus speak another language than the page,
/// a command is found by its caption there as well.
std::vector<help::IndexLine> allLines()
{
    std::vector<help::IndexLine> lines = help::indexWords();
    for (const shell::MenuRow& row : shell::menuBar()) {
        const shell::CommandHelp* const help = shell::helpOf(row);
        if (help != nullptr && row.kind != shell::MenuKind::kTop) {
            const QString topic = fromProgram(help->topic);
            const QString inMenu = plainCaption(translated(row.caption));
            if (const QString english = plainCaption(fromProgram(row.caption)); help::isInLanguage(topic)) {
                lines.push_back({inMenu, topic});
            } else {
                lines.push_back({english, topic});
                lines.push_back({inMenu + " (" + english + ")", topic});
            }
        }
    }
    const auto less = [](const help::IndexLine& a, const help::IndexLine& b) {
        const int order = QString::localeAwareCompare(a.word.toLower(), b.word.toLower());
        return order != 0 ? order < 0 : a.topic < b.topic;
    };
    std::ranges::sort(lines, less);
    const auto isTwin = [&](const help::IndexLine& a, const help::IndexLine& b) { return !less(a, b); };
    lines.erase(std::unique(lines.begin(), lines.end(), isTwin), lines.end());
    return lines;
}

} // namespace

HelpIndex::HelpIndex(QWidget* parent, const std::function<void(const QString& topic)>& open) : QListWidget(parent)
{
    setObjectName("helpIndex");
    setAccessibleName(tr("Index"));
    setFrameShape(QFrame::NoFrame);
    const QSize line(0, fontMetrics().height() + 6);
    for (const help::IndexLine& entry : allLines()) {
        auto* const item = new QListWidgetItem(entry.word, this);
        item->setSizeHint(line);
        item->setData(Qt::UserRole, entry.topic);
    }
    for (const auto signal : {&QListWidget::itemClicked, &QListWidget::itemActivated}) {
        connect(this, signal, this, [open](const QListWidgetItem* item) { open(item->data(Qt::UserRole).toString()); });
    }
}
