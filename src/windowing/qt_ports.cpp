#include "windowing/qt_ports.h"

#include "core/shared_state.h"
#include "engine/runtime_error.h"
#include "windowing/file_choice.h"
#include "windowing/font_dialog.h"
#include "windowing/language.h"
#include "windowing/painter_canvas.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QApplication>
#include <QColorDialog>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLocale>
#include <QMessageBox>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QSysInfo>
#include <QUrl>
#include <unistd.h>

namespace {

constexpr std::int32_t kBadFileName = 52;
constexpr std::int32_t kFileNotFound = 53;
constexpr std::int32_t kPermissionDenied = 70;
constexpr std::int32_t kPathNotFound = 76;
constexpr std::int32_t kCancelled = 32755;
constexpr std::int32_t kBufferTooSmall = 20476;

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::kInformation:
        return QMessageBox::Information;
    case MessageIcon::kQuestion:
        return QMessageBox::Question;
    case MessageIcon::kExclamation:
        return QMessageBox::Warning;
    case MessageIcon::kCritical:
        return QMessageBox::Critical;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons buttonsOf(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::kYesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::kYesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

/// One whose ways out beside its buttons are no answer: a No that nobody gave may throw work away.
class Box final : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        event->matches(QKeySequence::Cancel) ? done(QMessageBox::Cancel) : QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent*) override { done(QMessageBox::Cancel); }
};

/// Shows a dialogue with the plain pointer; true when it was accepted.
bool isAccepted(QDialog& dialog)
{
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = dialog.exec();
    QApplication::restoreOverrideCursor();
    return answer == QDialog::Accepted;
}

[[noreturn]] void raiseCancelled() { throw engine::RuntimeError(kCancelled, "Cancel was selected."); }

DateTime fromToolkit(const QDateTime& moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

/// True when it runs. What it then says comes late: at some desktops only with the end of the program it has found.
bool startOpener(const QString& opener, const QUrl& url, std::function<void()> failedLater)
{
    constexpr qint64 kSoonMs = 5000;    // from then on it is how that program ended
    auto* const process = new QProcess; // nobody's, as its end would be that of what it has started
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::setsid(); }); // Ctrl+C at a terminal is for this program alone
    QElapsedTimer since;
    since.start();
    QObject::connect(process, &QProcess::finished, [process, since, failed = std::move(failedLater)](int code) {
        if (code != 0 && since.elapsed() < kSoonMs) {
            failed();
        }
        process->deleteLater();
    });
    process->start(opener, {QString::fromLatin1(url.toEncoded())});
    if (process->waitForStarted()) {
        return true;
    }
    delete process;
    return false;
}

QFileInfo existing(std::string_view path)
{
    if (path.empty() || path.find('\0') != std::string_view::npos) {
        throw engine::RuntimeError(kBadFileName, "Bad file name or number");
    }
    const QFileInfo file(fromProgram(path));
    if (!file.exists()) {
        const bool hasFolder = file.dir().exists();
        throw engine::RuntimeError(hasFolder ? kFileNotFound : kPathNotFound,
                                   hasFolder ? "File not found" : "Path not found");
    }
    return file;
}

} // namespace

QWidget* dialogOwner()
{
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const active = modal != nullptr ? modal : QApplication::activeWindow();
    // What only stands beside a window, as the tutorial, is read on while that one's dialogue is open.
    const bool standsBeside = modal == nullptr && active != nullptr && active->windowType() == Qt::Dialog
                              && active->parentWidget() != nullptr;
    return standsBeside ? active->parentWidget()->window() : active;
}

MessageAnswer QtMessageBoxes::show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                                   std::string_view title)
{
    Box box(iconOf(icon), translated(title), translated(text), buttonsOf(buttons), dialogOwner());
    box.setTextFormat(Qt::PlainText);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box.exec();
    QApplication::restoreOverrideCursor();
    switch (answer) {
    case QMessageBox::Yes:
        return MessageAnswer::kYes;
    case QMessageBox::No:
        return MessageAnswer::kNo;
    default:
        return buttons == MessageButtons::kOk ? MessageAnswer::kOk : MessageAnswer::kCancel;
    }
}

/// Where a dialogue opens that was told no folder. The first one does so in the working folder: where the program was
/// started from says nothing about where somebody keeps their clips.
QString QtCommonDialogs::firstFolder(const std::string& told) const
{
    if (!told.empty()) {
        return fromProgram(told);
    }
    return lastFolder_.isEmpty() ? fromProgram(state::WorkingFolder) : lastFolder_;
}

std::string QtCommonDialogs::openFiles(const OpenFileRequest& request)
{
    const QStringList filters = toolkitFilters(request.filters);
    QFileDialog dialog(dialogOwner(), QObject::tr("Open"), firstFolder(request.folder));
    dialog.setNameFilters(filters);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setFileMode(request.multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    obeyTyped(dialog);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size()) {
        dialog.selectNameFilter(dialog.nameFilters().at(request.filterIndex - 1));
    }
    const QStringList chosen = isAccepted(dialog) ? chosenPaths(dialog) : QStringList();
    if (chosen.isEmpty()) {
        raiseCancelled();
    }
    lastFolder_ = QFileInfo(chosen.front()).absolutePath();
    std::string names = folderAndNames(chosen);
    if (request.bufferLength > 0 && names.size() >= request.bufferLength) {
        throw engine::RuntimeError(kBufferTooSmall, "The buffer for the file names is too small.");
    }
    return names;
}

