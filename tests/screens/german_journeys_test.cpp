// The screens in another language: nothing is left in English, nothing is cut off, and no two entries of a menu and no
// two controls of a window answer the same letter, in English neither; what is saved is the same as ever.

#include "screens/screen_harness.h"
#include "settings/screen_language.h"
#include "shell/about_form.h"
#include "shell/help_index_form.h"
#include "twcore/libraries.h"
#include "windowing/language.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <set>

namespace screens_test {
namespace {

/// Names, formats and what the system itself says, as the driver's name of a control that is no common one.
const QRegularExpression kNeedsNone(
    R"(^(Quillmont|Deutsch|.*\.(avi|bmp|png|mp4|qpj|wav|mid)\b.*|/.*|[A-Z0-9 .\-/()]+|\d[\d.,: x%]*[A-Za-z/]{0,4}|)"
    R"(\d+ \w+ \d{4} [\d:]+|MPEG-4|Motion JPEG|Mirror|.*(Windows Media|Cinepak|Mu-law|A-law|HuffYUV|ADPCM|Xvid|MS-MPEG4|FFV1|H\.264|Ut Video).*)$)");

class GermanScreen : public ScreenTest {
protected:
    void SetUp() override
    {
        ASSERT_EQ(language::use(isGerman() ? QStringList{"de-AT", "en"} : QStringList{"en"}), isGerman() ? "de" : "en");
        language::missed = [this](const QString& text) {
            if (!kNeedsNone.match(text).hasMatch()) {
                missed.insert(text.toStdString());
            }
        };
        ScreenTest::SetUp();
    }
    virtual bool isGerman() const { return true; }
    void TearDown() override
    {
        ScreenTest::TearDown();
        language::missed = nullptr;
        language::use({"en"});
        for (const std::string& text : missed) {
            ADD_FAILURE() << "has no translation: " << text;
        }
    }

    /// Files in the media list, and on the tracks.
    void filled(const std::vector<std::string>& files)
    {
        ASSERT_TRUE(drop(files));
        ASSERT_TRUE(until([&] { return status().starts_with(isGerman() ? "Gewählte Datei" : "Selected file"); }))
            << status();
        onTheTracks();
        click(find("picVideo0"), {20, 10}); // and the menus know
    }
    void look(QWidget& ground);
    void lookAtMenus(QWidget& ground);
    void goThroughTheDialogues();
    /// The dialogue that this opens is looked at and left; first: what is done in it before.
    void inDialogue(const std::function<void()>& open, const std::function<void(QDialog&)>& first = {});
    void pick(QWidget& in, const char* action)
    {
        auto* const found = in.findChild<QAction*>(action);
        ASSERT_NE(found, nullptr) << action << " in " << in.objectName().toStdString();
        EXPECT_TRUE(found->isEnabled()) << action;
        found->trigger();
        settle();
    }

    std::set<std::string> missed;
};

void expectGerman(const QWidget& where, const QString& text)
{
    const QString said = QCoreApplication::translate("Quillmont", text.section('\t', 0, 0).toUtf8().constData());
    EXPECT_EQ(said.toStdString(), text.section('\t', 0, 0).toStdString())
        << "in " << where.objectName().toStdString() << " of " << where.window()->objectName().toStdString();
}

/// Its words, as far as they must stand in one line.
QString lineOf(const QWidget& widget)
{
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    const auto* const group = qobject_cast<const QGroupBox*>(&widget);
    const auto* const tool = qobject_cast<const QToolButton*>(&widget);
    if (tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly) {
        return {};
    }
    return label != nullptr && !label->wordWrap() && label->textFormat() != Qt::RichText ? label->text()
           : button != nullptr                                                           ? button->text()
           : group != nullptr                                                            ? group->title()
                                                                                         : QString();
}

/// Whether it can be seen while this page of these pages is in front.
bool stands(const QWidget* widget, const QStackedWidget* pages, const QWidget* page)
{
    for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
        const auto* const around = qobject_cast<const QStackedWidget*>(widget->parentWidget());
        if (around != nullptr && around == pages ? widget != page : widget->isHidden()) {
            return false;
        }
    }
    return true;
}

/// What Alt and a letter lead to, with its words.
std::vector<std::pair<const QWidget*, QString>> keyed(const QWidget& ground)
{
    std::vector<std::pair<const QWidget*, QString>> all;
    for (const QWidget* const widget : ground.findChildren<QWidget*>()) {
        const auto* const label = qobject_cast<const QLabel*>(widget);
        const auto* const button = qobject_cast<const QAbstractButton*>(widget);
        const auto* const group = qobject_cast<const QGroupBox*>(widget);
        if (label != nullptr && label->buddy() != nullptr) {
            all.emplace_back(widget, label->text());
        } else if (button != nullptr) {
            all.emplace_back(widget, button->text());
        } else if (group != nullptr) {
            all.emplace_back(widget, group->title());
        } else if (const auto* const tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                all.emplace_back(widget, tabs->tabText(i));
            }
        } else if (const auto* const bar = qobject_cast<const QMenuBar*>(widget)) {
            for (const QAction* const action : bar->actions()) {
                all.emplace_back(widget, action->text());
            }
        }
    }
    return all;
}

