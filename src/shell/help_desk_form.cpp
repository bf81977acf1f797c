#include "shell/help_desk_form.h"

#include "core/forms/mdiTarnwick.h"
#include "shell/command_help.h"
#include "shell/keys_page_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/tutorial.h"
#include "windowing/help_pages.h"
#include "windowing/text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWhatsThis>
#include <algorithm>

namespace {

bool isHelpButton(const QPushButton* button) { return button->text().remove('&') == QObject::tr("&Help").remove('&'); }

/// Whether a window can become one of the other's: not of its own, nor where it is already.
bool canFollow(const QWidget& window, const QWidget* owner)
{
    if (owner == nullptr || window.parentWidget() == owner) {
        return false;
    }
    const QWidget* above = owner;
    while (above != nullptr && above != &window) {
        above = above->parentWidget();
    }
    return above == nullptr;
}

/// Of the part itself, or of what it stands in.
QString topicOf(const QWidget* part)
{
    for (; part != nullptr; part = part->parentWidget()) {
        if (const std::string_view topic = shell::topicOfForm(toProgram(part->objectName())); !topic.empty()) {
            return fromProgram(topic);
        }
    }
    return "2_1_The_Window.htm";
}

} // namespace

HelpDesk::HelpDesk(QWidget* mainWindow) : QObject(mainWindow), mainWindow_(mainWindow)
{
    mdiTarnwick::showHelp = [this](std::string_view topic) { show(fromProgram(topic)); };
    mdiTarnwick::enterWhatsThis = [this] { enterWhatsThis(); };
    help::rowsOf = keys_page::rowsOf;
    qApp->installEventFilter(this);
    mdiTarnwick::startProgram = [](std::string_view program, std::string_view word) {
        return QProcess::startDetached(fromProgram(program), {fromProgram(word)});
    };
}

HelpDesk::~HelpDesk()
{
    qApp->removeEventFilter(this);
    mdiTarnwick::showHelp = nullptr;
    mdiTarnwick::enterWhatsThis = nullptr;
    help::rowsOf = nullptr;
    mdiTarnwick::startProgram = nullptr;
    delete form_;
}

void HelpDesk::show(const QString& topic)
{
    const bool isTutorial = topic == QString::fromUtf8(mdiTarnwick::kTutorialPage);
    const bool isNew = form_ == nullptr;
    if (!isNew && isTutorial_ && form_->isVisible() && form_->parentWidget() != mainWindow_) {
        form_->showTopic(topic); // asked for in the dialogue that it stands before: Back leads on with the tutorial
        return;
    }
    if (isNew) {
        form_ = new HelpForm;
    }
    if (isNew || isTutorial != isTutorial_) {
        isTutorial_ = isTutorial;
        form_->setNarrow(isTutorial);
        // A dialogue's window stays in front of its owner, a plain one goes behind at the first click into the other.
        form_->setParent(isTutorial ? mainWindow_ : nullptr, isTutorial ? Qt::Dialog : Qt::Window);
        isTutorial ? placeTutorial() : placeForm();
    }
    // A dialogue lets nothing be used but itself and its own windows; its help goes with it.
    QWidget* const dialogue = QApplication::activeModalWidget();
    if (canFollow(*form_, dialogue)) {
        form_->setParent(dialogue, Qt::Window);
    }
    form_->showTopic(topic);
}

/// At the right edge of the screen: as wide as the room beside the main window and the tools panel's, which is needed
/// least, so that it covers neither the lists nor the preview nor the timeline.
void HelpDesk::placeTutorial()
{
    constexpr int kLeast = 250;
    constexpr int kMost = 420;
    constexpr int kFrame = 4; // about what the desktop draws at each side
    constexpr int kTitle = 36;
    const QRect room = mainWindow_->screen()->availableGeometry();
    const int tools = mainWindow_->geometry().left() + forms::mdiTarnwick.ToolsPlace.get().left;
    const int width = std::clamp(room.right() - tools - 2 * kFrame, kLeast, kMost);
    const int top = std::max(room.top(), mainWindow_->geometry().top() - kTitle) + kTitle;
    form_->setGeometry(room.right() + 1 - kFrame - width, top, width,
                       std::min(mainWindow_->height(), room.bottom() - top - kFrame));
}

