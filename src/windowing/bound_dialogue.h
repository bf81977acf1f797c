#pragma once

// A dialogue whose widgets show the program's state and hand on what a person does: each is bound to its control once,
// and the show pass does the rest.

#include "core/controls.h"
#include "core/dimension_boxes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <functional>
#include <initializer_list>
#include <vector>

class QBoxLayout;

class BoundDialogue : public QDialog {
public:
    /// name: the form's. leave: what Escape and the window's own button do.
    BoundDialogue(const char* name, const QString& title, void (*leave)());
    ~BoundDialogue() override;

    void reject() override { leave_(); }

protected:
    // Each makes a widget of that name, bound to its control, whose owner is this dialogue.

    QLineEdit* textBox(const char* name, const QString& accessibleName, TextBox& state);
    QComboBox* list(const char* name, const QString& accessibleName, ComboBox& state);
    QCheckBox* checkBox(const char* name, const QString& text, CheckBox& state);
    QSlider* slider(const char* name, const QString& accessibleName, Slider& state);
    /// A label that says what the state says.
    QLabel* said(const char* name, const Shown<std::string>& state);
    /// state: none for a button that is always enabled.
    QPushButton* button(const char* name, const QString& text, void (*clicked)(), const Button* state = nullptr);
    /// A size: the list with its label, and below it the boxes of the person's own.
    QBoxLayout* dimension(const char* listName, const QString& label, const QString& ownLabel, DimensionBoxes& state);
    /// A label ahead of the widget, which its key leads to.
    static QBoxLayout* labelled(const QString& label, QWidget* widget, int stretch = 1);

    /// The last row, from the left: those apart, and behind a gap the others, of which the first answers Enter.
    static QBoxLayout* lastRow(std::initializer_list<QPushButton*> buttons, QPushButton* apart = nullptr);

    /// Runs at each show pass, behind the bound widgets.
    void also(std::function<void()> show) { shows_.push_back(std::move(show)); }
    /// Shows all of it now; the end of every constructor.
    void start();
    /// State is being copied: what widgets tell is no deed of the person's.
    bool isShowing() const { return isShowing_; }

private:
    void showState();

    void (*leave_)();
    std::vector<std::function<void()>> shows_;
    std::vector<TextBox*> boxes_;
    bool isShowing_ = false;
};

/// Modal, and the pointer does not say that the program is at work.
void runDialogue(QDialog& dialogue);

/// Connects a dialogue to the program's hooks: `show` makes one and comes back when `close` has ended it.
template <class Dialogue>
void connectDialogue(std::function<void()>& show, std::function<void()>& close)
{
    static QDialog* open = nullptr;
    show = [] {
        Dialogue dialogue;
        QDialog* const before = std::exchange(open, &dialogue);
        runDialogue(dialogue);
        open = before;
    };
    close = [] {
        if (open != nullptr) {
            open->done(QDialog::Accepted);
        }
    };
}
