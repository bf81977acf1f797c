#include "shell/sample_files_form.h"

#include "core/platform.h"
#include "hand/pointer_turn.h"
#include "media/media_files.h"
#include "media/opening.h"
#include "shell/project_commands.h"
#include "windowing/text.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <optional>
#include <string>
#include <vector>

/// Outside a namespace, as the toolkit's macro wants it.
static void bringInFiles() { Q_INIT_RESOURCE(sample); }

namespace sample {

namespace {

const QString kProject = QStringLiteral("A day by the sea.qpj");
const QStringList kClips = {"sunrise.mp4", "sea.mp4"};

/// The bytes of a file as they go to the disk: the project's paths are those of the folder.
QByteArray bytesOf(const QString& name, const QString& place)
{
    QFile packed(":/sample/" + name);
    packed.open(QIODevice::ReadOnly);
    QByteArray bytes = packed.readAll();
    if (name == kProject) {
        bytes.replace("@FOLDER@", place.toHtmlEscaped().toUtf8());
    }
    return bytes;
}

/// The folder, when all of them stand in it.
std::optional<QString> written()
{
    bringInFiles();
    const QString place = folder();
    QString trouble = QDir().mkpath(place) ? QString() : QObject::tr("The folder cannot be made.");
    for (const QString& name : kClips + QStringList{"title.png", kProject}) {
        QSaveFile file(place + "/" + name);
        if (!trouble.isEmpty() || QFile::exists(file.fileName())) {
            continue;
        }
        const QByteArray bytes = bytesOf(name, place);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
            trouble = file.errorString();
        }
    }
    if (!trouble.isEmpty()) {
        tellUser(toProgram(QObject::tr("The files of the tutorial cannot be written to %1: %2").arg(place, trouble)),
                 MessageIcon::kExclamation);
        return {};
    }
    return place;
}

void openClips()
{
    if (const std::optional<QString> place = written()) {
        std::vector<std::string> paths;
        for (const QString& name : kClips) {
            const std::string path = toProgram(*place + "/" + name);
            if (!media::isListed(path)) {
                paths.push_back(path);
            }
        }
        moduleTarnwick::OpenDroppedFiles(paths);
    }
}

void openFilm()
{
    if (const std::optional<QString> place = written()) {
        mdiTarnwick::OpenProjectFile(toProgram(*place + "/" + kProject));
    }
}

} // namespace

QString folder()
{
    const QString videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    return (videos.isEmpty() ? QDir::homePath() : videos) + "/Quillmont Tutorial";
}

void run(const QString& deed)
{
    if (QApplication::activeModalWidget() != nullptr) {
        tellUser(toProgram(QObject::tr("Close the other window first.")));
        return;
    }
    hand::behindTurn(deed == "film" ? openFilm : openClips);
}

} // namespace sample
