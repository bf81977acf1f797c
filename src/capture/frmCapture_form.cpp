#include "capture/frmCapture_form.h"

#include "capture/frmCapture.h"
#include "capture/menu_entries_form.h"
#include "core/forms/frmCapture.h"
#include "windowing/bound_dialogue.h"
#include "windowing/control_panel_window.h"
#include "windowing/cut_label.h"
#include "windowing/frame_view.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/show_pass.h"
#include "windowing/turn_end.h"

#include <QAction>
#include <QActionGroup>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace frmCapture {

namespace {

forms::FrmCapture& form() { return forms::frmCapture; }

/// The live picture, which tells its size.
class Workspace final : public FrameView {
public:
    using FrameView::FrameView;

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        FrameView::resizeEvent(event);
        Form_Resize(width(), height());
    }
};

class Window final : public BoundDialogue {
public:
    Window();
    ~Window() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makeMenus(QMenuBar* bar);
    void add(QMenu* menu, const Entries& entries);
    QAction* makeEntry(const Entry& entry, QActionGroup* choices);
    QToolBar* makeToolBar();
    QAction* toolButton(QToolBar* bar, const char* key, const QString& tip);
    void makeSettingsButton(QToolBar* bar);
    void makeHint();
    QString hint() const;
    QStatusBar* makeStatus();
    QLabel* statusPicture(const char* key, const QString& on, const QString& off);
    void fit();

    ControlPanelWindow panels_{this};
    Workspace* view_;
    std::vector<std::pair<QAction*, const char*>> pictures_; // the toolbar's, by their keys
};

Window::Window()
    : BoundDialogue("frmCapture", QObject::tr("Capture"), mnuFileExit_Click),
      view_(new Workspace("picMainWorkspace", this))
{
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint
                   | Qt::WindowCloseButtonHint);
    setWindowModality(Qt::WindowModal);
    form().picMainWorkspaceWnd = view_->number();
    form().hWnd = panels_.number();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const bar = new QMenuBar(this);
    makeMenus(bar);
    column->setMenuBar(bar);
    column->addWidget(makeToolBar());
    view_->setAccessibleName(tr("Live picture"));
    view_->setMinimumSize(320, 180);
    column->addWidget(view_, 1);
    makeHint();
    column->addWidget(makeStatus());
    driveTimer(this, form().tm);
    fitWindow = [this] { fit(); };
    start();
    TurnEnd::endTurnsIn(*this); // what goes to the media list is journalled while more is captured
    resize(QSize(660, 600).boundedTo(screen()->availableSize() * 0.92));
    QTimer::singleShot(0, this, [] { Form_Load(); });
}

Window::~Window()
{
    fitWindow = nullptr;
    form().picMainWorkspaceWnd = form().hWnd = 0;
}

/// A capture does not end by a key that was meant for a menu.
void Window::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        BoundDialogue::keyPressEvent(event);
    }
}

void Window::changeEvent(QEvent* event)
{
    BoundDialogue::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        form().IsMaximised = isMaximized();
    } else if (event->type() == QEvent::PaletteChange) {
        for (const auto& [action, key] : pictures_) {
            action->setIcon(programIcon(key, palette()));
        }
        show::mark();
    }
}

/// A maximised window stays so, unless its size was asked for.
void Window::fit()
{
    if (isMaximized()) {
        if (form().IsMaximised) {
            return;
        }
        showNormal();
    }
    layout()->activate();
    const QSize around = size() - view_->size();
    const QSize frame = frameSize() - size();
    const QRect room = screen()->availableGeometry();
    const QSize most = room.size() - frame - around;
    QSize picture(form().CaptureWidth, form().CaptureHeight);
    while (picture.width() > most.width() || picture.height() > most.height()) {
        picture /= 2; // such as the screen itself, of which the window would hide all that is to be captured
    }
    resize(picture + around);
    const QSize outer = size() + frame;
    const QPoint last(room.right() + 1 - outer.width(), room.bottom() + 1 - outer.height());
    const QPoint at(std::clamp(x(), room.left(), std::max(room.left(), last.x())),
                    std::clamp(y(), room.top(), std::max(room.top(), last.y())));
    if (at != pos()) { // what has grown over the edge of the screen comes back
        move(at);
    }
}

