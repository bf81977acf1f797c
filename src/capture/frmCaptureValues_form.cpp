#include "capture/frmCaptureValues_form.h"

#include "capture/frmCaptureValues.h"
#include "core/forms/frmCaptureValues.h"
#include "windowing/bound_dialogue.h"
#include "windowing/language.h"
#include "windowing/show_pass.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QRadioButton>
#include <QVBoxLayout>

namespace frmCaptureValues {

namespace {

forms::FrmCaptureValues& form() { return forms::frmCaptureValues; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QBoxLayout* makeFile();
    QGroupBox* makeEnd();
    QBoxLayout* makeButtons();

    QLineEdit* duration_ = nullptr;
};

Dialogue::Dialogue() : BoundDialogue("frmCaptureValues", translated(form().Caption.get()), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addLayout(makeFile());
    column->addWidget(makeEnd());
    column->addWidget(
        checkBox("chkShowWindow", tr("&Do not show this window ahead of a capture"), form().chkShowWindow));
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

QBoxLayout* Dialogue::makeFile()
{
    QLineEdit* const file = textBox("txtCaptureFile", {}, form().txtCaptureFile);
    file->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    QBoxLayout* const row = labelled(tr("&Capture file:"), file);
    row->addWidget(button("cmdBrowse", tr("&Browse..."), cmdBrowse_Click));
    return row;
}

QGroupBox* Dialogue::makeEnd()
{
    auto* const group = new QGroupBox(tr("End of the capture"), this);
    auto* const byHand = new QRadioButton(tr("Stop by &hand"), group);
    byHand->setObjectName("optManualStop");
    auto* const byTime = new QRadioButton(tr("Stop &after"), group);
    byTime->setObjectName("optDurationStop");
    connect(byHand, &QRadioButton::clicked, this, [] { optManualStop_Click(); });
    connect(byTime, &QRadioButton::clicked, this, [] {
        optDurationStop_Click();
        showPass().runNow(); // what takes the keys has to be enabled
        form().txtDuration.SetFocus();
    });
    also([byHand, byTime] { (form().optDurationStop ? byTime : byHand)->setChecked(true); });
    duration_ = textBox("txtDuration", tr("Seconds until the capture stops"), form().txtDuration);
    duration_->setFixedWidth(fontMetrics().horizontalAdvance("0000000000") + 16);
    duration_->installEventFilter(this);
    auto* const seconds = new QLabel(tr("seconds"), group);
    also([seconds] { seconds->setEnabled(form().txtDuration.Enabled); });
    auto* const row = new QHBoxLayout;
    row->addWidget(byTime);
    row->addWidget(duration_);
    row->addWidget(seconds);
    row->addStretch();
    auto* const column = new QVBoxLayout(group);
    column->addWidget(byHand);
    column->addLayout(row);
    setTabOrder(byHand, byTime);
    setTabOrder(byTime, duration_);
    return group;
}

QBoxLayout* Dialogue::makeButtons()
{
    QPushButton* const ok = button("cmdOK", {}, cmdOK_Click);
    also([ok] { ok->setText(form().cmdOK.get() == "Start" ? tr("&Start") : tr("OK")); });
    QPushButton* const help = button("cmdHelp", tr("Help"), cmdHelp_Click);
    help->setShortcut(Qt::Key_F1);
    return lastRow({ok, button("cmdCancel", tr("Cancel"), cmdCancel_Click), help});
}

/// Keys that write something else into the box of the duration are swallowed.
bool Dialogue::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == duration_ && event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        const QString text = key.text();
        const bool isCommand = (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
        if (!text.isEmpty() && text[0].isPrint() && !isCommand && !txtDuration_KeyPress(text[0].unicode())) {
            return true;
        }
    }
    return BoundDialogue::eventFilter(watched, event);
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmCaptureValues
