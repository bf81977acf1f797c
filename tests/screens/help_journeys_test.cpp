// The help window: contents, search, links; the tutorial; and that no page leads nowhere, in any language.

#include "screens/screen_harness.h"
#include "shell/command_help.h"
#include "shell/key_table.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/menu_table.h"
#include "shell/tutorial.h"
#include "windowing/help_pages.h"
#include "windowing/language.h"
#include "windowing/text.h"

#include <QCheckBox>
#include <QDirIterator>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWindow>
#include <set>

namespace screens_test {
namespace {

class HelpScreen : public ScreenTest {
protected:
    void TearDown() override
    {
        ScreenTest::TearDown();
        language::use({"en"});
    }
    /// The help window; nullptr before it was asked for.
    static QWidget* help()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "helpWindow") {
                return widget;
            }
        }
        return nullptr;
    }
    template <class Widget>
    static Widget& part(const char* name)
    {
        return *help()->findChild<Widget*>(name);
    }
    static QTextBrowser& page() { return part<QTextBrowser>("helpPage"); }
    static std::string title() { return page().documentTitle().toStdString(); }
    static std::string inContents()
    {
        const auto* const item = part<QTreeWidget>("helpContents").currentItem();
        return item == nullptr ? "" : item->text(0).toStdString();
    }
    static void helpKey(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QTest::keyClick(&widget, key, keys);
        settle();
    }
};

