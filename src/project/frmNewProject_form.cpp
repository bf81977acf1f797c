#include "project/frmNewProject_form.h"

#include "core/forms/frmNewProject.h"
#include "project/frmNewProject.h"
#include "windowing/qt_ports.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace frmNewProject {

namespace {

forms::FrmNewProject& form() { return forms::frmNewProject; }

class Dialogue final : public QDialog {
public:
    explicit Dialogue(QWidget* parent);
    ~Dialogue() override;

    void reject() override { cmdCancel_Click(); } // Escape and the window's own button too

private:
    QGroupBox* makeSettings();
    QGroupBox* makeCustom();
    QHBoxLayout* makeFolder();
    QHBoxLayout* makeButtons();
    QPushButton* addButton(QBoxLayout& row, const char* name, const QString& text, void (*clicked)());
    QLineEdit* addBox(const char* name, const QString& accessibleName, TextBox& state);
    void showState();

    QComboBox* dimension_ = nullptr;
    QGroupBox* custom_ = nullptr;
    QLabel* into_ = nullptr;
    QLabel* hint_ = nullptr;
    QCheckBox* lock_ = nullptr;
    struct Box {
        QLineEdit* edit;
        TextBox* state;
    };
    std::vector<Box> boxes_;
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};

Dialogue::Dialogue(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmNewProject");
    setWindowTitle(tr("New Project"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addWidget(makeSettings());
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    dimension_->setFocus();
    showState();
    showPass().add(this, [this] { showState(); });
}

Dialogue::~Dialogue()
{
    for (const Box& box : boxes_) {
        box.state->SetFocus = nullptr;
    }
}

QGroupBox* Dialogue::makeSettings()
{
    auto* const group = new QGroupBox(tr("Project Settings"), this);
    auto* const column = new QVBoxLayout(group);
    column->setSpacing(10);
    auto* const row = new QHBoxLayout;
    dimension_ = new QComboBox(group);
    dimension_->setObjectName("cboPreviewDimension");
    dimension_->setMaxVisibleItems(20);
    for (const std::string& text : form().cboPreviewDimension.List.get()) {
        dimension_->addItem(fromProgram(text));
    }
    connect(dimension_, &QComboBox::currentIndexChanged, this, [this](int place) {
        if (!isShowing_) {
            form().cboPreviewDimension.ListIndex = place;
        }
    });
    auto* const label = new QLabel(tr("&Preview Dimension"), group);
    label->setBuddy(dimension_);
    row->addWidget(label);
    row->addWidget(dimension_, 1);
    column->addLayout(row);
    column->addWidget(makeCustom());
    column->addLayout(makeFolder());
    return group;
}

QGroupBox* Dialogue::makeCustom()
{
    custom_ = new QGroupBox(tr("&Custom Preview Dimension"), this);
    custom_->setObjectName("fmeCustomPreview");
    auto* const row = new QHBoxLayout;
    QLineEdit* const width = addBox("txtWidth", tr("Width"), form().txtWidth);
    QLineEdit* const height = addBox("txtHeight", tr("Height"), form().txtHeight);
    const int digits = fontMetrics().horizontalAdvance("00000.00") + 16;
    for (QLineEdit* const box : {width, height}) {
        box->setFixedWidth(digits);
    }
    into_ = new QLabel("x", custom_);
    into_->setObjectName("lblInto");
    lock_ = new QCheckBox(tr("&Lock Aspect Ratio"), custom_);
    lock_->setObjectName("chkLockAspectRatio");
    lock_->setToolTip(tr("Keeps width and height at 4 to 3"));
    connect(lock_, &QCheckBox::toggled, this, [this](bool isOn) {
        if (!isShowing_) {
            form().chkLockAspectRatio.Value = static_cast<std::int16_t>(isOn ? 1 : 0);
        }
    });
    row->addWidget(width);
    row->addWidget(into_);
    row->addWidget(height);
    row->addSpacing(10);
    row->addWidget(lock_);
    row->addStretch();
    hint_ = new QLabel(tr("Select \"Custom\" from the above list to specify Custom Dimension"), custom_);
    auto* const column = new QVBoxLayout(custom_);
    column->addLayout(row);
    column->addWidget(hint_);
    return custom_;
}

QHBoxLayout* Dialogue::makeFolder()
{
    auto* const row = new QHBoxLayout;
    QLineEdit* const path = addBox("txtPath", {}, form().txtPath);
    path->setMinimumWidth(fontMetrics().averageCharWidth() * 36);
    auto* const label = new QLabel(tr("&Working Folder"), this);
    label->setBuddy(path);
    row->addWidget(label);
    row->addWidget(path, 1);
    addButton(*row, "cmdBrowse", tr("&Browse..."), cmdBrowse_Click);
    return row;
}

QHBoxLayout* Dialogue::makeButtons()
{
    auto* const row = new QHBoxLayout;
    addButton(*row, "cmdDefault", tr("&Defaults"), cmdDefault_Click);
    row->addStretch();
    addButton(*row, "cmdOK", tr("OK"), cmdOK_Click)->setDefault(true);
    addButton(*row, "cmdCancel", tr("Cancel"), cmdCancel_Click);
    addButton(*row, "cmdHelp", tr("&Help"), cmdHelp_Click);
    return row;
}

QPushButton* Dialogue::addButton(QBoxLayout& row, const char* name, const QString& text, void (*clicked)())
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, clicked);
    row.addWidget(button);
    return button;
}

QLineEdit* Dialogue::addBox(const char* name, const QString& accessibleName, TextBox& state)
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
    boxes_.push_back({edit, &state});
    return edit;
}

void Dialogue::showState()
{
    isShowing_ = true;
    dimension_->setCurrentIndex(form().cboPreviewDimension.ListIndex.get());
    for (const Box& box : boxes_) {
        const QString text = fromProgram(box.state->Text.get());
        if (box.edit->text() != text) { // the caret stays where it is
            box.edit->setText(text);
            box.edit->setCursorPosition(0);
        }
        box.edit->setEnabled(box.state->Enabled);
    }
    custom_->setEnabled(form().fmeCustomPreviewEnabled);
    into_->setEnabled(form().lblIntoEnabled);
    lock_->setEnabled(form().chkLockAspectRatio.Enabled);
    lock_->setChecked(form().chkLockAspectRatio.Value != 0);
    // The hint is for those who find the group switched off, so it stays readable then.
    QPalette quiet = palette();
    for (const auto group : {QPalette::Disabled, QPalette::Active, QPalette::Inactive}) {
        quiet.setColor(group, QPalette::WindowText, quietText(palette()));
    }
    hint_->setPalette(quiet);
    isShowing_ = false;
}

Dialogue* open = nullptr;

void show()
{
    Dialogue dialogue(dialogOwner());
    open = &dialogue;
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    dialogue.exec();
    QApplication::restoreOverrideCursor();
    open = nullptr;
}

} // namespace

void connectScreens()
{
    showDialogue = show;
    closeDialogue = [] {
        if (open != nullptr) {
            open->done(QDialog::Accepted);
        }
    };
}

} // namespace frmNewProject
