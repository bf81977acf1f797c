// What the desktop is told of project files: in which files, when, and that the desktop's own tools agree.

#include "screens/answers.h"
#include "shell/ModuleAssociateIcon.h"
#include "windowing/desktop_class_root.h"
#include "windowing/qt_ports.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace screens_test {
namespace {

class FileAssociation : public testing::Test {
protected:
    void TearDown() override { ports = {}; }

    QString write(const QString& name, const QByteArray& text)
    {
        const QString path = folder.path() + "/" + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size()) << path.toStdString();
        return path;
    }
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// A start of the program: what it has written, and the tools that were run over which folders.
    std::string start(const QString& program)
    {
        std::string told;
        DesktopClassRoot root(
            {home, {folder.path() + "/system"}, program, [&](const QString& tool, const QString& list) {
                 told += " " + tool.toStdString() + ":" + QDir(home).relativeFilePath(list).toStdString();
             }});
        QtShell shell;
        ports.shell = &shell;
        ports.classRoot = &root;
        const QDateTime longAgo = QDateTime::fromSecsSinceEpoch(1'000'000'000);
        for (const char* const name : kFiles) {
            QFile file(home + "/" + name);
            EXPECT_TRUE(!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)
                        || file.setFileTime(longAgo, QFileDevice::FileModificationTime));
        }
        ModuleAssociateIcon::ApplyFileAssociation();
        std::string written;
        for (const char* const name : kFiles) {
            const QFileInfo file(home + "/" + name);
            written += file.exists() && file.lastModified() != longAgo ? file.fileName().toStdString() + " " : "";
        }
        return written + "|" + told;
    }

    static constexpr const char* kFiles[] = {"mime/packages/quillmont.xml", "applications/quillmont.desktop",
                                             "icons/hicolor/scalable/apps/quillmont.svg",
                                             "icons/hicolor/scalable/mimetypes/application-x-quillmont-project.svg"};
    static constexpr const char* kNothing = "|";
    QTemporaryDir folder;
    QString home = folder.path() + "/my data";
};

TEST_F(FileAssociation, IsWrittenWhereItDiffers)
{
    const QString program = write("bin/quillmont", "");
    const std::string whole = "quillmont.xml quillmont.desktop quillmont.svg application-x-quillmont-project.svg | "
                              "update-mime-database:mime update-desktop-database:applications";
    EXPECT_EQ(start(program), whole);
    EXPECT_EQ(start(program), kNothing);
    EXPECT_TRUE(read(home + "/" + kFiles[2]).startsWith("<svg"));
    write("my data/applications/quillmont.desktop", "[Desktop Entry]\nExec=other\n");
    EXPECT_EQ(start(program), "quillmont.desktop | update-desktop-database:applications");
    EXPECT_EQ(start(folder.path() + "/bin/moved"), "quillmont.desktop | update-desktop-database:applications");
    QFile::remove(home + "/" + kFiles[2]);
    EXPECT_EQ(start(folder.path() + "/bin/moved"), "quillmont.svg |");
}

TEST_F(FileAssociation, AnEntryOfTheWholeSystemIsEnough)
{
    const QString program = write("opt/100% \"$our\" \\ программа/quillmont", "");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    QFile::link(program, folder.path() + "/quillmont-new");
    const QByteArray link = (folder.path() + "/quillmont-new").toUtf8();
    const struct {
        QByteArray entry;
        bool isEnough;
    } cases[] = {{"[Desktop Entry]\nName=Ours\nExec=" + execLine(program) + "\n", true},
                 {"[Desktop Entry]\nExec = " + link + " --new %f\n", true},
                 {"[Desktop Entry]\nTryExec=" + link + "\nExec=env A=b " + link + "\n", true},
                 {"[Desktop Entry]\nExec=" + link + "\nHidden=true\n", false},
                 {"[Desktop Entry]\nExec=" + link + "2\n", false},
                 {"[Desktop Entry]\nExec=sh\n[Desktop Action New]\nExec=" + link + "\n", false},
                 {"", false}};
    for (const auto& [entry, isEnough] : cases) {
        write("system/applications/sub/any.desktop", entry);
        EXPECT_EQ(start(program) == kNothing, isEnough) << entry.toStdString();
        EXPECT_EQ(QDir(home).exists(), !isEnough) << entry.toStdString();
        QDir(home).removeRecursively();
    }
}