TEST_F(HelpScreen, OpensFollowsLinksAndGoesBack)
{
    EXPECT_EQ(help(), nullptr);
    key(Qt::Key_F1);
    ASSERT_NE(help(), nullptr);
    EXPECT_TRUE(help()->isVisible());
    EXPECT_EQ(title(), "Welcome");
    EXPECT_EQ(inContents(), "Welcome");

    ASSERT_TRUE(QTest::qWaitForWindowActive(help()));
    helpKey(page(), Qt::Key_Tab); // to the first link
    helpKey(page(), Qt::Key_Return);
    EXPECT_EQ(title(), "Tutorial: a small film");
    EXPECT_EQ(inContents(), "Tutorial: a small film");
    helpKey(page(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(title(), "Welcome");
    helpKey(page(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(title(), "Tutorial: a small film");

    helpKey(page(), Qt::Key_Tab); // a link near the beginning
    const int end = page().verticalScrollBar()->maximum();
    page().verticalScrollBar()->setValue(end);
    mdiTarnwick::showHelp("3_7_05_Cut_Copy_Paste.htm#paste");
    settle();
    EXPECT_EQ(title(), "Cut, copy, paste, delete");
    helpKey(page(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page().verticalScrollBar()->value(), end) << "read on where it was left";
    mdiTarnwick::showHelp("9_Nowhere.htm");
    settle();
    EXPECT_NE(page().toPlainText().indexOf("has no page \"9_Nowhere.htm\""), -1);
    EXPECT_EQ(inContents(), "");

    EXPECT_GT(expectNames(*help()), 5);
    helpKey(page(), Qt::Key_Escape);
    EXPECT_FALSE(help()->isVisible());
}

TEST_F(HelpScreen, ASearchFindsPagesAndMarksTheWords)
{
    key(Qt::Key_F1);
    ASSERT_TRUE(QTest::qWaitForWindowActive(help()));
    auto& words = part<QLineEdit>("helpSearch");
    auto& hits = part<QListWidget>("helpHits");
    helpKey(page(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(help()->focusWidget(), &words);
    QTest::keyClicks(&words, "sound pitch");
    settle();
    ASSERT_EQ(hits.count(), 1);
    EXPECT_TRUE(hits.item(0)->text().startsWith("Resizing\n"));
    helpKey(words, Qt::Key_Return);
    EXPECT_EQ(title(), "Resizing");
    std::set<std::string> marked;
    for (const QTextEdit::ExtraSelection& mark : page().extraSelections()) {
        marked.insert(mark.cursor.selectedText().toLower().toStdString());
    }
    EXPECT_EQ(marked, (std::set<std::string>{"sound", "pitch"}));

    const auto first = [&](const char* typed) {
        words.setText(typed);
        return hits.count() == 0 ? "" : hits.item(0)->text().section('\n', 0, 0).toStdString();
    };
    EXPECT_EQ(first("silent"), "Opening files") << "whole words stand ahead of beginnings";
    EXPECT_EQ(first("\"less than 5 MB\""), "Saving a movie") << "words between quotes stand together";
    EXPECT_EQ(first("\"5 MB less\""), "");
    words.setText("xyzzy");
    EXPECT_EQ(part<QLabel>("helpCount").text(), "No page has these words.");
    helpKey(words, Qt::Key_Escape); // ends the search, not the window
    EXPECT_TRUE(part<QTreeWidget>("helpContents").isVisible());
    EXPECT_TRUE(page().extraSelections().isEmpty());
    EXPECT_TRUE(help()->isVisible());
}

TEST_F(HelpScreen, TheTutorialShowsAtTheStartUntilItIsSwitchedOff)
{
    mdiTarnwick::ShowTutorialAtStart();
    settle();
    ASSERT_NE(help(), nullptr);
    EXPECT_EQ(title(), "Tutorial: a small film");
    auto& hide = part<QCheckBox>("chkDoNotShowTutorial");
    EXPECT_TRUE(hide.isVisible());
    hide.click();
    help()->close();
    mdiTarnwick::ShowTutorialAtStart();
    EXPECT_FALSE(help()->isVisible());
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    key(Qt::Key_F1, Qt::ControlModifier);
    EXPECT_TRUE(help()->isVisible());
    EXPECT_TRUE(hide.isChecked());
    bool isLeft = false;
    answers.work([&] { // beside it
        auto& options = *QApplication::activeModalWidget();
        auto& same = *options.findChild<QCheckBox*>("chkDoNotShowTutorial");
        EXPECT_TRUE(same.isChecked());
        hide.click();
        EXPECT_TRUE(until([&] { return !same.isChecked(); }));
        auto& apply = *options.findChild<QPushButton*>("cmdApply");
        EXPECT_FALSE(apply.isEnabled());
        same.click();
        EXPECT_TRUE(until([&] { return apply.isEnabled(); }));
        apply.click();
        EXPECT_TRUE(until([&] { return hide.isChecked(); }));
        same.click();
        options.findChild<QPushButton*>("cmdOk")->click();
        isLeft = true;
    });
    window->findChild<QAction*>("mnuToolsOptions")->trigger();
    EXPECT_TRUE(isLeft);
    EXPECT_TRUE(until([&] { return !hide.isChecked(); }));
    EXPECT_FALSE(mdiTarnwick::IsTutorialHidden());
    helpKey(page(), Qt::Key_F1);
    EXPECT_FALSE(hide.isVisible()); // it is about that page alone
}

TEST_F(HelpScreen, TheSearchFieldIsReadInADarkPalette)
{
    key(Qt::Key_F1);
    QPalette dark; // as a desktop tells it that knows no colour for words in an empty field
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        dark.setColor(role, QColor(0x20, 0x22, 0x26));
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, QColor(0xF0, 0xF0, 0xF0));
    }
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    help()->setPalette(dark);
    settle();
    page().setFocus(); // no caret in the field
    settle();
    const QImage field = part<QLineEdit>("helpSearch").grab().toImage();
    int brightest = 0;
    for (int y = 6; y < field.height() - 6; ++y) {
        for (int x = 6; x < field.width() / 2; ++x) {
            brightest = std::max(brightest, qGray(field.pixel(x, y)));
        }
    }
    EXPECT_GT(brightest, 120);
}

TEST_F(HelpScreen, TheTutorialStandsBesideWhatItExplainsAndStaysInFront)
{
    key(Qt::Key_F1, Qt::ControlModifier);
    ASSERT_NE(help(), nullptr);
    for (const char* const panel : {"frmMediaList", "frmPreview", "frmTimeline"}) {
        const QRect place(find(panel).mapToGlobal(QPoint()), find(panel).size());
        EXPECT_FALSE(help()->frameGeometry().intersects(place)) << panel;
    }
    EXPECT_TRUE(help()->screen()->availableGeometry().contains(help()->frameGeometry()));
    EXPECT_FALSE(part<QLineEdit>("helpSearch").isVisible());
    EXPECT_EQ(page().horizontalScrollBar()->maximum(), 0) << "its pictures fit";
    EXPECT_TRUE(part<QCheckBox>("chkDoNotShowTutorial").isVisible());
    const QRect narrow = help()->geometry();
    const int line = page().viewport()->width();
    helpKey(page(), Qt::Key_F9); // contents, for which there is no room
    EXPECT_GE(page().viewport()->width(), line - 20) << "the page is squeezed";
    EXPECT_EQ(help()->geometry().right(), narrow.right());
    helpKey(page(), Qt::Key_F9);
    EXPECT_EQ(help()->geometry(), narrow);
    click(find("picScale"));
    EXPECT_TRUE(help()->isVisible());
    // What keeps it above the window that is worked in.
    EXPECT_EQ(help()->windowHandle()->transientParent(), window->windowHandle());
    EXPECT_EQ(help()->windowType(), Qt::Dialog);

    const QRect place = help()->geometry();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    answers.work([&] {
        EXPECT_TRUE(until([&] { return help()->parentWidget() == front(); }))
            << "a dialogue keeps it from being read on";
        EXPECT_TRUE(help()->isVisible());
        EXPECT_EQ(help()->geometry(), place);
        QTest::keyClick(front(), Qt::Key_F1);
        EXPECT_EQ(title(), "Options");
        EXPECT_EQ(help()->geometry(), place);
        front()->close();
    });
    choose("&Tools", "Optio&ns...");
    ASSERT_NE(help(), nullptr) << "it went with the dialogue";
    EXPECT_TRUE(help()->isVisible());
    EXPECT_EQ(help()->parentWidget(), window.get());

    mdiTarnwick::showHelp("1_Welcome.htm");
    settle();
    EXPECT_TRUE(part<QLineEdit>("helpSearch").isVisible());
    EXPECT_EQ(help()->windowType(), Qt::Window);
}

TEST_F(HelpScreen, SpeaksTheLanguageOfTheScreens)
{
    ASSERT_EQ(language::use({"de"}), "de");
    key(Qt::Key_F1);
    EXPECT_EQ(title(), "Willkommen");
    EXPECT_EQ(inContents(), "Willkommen");
    EXPECT_EQ(help()->windowTitle(), "Willkommen - Hilfe");
    part<QLineEdit>("helpSearch").setText("\"fertigen Film\"");
    auto& hits = part<QListWidget>("helpHits");
    EXPECT_TRUE(hits.count() > 0 && hits.item(0)->text().startsWith("Willkommen\n"));
    // What there is no translation of is shown as it is.
    EXPECT_FALSE(help::isInLanguage("pictures/window.png"));
    EXPECT_FALSE(help::fileOf(help::addressOf("pictures/window.png")).isEmpty());
    mdiTarnwick::showHelp("9_Nowhere.htm");
    settle();
    EXPECT_TRUE(page().toPlainText().contains("keine Seite „9_Nowhere.htm“")) << page().toPlainText().toStdString();
    EXPECT_TRUE(page().toPlainText().contains("Willkommen"));
}

// --- The pages -----------------------------------------------------------------------------------------------------

std::set<std::string> filesBelow(const QString& folder)
{
    std::set<std::string> names;
    for (QDirIterator file(folder, QDir::Files, QDirIterator::Subdirectories); file.hasNext();) {
        names.insert(file.next().mid(folder.size() + 1).toStdString());
    }
    names.erase("help.qrc");
    return names;
}

QString textOf(const QUrl& address) { return QString::fromUtf8(help::fileOf(address)); }

void inEachLanguage(const std::function<void()>& run)
{
    for (const auto& [code, name] : language::offered()) {
        SCOPED_TRACE(code.toStdString());
        language::use({code});
        run();
    }
    language::use({"en"});
}

void expectLinks()
{
    static const QRegularExpression kLink("(?:href|src)=\"([^\"]*)\"");
    int links = 0;
    for (const help::ContentsLine& line : help::contents()) {
        const QUrl address = help::addressOf(line.page);
        const std::string name = line.page.toStdString();
        for (auto match = kLink.globalMatch(textOf(address)); match.hasNext(); ++links) {
            const QUrl target = address.resolved(QUrl(match.next().captured(1)));
            if (target.scheme() == "quillmont") {
                EXPECT_TRUE(target.path() == "clips" || target.path() == "film") << target.path().toStdString();
                continue;
            }
            const QString there = textOf(target);
            EXPECT_FALSE(there.isEmpty()) << name << ": " << target.toString().toStdString();
            EXPECT_TRUE(!target.hasFragment() || there.contains("id=\"" + target.fragment() + "\""))
                << name << ": " << target.toString().toStdString();
        }
    }
    EXPECT_GT(links, 100);
}

TEST_F(HelpScreen, EveryPageIsPackedAndListedAndEveryLinkLeadsSomewhere)
{
    key(Qt::Key_F1); // brings the pages in
    const std::set<std::string> packed = filesBelow(":/help");
    EXPECT_EQ(packed, filesBelow(QUILLMONT_HELP));
    std::set<std::string> listed;
    for (const help::ContentsLine& line : help::contents()) {
        listed.insert(line.page.toStdString());
    }
    for (const std::string& name : packed) {
        const bool isPage = name.ends_with(".htm") || name.ends_with(".html");
        const bool isOfLanguage = name.find('/') == 2; // stands in for another one
        EXPECT_TRUE(!isPage || isOfLanguage || listed.contains(name)) << name;
    }
    inEachLanguage(expectLinks);
}

TEST_F(HelpScreen, EveryPageIsShownOnce)
{
    key(Qt::Key_F1);
    inEachLanguage([] {
        for (const help::ContentsLine& line : help::contents()) {
            if (!line.page.isEmpty()) {
                mdiTarnwick::showHelp("1_Welcome.htm");
                mdiTarnwick::showHelp(line.page.toStdString());
                settle();
                QTextDocument whole;
                whole.setHtml(textOf(help::addressOf(line.page)));
                EXPECT_EQ(page().toPlainText().size(), whole.toPlainText().size()) << line.page.toStdString();
            }
        }
    });
}

void expectTopic(std::string_view what, const QString& topic)
{
    const QUrl address = help::addressOf(topic);
    const QString there = textOf(address);
    EXPECT_TRUE(!there.isEmpty() && (!address.hasFragment() || there.contains("id=\"" + address.fragment() + "\"")))
        << what << ": " << topic.toStdString();
}

QString text(std::string_view words) { return QString::fromUtf8(words.data(), qsizetype(words.size())); }

TEST_F(HelpScreen, EveryTopicThatIsAskedForIsThere)
{
    key(Qt::Key_F1);
    for (const auto menu : {shell::menuBar(), shell::mediaListContext(), shell::editContext()}) {
        for (const shell::MenuRow& row : menu) {
            const bool isCommand = row.kind != shell::MenuKind::kTop && row.kind != shell::MenuKind::kRule;
            const shell::CommandHelp* const help = isCommand ? shell::helpOf(row) : nullptr;
            EXPECT_EQ(help != nullptr, isCommand) << row.name;
            expectTopic(row.name, help != nullptr ? text(help->topic) : "1_Welcome.htm");
        }
    }
    for (const shell::FormTopic& form : shell::formTopics()) {
        expectTopic(form.form, text(form.topic));
    }
    inEachLanguage([] {
        for (const help::IndexLine& line : help::indexWords()) {
            expectTopic(line.word.toStdString(), line.topic);
        }
    });
    const auto& index = part<QListWidget>("helpIndex");
    EXPECT_GT(index.count(), 130);
}

TEST_F(HelpScreen, TheIndexIsUsedByKeys)
{
    key(Qt::Key_F1);
    ASSERT_TRUE(QTest::qWaitForWindowActive(help()));
    helpKey(page(), Qt::Key_I, Qt::AltModifier);
    helpKey(part<QLineEdit>("helpSearch"), Qt::Key_Down);
    auto& index = part<QListWidget>("helpIndex");
    EXPECT_EQ(help()->focusWidget(), &index);
    QTest::keyClicks(&index, "slow");
    helpKey(index, Qt::Key_Return);
    EXPECT_EQ(title(), "Resizing");
}

/// F1 leads to the page of the dialogue in front, by its own button where it has one.
TEST_F(HelpScreen, F1InADialogueOpensItsPage)
{
    opened({"mpeg4.avi"});
    key(Qt::Key_F2);
    key(Qt::Key_F4);
    ASSERT_TRUE(until([&] { return barEnd("picOverlay0") > 0; }));
    click(find("picOverlay0"), {12, 12});
    for (const auto& [command, wanted] : {std::pair{"mnuToolsOptions", "Options"},
                                          {"mnuEditStretchMode", "Stretch mode"},
                                          {"mnuEditSetOverlayTransparency", "Overlays"},
                                          {"mnuToolsTakeSnap", "Taking a still"},
                                          {"mnuToolsAddText", "Adding text"},
                                          {"mnuFileExportTimeline", "Saving a movie"},
                                          {"mnuToolsCapture", "Capturing"}}) {
        std::string shown;
        answers.work([&] {
            QDialog* const dialogue = front();
            settle();
            QTest::keyClick(dialogue, Qt::Key_F1);
            settle();
            shown = help() == nullptr ? "" : title();
            if (help() != nullptr) {
                help()->close();
            }
            dialogue->close();
        });
        qputenv("QUILLMONT_TEST_DEVICES", "camera,microphone");
        find<QAction>(command).trigger();
        settle();
        EXPECT_EQ(shown, wanted) << command;
    }
    qunsetenv("QUILLMONT_TEST_DEVICES");
}

TEST_F(HelpScreen, ThePageOfKeysNamesThemAllAsTheMenusDo)
{
    key(Qt::Key_F1);
    inEachLanguage([] {
        const QString keys = textOf(help::addressOf("2_3_Keys.htm"));
        for (const shell::MenuRow& row : shell::menuBar()) {
            const QString shown = QKeySequence(text(row.shortcut)).toString(QKeySequence::NativeText);
            const bool isThere = keys.contains("<kbd>" + shown + "</kbd>")
                                 && keys.contains("<td>" + plainCaption(translated(row.caption)).toHtmlEscaped());
            EXPECT_TRUE(row.shortcut.empty() || !row.hasCommand() || isThere) << row.name;
        }
        for (const shell::KeyRow& row : shell::panelKeys()) {
            EXPECT_TRUE(keys.contains("<td>" + translated(row.what).toHtmlEscaped() + "</td>")) << row.what;
        }
    });
}

} // namespace
} // namespace screens_test
