#include "export/frmProgressBar_form.h"

#include "core/forms/frmProgressBar.h"
#include "export/frmProgressBar.h"
#include "windowing/bound_dialogue.h"
#include "windowing/language.h"
#include "windowing/show_pass.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QVBoxLayout>

namespace frmProgressBar {

namespace {

forms::FrmProgressBar& form() { return forms::frmProgressBar; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QPlainTextEdit* makeFailure();
    QLabel* line(const char* name, const Shown<std::string>& state);
};

Dialogue::Dialogue() : BoundDialogue("frmProgressBar", QObject::tr("Saving Timeline"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(18, 16, 18, 14);
    column->setSpacing(8);
    auto* const saving = new QLabel(tr("Saving..."), this);
    saving->setObjectName("lblSaving");
    column->addWidget(saving);
    auto* const bar = new QProgressBar(this);
    bar->setObjectName("pbr");
    bar->setAccessibleName(tr("Progress"));
    bar->setTextVisible(false);
    // The longest that the line below says: a window that grows with it would jump about.
    bar->setMinimumWidth(fontMetrics().horizontalAdvance(
        tr("00:00:00 left     1000 times as fast as it plays     about 1000 MB in the end")));
    also([bar, saving] {
        bar->setRange(form().pbr.Min(), form().pbr.Max());
        bar->setValue(form().pbr.Value());
        saving->setVisible(form().tmSave.Enabled);
    });
    column->addWidget(bar);
    auto* const told = new QHBoxLayout;
    told->addWidget(line("lblFramesSaved", form().lblFramesSaved), 1);
    told->addWidget(line("lblComplete", form().lblComplete));
    column->addLayout(told);
    auto* const estimate = new QHBoxLayout;
    estimate->addWidget(line("lblTimeLeft", form().lblTimeLeft), 1);
    estimate->addWidget(line("lblSpeed", form().lblSpeed), 1);
    estimate->addWidget(line("lblSize", form().lblSize));
    column->addLayout(estimate);
    column->addWidget(line("lblFramesCopied", form().lblFramesCopied));
    column->addWidget(makeFailure());
    auto* const row = new QHBoxLayout;
    row->addWidget(checkBox("chkPreviewWhenDone", tr("&Preview when done"), form().chkPreviewWhenDone));
    row->addStretch();
    QPushButton* const cancel = button("cmdCancel", {}, cmdCancel_Click);
    also([cancel] {
        cancel->setText(translated(form().cmdCancel.get()));
        cancel->setDefault(!form().tmSave.Enabled); // the Enter that began a save, held too long, is no cancel
    });
    row->addWidget(cancel);
    column->addLayout(row);
    cancel->setFocus();
    driveTimer(this, form().tmSave);
    start();
}

/// Why the save fails, with paths of any length: all of it can be read, wherever it has to be broken.
QPlainTextEdit* Dialogue::makeFailure()
{
    constexpr int kLines = 5;
    auto* const failure = new QPlainTextEdit(this);
    failure->setObjectName("lblFailure");
    failure->setAccessibleName(tr("Failure"));
    failure->setReadOnly(true);
    failure->setTabChangesFocus(true);
    failure->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    failure->setFrameShape(QFrame::NoFrame);
    failure->viewport()->setAutoFillBackground(false);
    failure->document()->setDocumentMargin(0);
    failure->setFixedHeight(fontMetrics().lineSpacing() * kLines);
    also([failure] {
        const QString text = translated(form().lblFailure.get());
        if (failure->toPlainText() != text) { // else what is selected stays so
            failure->setPlainText(text);
        }
        failure->setVisible(!text.isEmpty());
    });
    return failure;
}

/// A label that keeps its height while it has nothing to say.
QLabel* Dialogue::line(const char* name, const Shown<std::string>& state)
{
    QLabel* const label = said(name, state);
    label->setMinimumHeight(fontMetrics().height());
    return label;
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmProgressBar
