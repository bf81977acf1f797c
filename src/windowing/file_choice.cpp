#include "windowing/file_choice.h"

#include "windowing/language.h"
#include "windowing/text.h"

#include <QDir>
#include <QFileSystemModel>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
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
        QString name = translated(filter.name);
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

void obeyTyped(const QFileDialog& dialog)
{
    const auto* const typed = dialog.findChild<QLineEdit*>("fileNameEdit");
    const auto* const list = dialog.findChild<QListView*>("listView"); // the other view shares its marks
    if (typed == nullptr || list == nullptr) {
        return; // the desktop's own dialogue
    }
    QObject::connect(typed, &QLineEdit::textChanged, list, [&dialog, typed, list](const QString& text) {
        if (!typed->hasFocus()) {
            return; // a click into the list has changed it
        }
        const QStringList named = typedPaths(text.contains('"') ? text : '"' + text + '"', dialog.directory());
        QItemSelectionModel& marks = *list->selectionModel();
        for (const QModelIndex& mark : marks.selectedRows()) {
            if (!named.contains(mark.data(QFileSystemModel::FilePathRole).toString())) {
                marks.select(mark, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
            }
        }
    });
}

NewFileDialog::NewFileDialog(QWidget* parent, const SaveFileRequest& request, const QString& folder)
    : QFileDialog(parent, QObject::tr("Save As"), folder), endings_("." + fromProgram(request.defaultExtension))
{
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setNameFilters(toolkitFilters(request.filters));
    setOption(QFileDialog::HideNameFilterDetails);
    setDefaultSuffix(fromProgram(request.defaultExtension));
    for (const FileFilter& filter : request.filters) {
        for (const std::string& pattern : filter.patterns) {
            endings_ << fromProgram(pattern).remove('*').toLower();
        }
    }
    obeyTyped(*this);
    if (!request.name.empty()) {
        selectFile(fromProgram(request.name));
    }
}

QString NewFileDialog::path() const
{
    const QStringList chosen = selectedFiles();
    return path_.isEmpty() && !chosen.isEmpty() ? QDir::cleanPath(QFileInfo(chosen.front()).absoluteFilePath()) : path_;
}

/// The name that is meant. Quotes around the whole are no part of it.
QString NewFileDialog::named(QString typed) const
{
    if (typed.size() > 2 && typed.count('"') == 2 && typed.startsWith('"') && typed.endsWith('"')) {
        typed = typed.mid(1, typed.size() - 2);
    }
    const bool isFolder = QFileInfo(directory().absoluteFilePath(typed)).isDir() || typed.startsWith('~');
    const bool isKnown = std::ranges::any_of(
        endings_, [&](const QString& ending) { return typed.endsWith(ending, Qt::CaseInsensitive); });
    return isFolder || isKnown || typed.isEmpty() ? typed : typed + endings_.front();
}

void NewFileDialog::accept()
{
    path_.clear();
    auto* const edit = findChild<QLineEdit*>("fileNameEdit");
    const QString name = edit != nullptr ? named(edit->text()) : QString();
    if (!name.contains('"')) {
        if (edit != nullptr && edit->text() != name) {
            edit->setText(name);
        }
        QFileDialog::accept();
        return;
    }
    const QFileInfo file(directory().absoluteFilePath(name));
    const bool isFree =
        !file.exists()
        || QMessageBox::warning(this, windowTitle(),
                                tr("%1 already exists.\nDo you want to replace it?").arg(file.fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
               == QMessageBox::Yes;
    if (isFree) {
        path_ = QDir::cleanPath(file.absoluteFilePath());
        done(Accepted); // past the accept of QFileDialog, to which quotes divide names
    }
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