// --- Menus and toolbar ---------------------------------------------------------------------------------------------

void Window::makeMenus(QMenuBar* bar)
{
    add(bar->addMenu(tr("&File")), kFile);
    QMenu* const capture = bar->addMenu(tr("&Capture"));
    add(capture, kCapture);
    add(capture->addMenu(tr("St&reams")), kStreams);
    add(capture->addMenu(tr("S&ynchronize")), kSynchronize);
    add(capture, kCaptureRest);
    add(bar->addMenu(tr("&Tools")), kTools);
    add(bar->addMenu(tr("&Help")), kHelp);
}

void Window::add(QMenu* menu, const Entries& entries)
{
    auto* const choices = new QActionGroup(this);
    for (const Entry& entry : entries) {
        if (entry.state != nullptr) {
            menu->addAction(makeEntry(entry, choices));
            continue;
        }
        QAction* const rule = menu->addSeparator();
        if (entry.kind == Kind::kSnapRule) {
            also([rule] { rule->setVisible(form().TakeSnapSeparatorVisible); });
        }
    }
}

QAction* Window::makeEntry(const Entry& entry, QActionGroup* choices)
{
    auto* const action = new QAction(tr(entry.caption), this);
    action->setObjectName(entry.name);
    action->setShortcut(QKeySequence(entry.keys));
    action->setCheckable(entry.kind == Kind::kTick || entry.kind == Kind::kChoice);
    if (entry.kind == Kind::kChoice) {
        choices->addAction(action);
    }
    connect(action, &QAction::triggered, this, [action, &entry] {
        if (entry.kind == Kind::kTick) { // the toolkit has turned it over by itself: the program's state decides
            action->setChecked(entry.state->Checked);
        }
        entry.run();
    });
    also([action, state = entry.state] {
        action->setEnabled(state->Enabled);
        action->setVisible(state->Visible);
        if (action->isCheckable()) {
            action->setChecked(state->Checked);
        }
    });
    addAction(action); // its keys work wherever the focus is
    return action;
}

QToolBar* Window::makeToolBar()
{
    auto* const bar = new QToolBar(this);
    bar->setObjectName("tbr");
    bar->setIconSize({20, 20});
    toolButton(bar, "SET_CAPTURE_FILE", tr("Set capture file"));
    bar->addSeparator();
    toolButton(bar, "START_CAPTURE", tr("Start capture"));
    toolButton(bar, "STOP_CAPTURE", tr("Stop capture"));
    QAction* const rule = bar->addSeparator();
    rule->setObjectName("TAKE_SNAP_SEPARATOR");
    also([rule] { rule->setVisible(form().TakeSnapSeparatorVisible); });
    toolButton(bar, "TAKE_SNAP", tr("Take snap"));
    bar->addSeparator();
    toolButton(bar, "OPTIONS", tr("Options"));
    makeSettingsButton(bar);
    bar->addSeparator();
    toolButton(bar, "HELP", tr("Help"));
    return bar;
}

QAction* Window::toolButton(QToolBar* bar, const char* key, const QString& tip)
{
    auto* const action = new QAction(programIcon(key, palette()), tip, this);
    action->setObjectName("tbr_" + QString(key));
    action->setToolTip(tip);
    connect(action, &QAction::triggered, this, [key] { tbr_ButtonClick(key); });
    also([action, &state = form().tbr.at(key)] {
        action->setEnabled(state.Enabled);
        action->setVisible(state.Visible);
    });
    bar->addAction(action);
    if (QWidget* const button = bar->widgetForAction(action)) {
        button->setAccessibleName(tip);
    }
    pictures_.emplace_back(action, key);
    return action;
}

