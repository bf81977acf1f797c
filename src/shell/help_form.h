#pragma once

// The help window: contents and search at the left, the page at the right; and the hooks of the program that lead to
// it.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QStackedWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

class HelpBrowser;

/// A window of its own, which does not keep the program running.
class HelpForm final : public QWidget {
public:
    HelpForm();

    /// As "page.htm" or "page.htm#part"; the window comes to the front.
    void showTopic(const QString& topic);
    /// Narrow, to be read beside the work: contents and search are shown on demand only.
    void setNarrow(bool isNarrow);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolBar* makeToolBar();
    QAction* addTool(QToolBar& bar, const char* name, const char* picture, const QString& text,
                     const QList<QKeySequence>& keys, std::function<void()> run);
    QWidget* makeSide();
    void makeContents();
    void makeKeys();
    void refreshIcons();
    void open(const QString& page);
    void search();
    void openHit();
    void pageShown();
    void escape();

    HelpBrowser* page_ = nullptr;
    QWidget* side_ = nullptr; // contents and search
    QAction* showsSide_ = nullptr;
    QLineEdit* words_ = nullptr;
    QStackedWidget* lists_ = nullptr;
    QTreeWidget* contents_ = nullptr;
    QListWidget* hits_ = nullptr;
    QLabel* count_ = nullptr;
    QCheckBox* hideTutorial_ = nullptr;
    QAction* back_ = nullptr;
    QAction* forward_ = nullptr;
    std::vector<std::pair<QAction*, std::string>> pictures_;
};

/// Sets the hooks of the main window that show help and start programs, and takes them back when it goes. The help
/// window is made when it is first asked for. For the tutorial it is narrow, stands at the edge of the screen, and
/// stays in front of the main window, in which the person does what it says.
class HelpDesk final : public QObject {
public:
    explicit HelpDesk(QWidget* mainWindow);
    ~HelpDesk() override;

private:
    void show(const QString& topic);
    void placeForm();
    void placeTutorial();

    QWidget* mainWindow_;
    bool isTutorial_ = false; // the form stands beside the work
    QPointer<HelpForm> form_;
};