/// Over the middle of the main window, whole on its screen.
void HelpDesk::placeForm()
{
    const QRect room = mainWindow_->screen()->availableGeometry();
    form_->resize(QSize(900, 640).boundedTo(mainWindow_->screen()->availableSize() * 0.95));
    QRect place = form_->rect();
    place.moveCenter(mainWindow_->geometry().center());
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    form_->move(std::max(place.left(), room.left()), std::max(place.top(), room.top()));
}

void HelpDesk::enterWhatsThis()
{
    linkAnswers();
    QWhatsThis::enterWhatsThisMode();
}

void HelpDesk::linkAnswers()
{
    QList<QWidget*> parts = mainWindow_->findChildren<QWidget*>();
    parts.push_back(mainWindow_);
    for (QWidget* const part : parts) {
        if (const QString text = part->whatsThis(); !text.isEmpty() && !text.contains("<a ")) {
            part->setWhatsThis(help::answer(text, topicOf(part)));
        }
    }
}

/// By its button, which knows the page of what is shown now, else by its name. False where nothing is known of it.
bool HelpDesk::helpWith(QDialog& dialogue)
{
    const QList<QPushButton*> buttons = dialogue.findChildren<QPushButton*>();
    if (const auto button = std::ranges::find_if(buttons, isHelpButton); button != buttons.end()) {
        (*button)->click();
        return true;
    }
    const std::string_view topic = qobject_cast<QMessageBox*>(&dialogue) != nullptr
                                       ? "2_4_Messages.htm"
                                       : shell::topicOfForm(toProgram(dialogue.objectName()));
    if (!topic.empty()) {
        mdiTarnwick::showHelp(topic);
    }
    return !topic.empty();
}

/// The tutorial is read on while a dialogue is open that it speaks of: a window of the dialogue's own is not kept from
/// being used. Boxes and choices of files are soon answered, and leave it where it is.
void HelpDesk::followDialogue()
{
    QWidget* const dialogue = QApplication::activeModalWidget();
    if (form_ != nullptr && isTutorial_ && canFollow(*form_, dialogue)
        && !shell::topicOfForm(toProgram(dialogue->objectName())).empty()) {
        standBefore(*dialogue);
    }
}

/// Where it is and as it is, but as a window of that one.
void HelpDesk::standBefore(QWidget& owner)
{
    const QRect place = form_->geometry();
    const bool isShown = form_->isVisible();
    form_->setAttribute(Qt::WA_ShowWithoutActivating);
    form_->setParent(&owner, Qt::Dialog);
    form_->setGeometry(place);
    form_->setVisible(isShown);
    form_->setAttribute(Qt::WA_ShowWithoutActivating, false);
    owner.window()->activateWindow(); // where it is, the keyboard is not
}

/// The toolkit passes over grey entries of menus when they are asked for. False where nothing is to be said.
bool HelpDesk::explainGrey(const QMenu& menu, QPoint at)
{
    const QAction* const action = menu.actionAt(at);
    if (!QWhatsThis::inWhatsThisMode() || action == nullptr || action->isEnabled() || action->whatsThis().isEmpty()) {
        return false;
    }
    const QPoint place = menu.mapToGlobal(at);
    while (QWidget* const popUp = QApplication::activePopupWidget()) {
        popUp->close();
    }
    QWhatsThis::showText(place, action->whatsThis(), mainWindow_); // which is told when the link is followed
    return true;
}

bool HelpDesk::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked && watched == form_ && isTutorial_) {
        QTimer::singleShot(0, this, [this] { followDialogue(); });
    }
    if (event->type() == QEvent::Hide && form_ != nullptr && isTutorial_ && watched == form_->parent()
        && watched != mainWindow_) {
        standBefore(*mainWindow_); // ahead of the dialogue's end, which would be its own
    }
    if (event->type() == QEvent::KeyPress && watched->isWidgetType()) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        auto* const dialogue = qobject_cast<QDialog*>(watched); // what none of its parts took comes to itself
        if (key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier && dialogue != nullptr) {
            return helpWith(*dialogue);
        }
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* const menu = qobject_cast<QMenu*>(watched);
        if (menu != nullptr && explainGrey(*menu, static_cast<QMouseEvent*>(event)->position().toPoint())) {
            return true;
        }
    }
    if (event->type() == QEvent::WhatsThisClicked) {
        mdiTarnwick::showHelp(toProgram(static_cast<QWhatsThisClickedEvent*>(event)->href()));
        return true;
    }
    return QObject::eventFilter(watched, event);
}
