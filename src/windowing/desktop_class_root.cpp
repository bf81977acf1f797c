#include "windowing/desktop_class_root.h"

#include "windowing/text.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

namespace {

/// A text as a value of an entry.
QByteArray escaped(QString text)
{
    return text.replace('\\', "\\\\").replace('\n', "\\n").replace('\t', "\\t").replace('\r', "\\r").toUtf8();
}

QString unescaped(const QString& value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QChar sign = value[++i];
        text += sign == 'n'   ? QChar('\n')
                : sign == 't' ? QChar('\t')
                : sign == 'r' ? QChar('\r')
                : sign == 's' ? QChar(' ')
                              : sign;
    }
    return text;
}

constexpr const char* kThrough = "env "; // a program that starts the one behind it

/// The program of a command, without its quotes.
QString programOf(QString command)
{
    if (command.startsWith(kThrough)) {
        command.remove(0, static_cast<qsizetype>(std::char_traits<char>::length(kThrough)));
    }
    const bool isQuoted = command.startsWith('"');
    QString program;
    for (qsizetype i = isQuoted ? 1 : 0; i < command.size() && command[i] != (isQuoted ? '"' : ' '); ++i) {
        if (isQuoted && command[i] == '\\' && i + 1 < command.size()) {
            ++i;
        }
        program += command[i];
    }
    return program.replace("%%", "%");
}

