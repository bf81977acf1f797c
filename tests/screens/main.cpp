// The screens' tests: an offscreen platform of a known size and the person's folders in a temporary place, both set
// before the application stands.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

void isolate(const QString& folder)
{
    QFile screen(folder + "/screen.json");
    if (screen.open(QIODevice::WriteOnly)) {
        screen.write(R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": true, "screens": [
            {"name": "s0", "x": 0, "y": 0, "width": 1600, "height": 1000, "logicalDpi": 96, "logicalBaseDpi": 96,
             "dpr": 1}]})");
    }
    screen.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen.fileName()).toUtf8());
    qputenv("SDL_AUDIODRIVER", "dummy");
    for (const char* const name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"}) {
        const QString path = folder + "/" + name;
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, path.toUtf8());
    }
}

} // namespace

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        std::fprintf(stderr, "there is no room for a temporary folder\n");
        return EXIT_FAILURE;
    }
    isolate(folder.path());
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(count, words);
    QApplication::setApplicationName("quillmont");
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
