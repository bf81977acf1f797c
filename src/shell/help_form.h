#pragma once

// The help window: contents, index and search at the left, the page at the right.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

class HelpBrowser;
class HelpIndex;
class QSplitter;

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
    QWidget* makeTabs();
    void makeContents();
    void makeKeys();
    void refreshIcons();
    void showSide(bool isShown);
    void open(const QString& page);
    void search();
    void openHit();
    void pageShown();
    void escape();

    QSplitter* halves_ = nullptr;
    HelpBrowser* page_ = nullptr;
    QWidget* side_ = nullptr; // contents and search
    QAction* showsSide_ = nullptr;
    int widenedPx_ = 0; // by so much the narrow window grew for them
    QLineEdit* words_ = nullptr;
    QStackedWidget* lists_ = nullptr;
    QTabWidget* tabs_ = nullptr; // contents and index
    QTreeWidget* contents_ = nullptr;
    HelpIndex* index_ = nullptr;
    QListWidget* hits_ = nullptr;
    QLabel* count_ = nullptr;
    QCheckBox* hideTutorial_ = nullptr;
    QAction* back_ = nullptr;
    QAction* forward_ = nullptr;
    std::vector<std::pair<QAction*, std::string>> pictures_;
};
