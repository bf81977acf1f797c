#include "windowing/file_choice.h"

#include "windowing/text.h"

#include <QDir>
#include <QLineEdit>
#include <algorithm>

namespace {

/// Kinds of files that the filters do not name, by one that stands in every filter of their sort and in no other.
struct NewerKinds {
    const char* besides;
    QStringList patterns;
};

const std::vector<NewerKinds>& newerKinds()
{
    static const std::vector<NewerKinds> kinds{
        {"*.mpeg",
         {"*.mp4", "*.m4v", "*.mov", "*.mkv", "*.webm", "*.mts", "*.m2ts", "*.ts", "*.m1v", "*.m2v", "*.mpe", "*.vob"}},
        {"*.midi", {"*.flac", "*.ogg", "*.opus", "*.m4a", "*.aac"}},
        {"*.tga", {"*.png", "*.webp", "*.tif", "*.tiff"}}};
    return kinds;
}

QStringList widened(const FileFilter& filter)
{
    QStringList patterns;
    for (const std::string& pattern : filter.patterns) {
        patterns << (pattern == "*.*" ? "*" : fromProgram(pattern));
    }
    for (const NewerKinds& kinds : newerKinds()) {
        if (patterns.contains(kinds.besides)) {
            patterns << kinds.patterns;
        }
    }
    // Names of other systems are in capitals as often as not.
    for (const QString& pattern : QStringList(patterns)) {
        if (pattern.toUpper() != pattern) {
            patterns << pattern.toUpper();
        }
    }
    return patterns;
}

/// The names between quotes, as the toolkit reads them: whole, from the home folder, or from the folder that is shown.
QStringList typedPaths(const QString& text, const QDir& folder)
{
    QStringList paths;
    const QStringList pieces = text.split('"');
    for (qsizetype i = 1; i < pieces.size(); i += 2) {
        QString name = pieces[i];
        if (name.startsWith("~/")) {
            name.replace(0, 1, QDir::homePath());
        }
        if (!name.isEmpty()) {
            paths << QDir::cleanPath(folder.absoluteFilePath(name));
        }
    }
    return paths;
}

} // namespace

QStringList toolkitFilters(const std::vector<FileFilter>& filters)
{
    QStringList all;
    for (const FileFilter& filter : filters) {
        // The name tells its patterns itself; the toolkit reads them from the brackets at the end.
        QString name = fromProgram(filter.name);
        name = name.left(name.indexOf('(') < 0 ? name.size() : name.indexOf('(')).trimmed();
        all << name + " (" + widened(filter).join(' ') + ")";
    }
    return all;
}

QStringList chosenPaths(const QFileDialog& dialog)
{
    QStringList paths;
    for (const QString& path : dialog.selectedFiles()) {
        paths << QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    }
    const auto* const typed = dialog.findChild<QLineEdit*>("fileNameEdit");
    const bool hasQuotedName = std::ranges::any_of(paths, [](const QString& path) { return path.contains('"'); });
    if (typed != nullptr && dialog.fileMode() == QFileDialog::ExistingFiles && !hasQuotedName) {
        paths << typedPaths(typed->text(), dialog.directory());
    }
    paths.removeDuplicates();
    return paths;
}

std::string folderAndNames(const QStringList& paths)
{
    if (paths.size() == 1) {
        return toProgram(paths.front());
    }
    QString folder = paths.front().left(paths.front().lastIndexOf('/') + 1);
    for (const QString& path : paths) {
        while (!path.startsWith(folder)) {
            folder.truncate(folder.lastIndexOf('/', -2) + 1);
        }
    }
    std::string names = toProgram(folder);
    for (const QString& path : paths) {
        names += '\0' + toProgram(path.mid(folder.size()));
    }
    return names;
}
