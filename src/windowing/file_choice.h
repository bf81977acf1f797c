#pragma once

// What the dialogues of the platform are asked, and what is read off them: the program's filters in the toolkit's
// words, and every path that a person chose or typed, however.

#include "core/platform.h"

#include <QFileDialog>
#include <QStringList>

/// The filters as the toolkit writes them, in the same order. Those of video, sound and pictures let the newer kinds
/// through besides, and "*.*" lets files without a dot through, as it does where it comes from.
QStringList toolkitFilters(const std::vector<FileFilter>& filters);

/// Whole paths of what was chosen once the dialogue was accepted. Of names that were typed in quotes the toolkit drops
/// those that its list does not show; they are here too, also when there is no such file.
QStringList chosenPaths(const QFileDialog& dialog);

/// From here on what is typed counts, wherever it lies. The toolkit marks in its list what the letters name on the way,
/// folders too, takes the marks back by toggling them, and obeys a mark that is left rather than the text.
void obeyTyped(const QFileDialog& dialog);

/// Asks for the name of a new file. What is typed is one name, with the ending if it has none that the filters know:
/// the toolkit takes quotes in it for the ends of several names, and leaves "film.v2" without an ending.
class NewFileDialog final : public QFileDialog {
public:
    NewFileDialog(QWidget* parent, const SaveFileRequest& request, const QString& folder);

    /// Of what was accepted, whole.
    QString path() const;

protected:
    void accept() override;

private:
    QString named(QString typed) const;

    QStringList endings_; // with their dot, small; the first one is added
    QString path_;        // of a name that the toolkit would take apart
};

/// One path as it is; several as the folder that holds them all and behind it their names from there, separated by NUL.
std::string folderAndNames(const QStringList& paths);
