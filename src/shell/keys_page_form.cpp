#include "shell/keys_page_form.h"

#include "shell/command_help.h"
#include "shell/key_table.h"
#include "shell/menu_table.h"
#include "windowing/help_pages.h"
#include "windowing/language.h"
#include "windowing/text.h"

#include <QKeySequence>
#include <QObject>
#include <QStringList>

namespace keys_page {

namespace {

/// What the caption of a command does not say; empty where it says all.
QString additionOf(std::string_view menu)
{
    return menu == "mnuFilePreview"            ? QObject::tr("opens the selected file in the desktop's own program")
           : menu == "mnuEditStartSel"         ? QObject::tr("the range begins at the slider")
           : menu == "mnuEditEndSel"           ? QObject::tr("the range ends at the slider")
           : menu == "mnuToolsTrimMode"        ? QObject::tr("while it is on, both ends of a bar trim")
           : menu == "mnuViewSelectionSliders" ? QObject::tr("shows or hides the range")
                                               : QString();
}

/// Several with blanks between them, each as the screens name it.
QString keysOf(const QString& keys)
{
    QStringList shown;
    for (const QString& key : keys.split(' ', Qt::SkipEmptyParts)) {
        shown << "<kbd>" + QKeySequence(key).toString(QKeySequence::NativeText).toHtmlEscaped() + "</kbd>";
    }
    return shown.join(' ');
}

QString rowOf(const QStringList& cells) { return "<tr><td>" + cells.join("</td><td>") + "</td></tr>\n"; }

QString commands()
{
    QString rows;
    for (const shell::MenuRow& row : shell::menuBar()) {
        const QString keys = fromProgram(row.shortcut) + " " + fromProgram(shell::secondKeyOf(row.name));
        if (!row.hasCommand() || keys.trimmed().isEmpty()) {
            continue;
        }
        const QString addition = additionOf(row.name);
        const QString what = plainCaption(translated(row.caption)) + (addition.isEmpty() ? "" : ": " + addition);
        QString link;
        if (const shell::CommandHelp* const help = shell::helpOf(row)) {
            const QString topic = fromProgram(help->topic);
            link = "<a href=\"" + topic + "\">" + help::titleOf(topic) + "</a>";
        }
        rows += rowOf({keysOf(keys), what.toHtmlEscaped(), link});
    }
    return rows;
}

QString panels()
{
    QString rows;
    for (const shell::KeyRow& row : shell::panelKeys()) {
        rows += rowOf({translated(row.where).toHtmlEscaped(), keysOf(fromProgram(row.keys)),
                       translated(row.what).toHtmlEscaped()});
    }
    return rows;
}

} // namespace

QString rowsOf(const QString& table)
{
    return table == "commands" ? commands() : table == "panels" ? panels() : QString();
}

} // namespace keys_page