/// Each letter once among what is seen together: pages that lie behind one another may have the same.
void expectLettersDiffer(const QWidget& ground)
{
    std::vector<std::pair<const QStackedWidget*, const QWidget*>> fronts{{nullptr, nullptr}};
    for (const QStackedWidget* const pages : ground.findChildren<QStackedWidget*>()) {
        for (int i = 0; i < pages->count(); ++i) {
            fronts.emplace_back(pages, pages->widget(i));
        }
    }
    std::set<std::string> clashes;
    for (const auto& [pages, page] : fronts) {
        std::map<QKeySequence, QString> letters;
        for (const auto& [widget, text] : keyed(ground)) {
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (widget->window() != ground.window() || letter.isEmpty() || !stands(widget, pages, page)) {
                continue;
            }
            const auto [other, isNew] = letters.try_emplace(letter, text);
            if (!isNew) {
                clashes.insert((other->second + " and " + text).toStdString());
            }
        }
    }
    clashes.erase("&Audio Compressor and &Apply"); // have always had it, and Alt+A goes from one to the other
    for (const std::string& clash : clashes) {
        ADD_FAILURE() << "one letter for " << clash << " in " << ground.objectName().toStdString();
    }
}

void GermanScreen::look(QWidget& ground)
{
    settle();
    expectLettersDiffer(ground);
    const auto noMisses = language::missed;
    language::missed = nullptr;
    constexpr QSize kSmallScreen(1024, 768);
    if (ground.isWindow() && qobject_cast<QDialog*>(&ground) != nullptr) {
        EXPECT_LE(ground.minimumSizeHint().width(), kSmallScreen.width()) << ground.objectName().toStdString();
        EXPECT_LE(ground.minimumSizeHint().height(), kSmallScreen.height()) << ground.objectName().toStdString();
    }
    expectGerman(ground, ground.windowTitle());
    for (QWidget* const widget : ground.findChildren<QWidget*>()) {
        for (const QString& text :
             {widget->toolTip(), widget->whatsThis(), widget->accessibleName(), lineOf(*widget)}) {
            expectGerman(*widget, text);
        }
        if (const auto* const box = qobject_cast<QComboBox*>(widget); box != nullptr && !box->isEditable()) {
            for (int i = 0; i < box->count(); ++i) {
                expectGerman(*box, box->itemText(i));
            }
        }
        if (const auto* const field = qobject_cast<QLineEdit*>(widget); field != nullptr && field->isReadOnly()) {
            expectGerman(*field, field->text());
        }
        if (const auto* const tabs = qobject_cast<QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                expectGerman(*tabs, tabs->tabText(i));
            }
        }
        const QString line = lineOf(*widget).section('\n', 0, 0);
        if (widget->isVisible() && !line.isEmpty()) {
            EXPECT_GE(widget->width(), widget->fontMetrics().horizontalAdvance(QString(line).remove('&')))
                << "cut: " << line.toStdString() << " in " << widget->objectName().toStdString();
        }
    }
    if (isGerman()) {
        lookAtMenus(ground);
    }
    language::missed = noMisses;
}

void GermanScreen::lookAtMenus(QWidget& ground)
{
    QList<QWidget*> menus;
    for (QMenu* const menu : ground.findChildren<QMenu*>()) {
        menus << menu;
    }
    for (QMenuBar* const bar : ground.findChildren<QMenuBar*>()) {
        menus << bar;
    }
    for (const QWidget* const menu : menus) {
        std::map<QKeySequence, QString> letters;
        for (const QAction* const action : menu->actions()) {
            expectGerman(*menu, action->text());
            EXPECT_FALSE(action->text().contains("Shift+")) << "keys beside one another have one name";
            const QKeySequence letter = QKeySequence::mnemonic(action->text());
            if (!letter.isEmpty() && action->isVisible()) {
                const auto [other, isNew] = letters.try_emplace(letter, action->text());
                EXPECT_TRUE(isNew) << action->text().toStdString() << " and " << other->second.toStdString();
            }
        }
    }
}