TEST_F(FileAssociation, WhatAnEarlierStartWroteGoesWhenTheSystemHasAnEntry)
{
    const QString program = write("bin/quillmont", "");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QString elsewhere = folder.path() + "/my \"100%\" \\ checkout/quillmont";
    const auto filesLeft = [&] {
        return std::ranges::count_if(kFiles, [&](const char* name) { return QFile::exists(home + "/" + name); });
    };
    const auto before = [](QByteArray line) { return [line](QByteArray entry) { return line + entry; }; };
    const struct {
        const char* what;
        std::function<QByteArray(QByteArray)> change; // of the entry that was written
        bool isTaken;
    } cases[] = {
        {"as it was written", [](QByteArray entry) { return entry; }, true},
        {"by the first version", [](QByteArray entry) { return entry.replace("StartupWMClass=quillmont\n", ""); },
         true},
        {"another name", [](QByteArray entry) { return entry.replace("Name=Quillmont", "Name=Mine"); }, false},
        {"other words behind", [](QByteArray entry) { return entry.replace(" %f", " -style fusion %f"); }, false},
        {"a line of the person's", before("# mine\n"), false},
        {"nothing in it", [](QByteArray) { return QByteArray(); }, false}};
    for (const auto& [what, change, isTaken] : cases) {
        QDir(folder.path() + "/system").removeRecursively();
        start(elsewhere);
        write("my data/applications/quillmont.desktop", change(read(home + "/" + kFiles[1])));
        write("system/applications/quillmont.desktop", "[Desktop Entry]\nExec=" + execLine(program) + "\n");
        const std::string told = start(program);
        EXPECT_EQ(told, isTaken ? "| update-mime-database:mime update-desktop-database:applications" : kNothing)
            << what;
        EXPECT_EQ(filesLeft(), isTaken ? 0 : std::ssize(kFiles)) << what;
        QDir(home).removeRecursively();
    }
}

TEST_F(FileAssociation, AnyPathIsQuoted)
{
    const std::pair<const char*, const char*> cases[] = {{"/usr/bin/quillmont", R"("/usr/bin/quillmont" %f)"},
                                                         {"/my films/q", R"("/my films/q" %f)"},
                                                         {"/100%/q", R"(env "/100%%/q" %f)"},
                                                         {R"(/"a"/$b`c\d)", R"("/\\"a\\"/\\$b\\`c\\\\d" %f)"},
                                                         {"/a\nb", R"("/a\nb" %f)"},
                                                         {"/фильм/q", R"("/фильм/q" %f)"}};
    for (const auto& [program, line] : cases) {
        EXPECT_EQ(execLine(program).toStdString(), line);
    }
}

TEST_F(FileAssociation, TheDesktopsOwnToolsAgree)
{
    const auto agrees = [&](const char* tool, QStringList words) {
        const QString program = QStandardPaths::findExecutable(tool);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setEnvironment(QProcess::systemEnvironment() << "XDG_DATA_HOME=" + home);
        process.start(program, words);
        const bool isGood = process.waitForFinished() && process.exitCode() == 0;
        const QByteArray told = process.readAll();
        EXPECT_TRUE(program.isEmpty() || (isGood && told.isEmpty())) << tool << ": " << told.toStdString();
        return !program.isEmpty();
    };
    int asked = 0;
    for (const char* const program : {"/usr/bin/quillmont", "/my \"100%\" films/$HOME/`q`\\/программа"}) {
        EXPECT_NE(start(program), kNothing);
        asked += agrees("desktop-file-validate", {home + "/" + kFiles[1]});
        asked += agrees("xmllint", {"--noout", home + "/" + kFiles[0]});
        asked += agrees("update-mime-database", {home + "/mime"});
        const bool isKnown = read(home + "/mime/globs2").contains(":application/x-quillmont-project:*.qpj");
        EXPECT_TRUE(isKnown || QStandardPaths::findExecutable("update-mime-database").isEmpty());
    }
    if (asked == 0) {
        GTEST_SKIP() << "none of them is here";
    }
}

} // namespace
} // namespace screens_test
