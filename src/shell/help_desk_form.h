#pragma once

// What leads to the help: the hooks of the program, F1 in dialogues, and the answers to "What's This?".

#include "shell/help_form.h"

#include <QDialog>
#include <QMenu>
#include <QPointer>

/// Sets the hooks of the main window that show help and start programs, and takes them back when it goes. The help
/// window is made when it is first asked for. For the tutorial it is narrow, stands at the edge of the screen, and
/// stays in front of the main window, in which the person does what it says, and of the dialogues that are opened
/// there, which it can be read beside. F1 in a dialogue leads to its page.
class HelpDesk final : public QObject {
public:
    explicit HelpDesk(QWidget* mainWindow);
    ~HelpDesk() override;

    /// The next click asks what it is on. Every answer ends with a link to the page that tells more.
    void enterWhatsThis();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static bool helpWith(QDialog& dialogue);
    bool explainGrey(const QMenu& menu, QPoint at);
    void followDialogue();
    void standBefore(QWidget& owner);
    void linkAnswers();
    void show(const QString& topic);
    void placeForm();
    void placeTutorial();

    QWidget* mainWindow_;
    bool isTutorial_ = false; // the form stands beside the work
    QPointer<HelpForm> form_;
};