void GermanScreen::inDialogue(const std::function<void()>& open, const std::function<void(QDialog&)>& first)
{
    bool isLeft = false;
    answers.work([&] {
        auto* const dialogue = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialogue, nullptr);
        SCOPED_TRACE(dialogue->objectName().toStdString());
        if (first) {
            first(*dialogue);
        }
        look(*dialogue);
        dialogue->reject();
        isLeft = true;
    });
    open();
    EXPECT_TRUE(until([&] { return isLeft; }));
    settle();
}

TEST_F(GermanScreen, TheMainWindowAndItsMessages)
{
    filled({media("mpeg4.avi"), media("still.bmp")});
    key(Qt::Key_F5);
    for (const char* const panel : {"picVideo0", "lvwMediaList", "frmPreview", "picScale"}) {
        click(find(panel));
        look(*window);
    }
    for (const char* const action : {"mnuEditCopy", "mnuEditPaste", "mnuToolsSplitTimeline", "mnuEditUndo",
                                     "mnuToolsAddBookmark", "mnuToolsTrimMode", "mnuAddEffectFade"}) {
        pick(*window, action);
        look(*window);
    }
    answers.click("&Nein");
    pick(*window, "mnuEditClearTimeline");
    EXPECT_EQ(answers.boxes.back(), "?: Möchten Sie die Zeitleiste wirklich leeren?");
    auto& tabs = *window->findChild<QTabBar*>("tbsTools");
    for (int i = 0; i < tabs.count(); ++i) {
        tabs.setCurrentIndex(i);
        look(*window);
    }
}

void GermanScreen::goThroughTheDialogues()
{
    filled({media("mpeg4.avi"), media("still.bmp")});
    const auto pressed = [this](QDialog& dialogue, const char* button) {
        auto* const found = dialogue.findChild<QPushButton*>(button);
        ASSERT_NE(found, nullptr) << dialogue.objectName().toStdString();
        inDialogue([&] { found->click(); });
    };
    inDialogue([&] { pick(*window, "mnuToolsOptions"); },
               [&](QDialog& options) { pressed(options, "cmdVideoProperties"); });
    inDialogue([&] { pick(*window, "mnuFileExportTimeline"); }, [&](QDialog& save) { pressed(save, "cmdAdvanced"); });
    inDialogue([&] { pick(*window, "mnuToolsAddText"); });
    inDialogue([&] { pick(*window, "mnuToolsTakeSnap"); });
    click(find("picVideo0"), {20, 10});
    inDialogue([&] { pick(*window, "mnuEditStretchMode"); });
    click(find("lvwMediaList"), rowRect(1).center());
    pick(*window, "mnuEditAddToOverlay");
    click(find("picOverlay0"), {3, 10});
    inDialogue([&] { pick(*window, "mnuEditSetOverlayTransparency"); });
    qputenv("QUILLMONT_TEST_DEVICES", "camera,microphone");
    inDialogue([&] { pick(*window, "mnuToolsCapture"); },
               [&](QDialog& capture) {
                   inDialogue([&] { pick(capture, "mnuCaptureOptions"); });
                   inDialogue([&] { pick(capture, "mnuCaptureStart"); });
                   inDialogue([&] { pick(capture, "mnuCaptureCameraSettings"); });
               });
    qunsetenv("QUILLMONT_TEST_DEVICES");
    inDialogue([&] { pick(*window, "mnuFileNewProject"); });
    about::engineLibraries = twcore::libraries;
    inDialogue([&] { pick(*window, "mnuHelpAbout"); });
}

TEST_F(GermanScreen, TheDialogues) { goThroughTheDialogues(); }

class EnglishScreen : public GermanScreen {
    bool isGerman() const override { return false; }
};

TEST_F(EnglishScreen, TheDialogues) { goThroughTheDialogues(); }

