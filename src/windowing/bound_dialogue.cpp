#include "windowing/bound_dialogue.h"

#include "windowing/language.h"
#include "windowing/qt_ports.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

BoundDialogue::BoundDialogue(const char* name, const QString& title, void (*leave)())
    : QDialog(dialogOwner()), leave_(leave)
{
    setObjectName(name);
    setWindowTitle(title);
}

BoundDialogue::~BoundDialogue()
{
    for (TextBox* const box : boxes_) {
        box->SetFocus = nullptr;
    }
}

void BoundDialogue::start()
{
    for (const QLabel* const label :
         findChildren<QLabel*>()) { // for those who cannot see which one stands beside which
        QWidget* const named = label->buddy();
        if (named != nullptr && named->accessibleName().isEmpty()) {
            named->setAccessibleName(label->text().remove('&').remove(':'));
        }
    }
    showState();
    showPass().add(this, [this] { showState(); });
}

void BoundDialogue::showState()
{
    isShowing_ = true;
    for (const auto& show : shows_) {
        show();
    }
    isShowing_ = false;
}

QLineEdit* BoundDialogue::textBox(const char* name, const QString& accessibleName, TextBox& state)
{
    auto* const edit = new QLineEdit(this);
    edit->setObjectName(name);
    edit->setAccessibleName(accessibleName);
    connect(edit, &QLineEdit::textChanged, this, [this, &state](const QString& text) {
        if (!isShowing_) {
            state.Text = toProgram(text);
        }
    });
    state.SetFocus = [edit] {
        edit->setFocus();
        edit->selectAll();
    };
    boxes_.push_back(&state);
    also([edit, &state] {
        const QString text = edit->isReadOnly() ? translated(state.Text.get()) : fromProgram(state.Text.get());
        if (edit->text() != text) { // else the caret stays where it is
            edit->setText(text);
            edit->setCursorPosition(edit->hasFocus() ? static_cast<int>(text.size()) : 0);
        }
        edit->setEnabled(state.Enabled);
    });
    return edit;
}

QComboBox* BoundDialogue::list(const char* name, const QString& accessibleName, ComboBox& state)
{
    auto* const box = new QComboBox(this);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setMaxVisibleItems(20);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents); // also one that is shown late: the window keeps its width
    connect(box, &QComboBox::currentIndexChanged, this, [this, &state](int place) {
        if (!isShowing_) {
            state.ListIndex = place;
        }
    });
    also([box, &state, shown = std::vector<std::string>()]() mutable {
        if (shown != state.List.get()) {
            shown = state.List.get();
            box->clear();
            for (const std::string& text : shown) {
                box->addItem(translated(text));
            }
        }
        box->setCurrentIndex(state.ListIndex);
        box->setEnabled(state.Enabled);
    });
    return box;
}

QCheckBox* BoundDialogue::checkBox(const char* name, const QString& text, CheckBox& state)
{
    auto* const box = new QCheckBox(text, this);
    box->setObjectName(name);
    connect(box, &QCheckBox::toggled, this, [this, &state](bool isOn) {
        if (!isShowing_) {
            state.Value = static_cast<std::int16_t>(isOn ? 1 : 0);
        }
    });
    also([box, &state] {
        box->setChecked(state.Value != 0);
        box->setEnabled(state.Enabled);
    });
    return box;
}

QSlider* BoundDialogue::slider(const char* name, const QString& accessibleName, Slider& state)
{
    auto* const slide = new QSlider(Qt::Horizontal, this);
    slide->setObjectName(name);
    slide->setAccessibleName(accessibleName);
    slide->setTickPosition(QSlider::TicksBelow);
    connect(slide, &QSlider::valueChanged, this, [this, &state](int value) {
        if (!isShowing_) {
            state.SetValue(value);
        }
    });
    also([slide, &state] {
        slide->setRange(state.Min(), state.Max());
        slide->setValue(state.Value());
        slide->setEnabled(state.Enabled);
    });
    return slide;
}

QLabel* BoundDialogue::said(const char* name, const Shown<std::string>& state)
{
    auto* const label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    also([label, &state] { label->setText(translated(state.get())); });
    return label;
}

QPushButton* BoundDialogue::button(const char* name, const QString& text, void (*clicked)(), const Button* state)
{
    auto* const made = new QPushButton(text, this);
    made->setObjectName(name);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, clicked);
    if (state != nullptr) {
        also([made, state] { made->setEnabled(state->Enabled); });
    }
    return made;
}

QBoxLayout* BoundDialogue::labelled(const QString& text, QWidget* widget, int stretch)
{
    auto* const row = new QHBoxLayout;
    auto* const label = new QLabel(text);
    label->setBuddy(widget);
    row->addWidget(label);
    row->addWidget(widget, stretch);
    return row;
}

QBoxLayout* BoundDialogue::lastRow(std::initializer_list<QPushButton*> buttons, QPushButton* apart)
{
    auto* const row = new QHBoxLayout;
    if (apart != nullptr) {
        row->addWidget(apart);
    }
    row->addStretch();
    for (QPushButton* const made : buttons) {
        row->addWidget(made);
    }
    (*buttons.begin())->setDefault(true);
    return row;
}

QBoxLayout* BoundDialogue::dimension(const char* listName, const QString& label, const QString& ownLabel,
                                     DimensionBoxes& state)
{
    auto* const column = new QVBoxLayout; // Tab goes as the widgets are made: the list first
    column->addLayout(labelled(label, list(listName, {}, state.cboDimension)));
    auto* const own = new QGroupBox(ownLabel, this);
    own->setObjectName("fmeCustomPreview");
    auto* const into = new QLabel("x", own);
    into->setObjectName("lblInto");
    QLineEdit* const width = textBox("txtWidth", tr("Width"), state.txtWidth);
    QLineEdit* const height = textBox("txtHeight", tr("Height"), state.txtHeight);
    for (QLineEdit* const box : {width, height}) {
        box->setFixedWidth(fontMetrics().horizontalAdvance("00000.00") + 16);
    }
    QCheckBox* const lock = checkBox("chkLockAspectRatio", tr("&Lock Aspect Ratio"), state.chkLockAspectRatio);
    lock->setToolTip(tr("Keeps width and height at 4 to 3"));
    auto* const row = new QHBoxLayout;
    row->addWidget(width);
    row->addWidget(into);
    row->addWidget(height);
    row->addSpacing(10);
    row->addWidget(lock);
    row->addStretch();
    auto* const hint = new QLabel(tr("Select \"Custom\" from the above list to specify Custom Dimension"), own);
    hint->setWordWrap(true);
    auto* const ownColumn = new QVBoxLayout(own);
    ownColumn->addLayout(row);
    ownColumn->addWidget(hint);
    column->addWidget(own);
    also([this, own, into, hint, &state] {
        own->setEnabled(state.fmeCustomPreviewEnabled);
        into->setEnabled(state.lblIntoEnabled);
        // The hint is for those who find the group switched off, so it stays readable then.
        QPalette quiet = palette();
        for (const auto group : {QPalette::Disabled, QPalette::Active, QPalette::Inactive}) {
            quiet.setColor(group, QPalette::WindowText, quietText(palette()));
        }
        hint->setPalette(quiet);
    });
    return column;
}

void runDialogue(QDialog& dialogue)
{
    const bool waits = QApplication::overrideCursor() != nullptr; // else its parts have pointers of their own
    if (waits) {
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    dialogue.exec();
    if (waits) {
        QApplication::restoreOverrideCursor();
    }
}