std::string QtCommonDialogs::saveFile(const SaveFileRequest& request)
{
    NewFileDialog dialog(dialogOwner(), request, firstFolder(request.folder));
    if (!isAccepted(dialog) || dialog.path().isEmpty()) {
        raiseCancelled();
    }
    lastFolder_ = QFileInfo(dialog.path()).absolutePath();
    return toProgram(dialog.path());
}

std::string QtCommonDialogs::pickFolder(std::string_view title, std::string_view folder)
{
    QFileDialog dialog(dialogOwner(), translated(title), fromProgram(folder));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    obeyTyped(dialog);
    return isAccepted(dialog) && !dialog.selectedFiles().isEmpty() ? toProgram(dialog.selectedFiles().front())
                                                                   : std::string();
}

std::int32_t QtCommonDialogs::chooseColour(std::int32_t present)
{
    QColorDialog dialog(QColor(present & 0xFF, present >> 8 & 0xFF, present >> 16 & 0xFF), dialogOwner());
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (!isAccepted(dialog)) {
        raiseCancelled();
    }
    const QColor chosen = dialog.currentColor();
    return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
}

void QtCommonDialogs::chooseFont(TextFont& font, std::int32_t& colour)
{
    QFont present(fromProgram(font.Name));
    present.setPointSizeF(font.Size);
    present.setBold(font.Bold);
    present.setItalic(font.Italic);
    present.setUnderline(font.Underline);
    present.setStrikeOut(font.Strikethrough);
    // The dialogue knows only what is installed: a name that is not is offered as the font that stands in for it.
    const QString shown = QFontInfo(present).family();
    present.setFamily(shown);
    FontDialog dialog(present, colour, dialogOwner());
    if (!isAccepted(dialog)) {
        raiseCancelled();
    }
    const QFont chosen = dialog.currentFont();
    const std::string name = chosen.family() == shown ? font.Name : toProgram(chosen.family());
    font = {name, chosen.pointSizeF(), chosen.bold(), chosen.italic(), chosen.underline(), chosen.strikeOut()};
    colour = dialog.colour();
}

void QtEvents::letRun()
{
    const ShowPass::Calm calm;
    QCoreApplication::processEvents();
}

double QtFonts::textWidth(std::string_view text)
{
    return QFontMetricsF(trackFont()).horizontalAdvance(translatedWord(text));
}

double QtFonts::textHeight() { return QFontMetricsF(trackFont()).height(); }

bool QtShell::openWithDesktop(std::string_view path)
{
    const bool isPage = path.starts_with("https://") || path.starts_with("http://");
    const QUrl url = isPage ? QUrl(fromProgram(path)) : QUrl::fromLocalFile(fromProgram(path));
    // The toolkit asks the same opener, but does not listen to its answer.
    const QString opener = QStandardPaths::findExecutable("xdg-open");
    return opener.isEmpty() ? QDesktopServices::openUrl(url)
                            : startOpener(opener, url, [this, name = std::string(path)] {
                                  if (openFailedLater) {
                                      openFailedLater(name);
                                  }
                              });
}

std::string QtShell::temporaryFolder() { return toProgram(QDir::tempPath()) + "/"; }

std::string QtShell::programFolder() { return toProgram(QCoreApplication::applicationDirPath()); }

std::string QtShell::runtimeFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return toProgram(!folder.isEmpty() && QDir().mkpath(folder) ? folder : QDir::tempPath());
}

std::string QtShell::stateFolder()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (folder.isEmpty()) {
        folder = QDir::homePath() + "/.local/state";
    }
    folder += "/quillmont";
    QDir().mkpath(folder);
    return toProgram(folder);
}

std::string QtShell::cacheFolder()
{
    const QString folder = qEnvironmentVariable("XDG_CACHE_HOME");
    return toProgram((folder.isEmpty() ? QDir::homePath() + "/.cache" : folder) + "/quillmont");
}

std::int64_t QtShell::fileLength(std::string_view path) { return existing(path).size(); }

DateTime QtShell::fileTime(std::string_view path) { return fromToolkit(existing(path).lastModified()); }

DateTime QtShell::now() { return fromToolkit(QDateTime::currentDateTime()); }

std::string QtShell::asText(const DateTime& moment)
{
    const QDateTime when(QDate(moment.year, moment.month, moment.day),
                         QTime(moment.hour, moment.minute, moment.second));
    return toProgram(QLocale::system().toString(when, QLocale::ShortFormat));
}

std::string QtShell::systemText()
{
    const QString name = QSysInfo::prettyProductName();
    const QStringList version = QSysInfo::kernelVersion().split('.');
    const auto part = [&](int i) { return i < version.size() ? version[i] : QString("0"); };
    return toProgram(name + " Version: [" + QSysInfo::kernelVersion() + "] Major: [" + part(0) + "] Minor: [" + part(1)
                     + "] Platform: [" + QSysInfo::kernelType() + "]");
}

int QtShell::colourDepth() { return QGuiApplication::primaryScreen()->depth(); }

void QtShell::copyWithRename(std::string_view from, std::string_view to)
{
    const QFileInfo source = existing(from);
    const QFileInfo wanted(fromProgram(to));
    if (!wanted.dir().exists()) {
        throw engine::RuntimeError(kPathNotFound, "Path not found");
    }
    QString target = wanted.filePath();
    for (int number = 2; QFileInfo::exists(target); ++number) {
        target = wanted.path() + "/" + wanted.completeBaseName() + " (" + QString::number(number) + ")"
                 + (wanted.suffix().isEmpty() ? "" : "." + wanted.suffix());
    }
    if (!QFile::copy(source.filePath(), target)) {
        throw engine::RuntimeError(kPermissionDenied, "Permission denied");
    }
}