TEST_F(GermanScreen, KeysAndTheIndexOfTheHelp)
{
    EXPECT_EQ(window->findChild<QAction*>("mnuViewWholeFilm")->text().section('\t', 1),
              QKeySequence(Qt::SHIFT | Qt::Key_Z).toString(QKeySequence::NativeText));
    const HelpIndex index(nullptr, {});
    EXPECT_FALSE(index.findItems("Anpassung wählen", Qt::MatchExactly).isEmpty());
}

TEST_F(GermanScreen, TextsThatWerePutTogether)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Fade", "Blende"},
        {"Undo: Add to Timeline", "Rückgängig: Auf die Zeitleiste"}, // what stands in it is looked up as well
        {"Selected file: \"Fade\". Total Files in Media List: 2.",   // but what is quoted is a name
         "Gewählte Datei: „Fade“. Dateien in der Medienliste: 2."},
        {"Saved %2 of 100% done.qpj.", "%2 of 100% done.qpj gespeichert."}, // a name that looks like a place
        {"\"a.avi\" cannot be read.", "„a.avi“ ist nicht lesbar."},
        {"0:01:02.500", "0:01:02.500"},
        {"1,142 of 1,234,567 frames copied unchanged", "1.142 von 1.234.567 Bildern unverändert kopiert"},
        {"Opening file 01 of 02 (gone.avi) from project \"p.qpj\"",
         "Datei 01 von 02 wird geöffnet (gone.avi), aus dem Projekt „p.qpj“"},
        {"File not found.\r\n\"p.qpj\", 10:00, 3 steps to undo, another project was opened", // by its lines
         "Datei nicht gefunden.\r\n„p.qpj“, 10:00, 3 Schritte rückgängig zu machen, ein anderes Projekt wurde "
         "geöffnet"},
    };
    for (const auto& [english, german] : cases) {
        EXPECT_EQ(translated(english).toStdString(), german);
    }
    EXPECT_EQ(translatedWord("Undo: Add to Timeline").toStdString(), "Undo: Add to Timeline")
        << "a file may be so called";
    EXPECT_EQ(language::use({"xx", "en-GB", "de"}), "en");
    EXPECT_EQ(translated("Fade").toStdString(), "Fade");
}

TEST_F(GermanScreen, TheOptionsKeepTheLanguage)
{
    for (const auto& [row, code] : {std::pair("Deutsch", "de"), {"English", "en"}, {"Wie der Desktop", ""}}) {
        answers.work([row = row] {
            auto& dialogue = *QApplication::activeModalWidget();
            auto& list = *dialogue.findChild<QComboBox*>("cboLanguage");
            list.setCurrentText(row);
            EXPECT_EQ(list.currentText(), row);
            dialogue.findChild<QPushButton*>("cmdOk")->click();
        });
        pick(*window, "mnuToolsOptions");
        EXPECT_EQ(ModuleSettings::screenLanguage(), code);
    }
}

/// What the program writes, projects and settings, holds its own words in every language.
TEST_F(GermanScreen, WhatIsSavedIsNotTranslated)
{
    filled({media("mpeg4.avi")});
    pick(*window, "mnuAddEffectFade");
    const QTemporaryDir folder;
    const QString settingsFile = qEnvironmentVariable("XDG_CONFIG_HOME") + "/quillmont/Quillmont 1.1.ini";
    std::vector<QByteArray> projects;
    std::vector<QByteArray> settings;
    const auto bytes = [](const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    };
    for (const char* const name : {"de", "en"}) {
        const QString path = folder.path() + "/" + name + ".qpj";
        answers.work([&] {
            auto* const edit = QApplication::activeModalWidget()->findChild<QLineEdit*>("fileNameEdit");
            edit->setText(path);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        pick(*window, "mnuFileSaveProjectAs");
        projects.push_back(bytes(path));
        answers.work([] { QApplication::activeModalWidget()->findChild<QPushButton*>("cmdOk")->click(); });
        pick(*window, "mnuToolsOptions");
        const QByteArray all = bytes(settingsFile); // the recent projects ahead of these differ by themselves
        settings.push_back(all.mid(all.indexOf("[Save%20Options]")));
        language::use({"en"});
    }
    EXPECT_GT(projects[0].size(), 500);
    EXPECT_EQ(projects[0].toStdString(), projects[1].toStdString());
    EXPECT_GT(settings[0].size(), 300);
    EXPECT_EQ(settings[0].toStdString(), settings[1].toStdString());
}

} // namespace
} // namespace screens_test