/// Its list holds the entries of the menus, under their own names.
void Window::makeSettingsButton(QToolBar* bar)
{
    QAction* const action = toolButton(bar, "CAPTURE_SETTINGS", tr("Capture settings"));
    auto* const list = new QMenu(this);
    list->setObjectName("CAPTURE_SETTINGS");
    for (const char* const name :
         {"mnuCaptureCameraSettings", "mnuToolsVideoSettings", "mnuToolsAudioFromats", "mnuToolsAudioSettings"}) {
        list->addAction(findChild<QAction*>(name));
    }
    auto* const button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
    button->setPopupMode(QToolButton::MenuButtonPopup);
    button->setMenu(list);
}

// --- The workspace and the status bar ------------------------------------------------------------------------------

QString Window::hint() const
{
    if (!form().lblHint.get().empty()) {
        return translated(form().lblHint.get());
    }
    if (!form().mnuCaptureStreamVideo.Checked) {
        return form().VideoDeviceOk ? tr("The picture is switched off.")
                                    : tr("The camera cannot be used. Close other programs that use it, and tick "
                                         "Capture > Streams > Video.");
    }
    return form().mnuCapturePreview.Checked ? QString() : tr("The preview is switched off.");
}

/// Where no picture is, it says why; the last picture would look like a live one.
void Window::makeHint()
{
    QPalette onDark = palette();
    onDark.setColor(QPalette::WindowText, QColor(0xE6, 0xE8, 0xEA));
    auto* const label = new QLabel(view_);
    label->setObjectName("lblHint");
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->setPalette(onDark);
    QPushButton* const screen =
        button("cmdCaptureScreen", tr("Capture the &Screen"), cmdCaptureScreen_Click, &form().cmdCaptureScreen);
    screen->setDefault(true);
    auto* const column = new QVBoxLayout(view_);
    column->setContentsMargins(24, 16, 24, 16);
    column->setSpacing(14);
    column->addStretch();
    column->addWidget(label);
    column->addWidget(screen, 0, Qt::AlignHCenter);
    column->addStretch();
    also([this, label, screen, isPicture = true]() mutable {
        const QString text = hint();
        label->setText(text);
        label->setVisible(!text.isEmpty());
        screen->setVisible(form().cmdCaptureScreen.Visible);
        if (std::exchange(isPicture, text.isEmpty()) && !text.isEmpty()) {
            view_->clearPicture();
        }
    });
}

QStatusBar* Window::makeStatus()
{
    auto* const bar = new QStatusBar(this);
    bar->setObjectName("sbr");
    bar->setSizeGripEnabled(false);
    auto* const message = new CutLabel(bar);
    message->setObjectName("sbr_1");
    message->setTextFormat(Qt::PlainText);
    bar->addWidget(message, 1);
    bar->addPermanentWidget(statusPicture("CAPTURE_STATUS", tr("A capture runs"), tr("No capture runs")));
    bar->addPermanentWidget(statusPicture("SNAP_STATUS", tr("A snap is being taken"), tr("No snap is being taken")));
    also([message] { message->setWhole(translated(form().sbr.Panel(1).get())); });
    return bar;
}

QLabel* Window::statusPicture(const char* key, const QString& on, const QString& off)
{
    auto* const picture = new QLabel(this);
    picture->setObjectName(key);
    picture->setMargin(3);
    also([this, picture, key, on, off] {
        constexpr int kSize = 16;
        const std::string& shown = form().sbr.Panel(key);
        const bool isOn = shown.ends_with("_ON");
        const QColor ink = isOn ? QColor(0xE0, 0x3C, 0x3C) : palette().color(QPalette::WindowText);
        picture->setPixmap(programPixmap(shown, ink, kSize, devicePixelRatioF()));
        picture->setAccessibleName(isOn ? on : off);
        picture->setToolTip(isOn ? on : off);
    });
    return picture;
}

} // namespace

void connectScreens() { connectDialogue<Window>(showDialogue, closeDialogue); }

} // namespace frmCapture