/// The file behind a program's name: links followed, bare names looked up as the shell does.
QString fileOf(const QString& program)
{
    return program.isEmpty() ? QString() : QFileInfo(QStandardPaths::findExecutable(program)).canonicalFilePath();
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Whether an entry starts the program. One that nowhere has the product's name is another's: there are hundreds on a
/// desktop, and each start asks.
bool starts(const QByteArray& entry, const QString& program)
{
    if (!entry.contains("uillmont")) { // in capitals or not
        return false;
    }
    bool isMain = false; // in the group that tells of the program itself
    bool isNamed = false;
    for (const QByteArray& bytes : entry.split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        const auto valueOf = [&](const char* key) {
            const qsizetype sign = line.indexOf('=');
            return isMain && line.left(sign).trimmed() == key ? unescaped(line.mid(sign + 1).trimmed()) : QString();
        };
        if (line.startsWith('[')) {
            isMain = line == "[Desktop Entry]";
        } else if (valueOf("Hidden") == "true") {
            return false; // stands for an entry that was taken away
        }
        isNamed = isNamed || fileOf(programOf(valueOf("Exec"))) == program || fileOf(valueOf("TryExec")) == program;
    }
    return isNamed;
}

bool isInstalled(const DesktopPlaces& places)
{
    const QString program = QFileInfo(places.program).canonicalFilePath();
    return std::ranges::any_of(places.systemFolders, [&](const QString& folder) {
        QDirIterator entries(folder + "/applications", {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            if (starts(bytesOf(entries.next()), program)) {
                return true;
            }
        }
        return false;
    });
}

QByteArray mimePackage(const QString& ending, const QString& description)
{
    return bytesOf(":/desktop/quillmont.xml.in")
        .replace("@project_ending@", ending.toHtmlEscaped().toUtf8())
        .replace("@project_class@", description.toHtmlEscaped().toUtf8());
}

constexpr const char* kTryExec = "TryExec=";
constexpr const char* kExec = "Exec=";

/// The system's entry, that starts this very program.
QByteArray desktopEntry(const QString& program)
{
    QByteArray entry;
    for (const QByteArray& line : bytesOf(":/desktop/quillmont.desktop").split('\n')) {
        entry += line.startsWith(kTryExec) ? kTryExec + escaped(program)
                 : line.startsWith(kExec)  ? kExec + execLine(program)
                                           : line;
        entry += '\n';
    }
    entry.chop(1); // what stood behind the last line's end
    return entry;
}

/// Whether a start of this program has written the entry, for whichever place it ran from then: not one that a person
/// has made or changed. No line of it is another's, and both programs are one.
bool isOurs(const QByteArray& entry)
{
    const QList<QByteArray> ours = bytesOf(":/desktop/quillmont.desktop").split('\n');
    QByteArray tried;
    QByteArray run;
    const bool isKnown = std::ranges::all_of(entry.split('\n'), [&](const QByteArray& line) {
        tried = line.startsWith(kTryExec) ? line.mid(qstrlen(kTryExec)) : tried;
        run = line.startsWith(kExec) ? line.mid(qstrlen(kExec)) : run;
        return line.startsWith(kTryExec) || line.startsWith(kExec) || ours.contains(line);
    });
    return isKnown && !tried.isEmpty() && run == execLine(unescaped(QString::fromUtf8(tried)));
}

constexpr const char* kEntry = "applications/quillmont.desktop";

struct Written {
    QString path; // below the data folder
    QByteArray bytes;
    const char* tool; // makes the list anew that the file is in
    QString list;     // that list's folder
};

} // namespace

DesktopPlaces desktopPlaces()
{
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QStringList all = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    all.removeAll(own);
    return {own, all, QCoreApplication::applicationFilePath(), [](const QString& tool, const QString& folder) {
                QProcess process;
                process.setProgram(QStandardPaths::findExecutable(tool));
                process.setArguments({folder});
                process.setStandardOutputFile(QProcess::nullDevice());
                process.setStandardErrorFile(QProcess::nullDevice());
                if (!process.program().isEmpty()) {
                    process.startDetached();
                }
            }};
}

QByteArray execLine(const QString& program)
{
    // Twice: once as a word of a command line, in which % stands for what is put in, and once more as any value.
    QString word;
    for (const QChar sign : program) {
        word += QString("\"`$\\").contains(sign) ? QString("\\") + sign : sign == '%' ? QString("%%") : QString(sign);
    }
    // Some desktops look for the command's first word before they have read its "%%", and find no program of that name.
    return escaped((program.contains('%') ? kThrough : "") + ('"' + word + "\" %f"));
}

void DesktopClassRoot::setString(std::string_view key, std::string_view name, std::string_view text)
{
    if (!name.empty()) {
        return; // the type is the desktop's own, whatever the table calls its content
    }
    if (key.starts_with('.')) {
        ending_ = key;
        class_ = text;
    } else if (key == class_) {
        description_ = text;
    }
}

void DesktopClassRoot::notifyChanged()
{
    const Written files[] = {
        {"mime/packages/quillmont.xml", mimePackage(fromProgram(ending_), fromProgram(description_)),
         "update-mime-database", "mime"},
        {"icons/hicolor/scalable/apps/quillmont.svg", bytesOf(":/icons/quillmont.svg"), nullptr, {}},
        {"icons/hicolor/scalable/mimetypes/application-x-quillmont-project.svg",
         bytesOf(":/icons/quillmont_project.svg"),
         nullptr,
         {}},
        {kEntry, desktopEntry(places_.program), "update-desktop-database", "applications"}};
    const auto pathOf = [&](const Written& file) { return places_.dataFolder + "/" + file.path; };
    const auto update = [&](const Written& file) {
        if (file.tool != nullptr) {
            places_.update(file.tool, places_.dataFolder + "/" + file.list);
        }
    };
    if (isInstalled(places_)) {
        const bool isTakenBack = isOurs(bytesOf(places_.dataFolder + "/" + kEntry));
        for (const Written& file : files) { // the entry last: what a kill leaves is known by it
            if (isTakenBack && QFile::remove(pathOf(file))) {
                update(file);
            }
        }
        return;
    }
    for (const Written& file : files) {
        if (bytesOf(pathOf(file)) == file.bytes || !QDir().mkpath(QFileInfo(pathOf(file)).path())) {
            continue;
        }
        QSaveFile target(pathOf(file));
        if (target.open(QIODevice::WriteOnly) && target.write(file.bytes) == file.bytes.size() && target.commit()) {
            update(file);
        }
    }
}
