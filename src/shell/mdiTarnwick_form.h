#pragma once

// The main window: menus, panels, status bar. Files dropped on it are opened.

#include "windowing/panel_divider.h"
#include "windowing/panel_frame.h"

#include <QMainWindow>
#include <QMenu>
#include <map>
#include <memory>
#include <optional>

class MainMenus;
class MediaListForm;
class PreviewForm;
class QMimeData;
class StatusLine;
class TimelineForm;
class ToolsForm;

class MainWindow final : public QMainWindow {
public:
    MainWindow();
    ~MainWindow() override;

    /// The first time that the window stands whole on the screen.
    std::function<void()> firstShown;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenus();
    void bindHooks();
    void activate(std::int16_t context, void (*activated)());
    void hintOver(QWidget& widget, void (*hint)());
    void popUpByKey();
    void makePanels();
    void makeDividers();
    void tellSize();
    void showPanels();
    void showState();
    void takeDrop(const QMimeData& dropped);

    QWidget* ground_ = nullptr;
    TimelineForm* timeline_ = nullptr;
    MediaListForm* mediaList_ = nullptr;
    PreviewForm* preview_ = nullptr;
    ToolsForm* tools_ = nullptr;
    PanelFrame* timelinePanel_ = nullptr;
    PanelFrame* mediaListPanel_ = nullptr;
    PanelFrame* previewPanel_ = nullptr;
    PanelFrame* toolsPanel_ = nullptr;
    PanelDivider* listDivider_ = nullptr;
    PanelDivider* timelineDivider_ = nullptr;
    MainMenus* menus_ = nullptr;
    std::unique_ptr<StatusLine> statusLine_;
    std::map<QObject*, void (*)()> hints_;
    std::optional<QPoint> popUpPlace_; // while a key opens a menu; else menus open under the pointer
};
