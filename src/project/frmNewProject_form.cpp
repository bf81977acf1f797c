#include "project/frmNewProject_form.h"

#include "core/forms/frmNewProject.h"
#include "project/frmNewProject.h"
#include "windowing/bound_dialogue.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace frmNewProject {

namespace {

forms::FrmNewProject& form() { return forms::frmNewProject; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QGroupBox* makeSettings();
    QBoxLayout* makeFolder();
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : BoundDialogue("frmNewProject", QObject::tr("New Project"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addWidget(makeSettings());
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    findChild<QComboBox*>("cboPreviewDimension")->setFocus();
    start();
}

QGroupBox* Dialogue::makeSettings()
{
    auto* const group = new QGroupBox(tr("Project Settings"), this);
    auto* const column = new QVBoxLayout(group);
    column->setSpacing(10);
    column->addLayout(dimension("cboPreviewDimension", tr("&Preview Dimension"), tr("&Custom Preview Dimension"),
                                form().PreviewDimension));
    column->addLayout(makeFolder());
    return group;
}

QBoxLayout* Dialogue::makeFolder()
{
    QLineEdit* const path = textBox("txtPath", {}, form().txtPath);
    path->setMinimumWidth(fontMetrics().averageCharWidth() * 36);
    QBoxLayout* const row = labelled(tr("&Working Folder"), path);
    row->addWidget(button("cmdBrowse", tr("&Browse..."), cmdBrowse_Click));
    return row;
}

QBoxLayout* Dialogue::makeButtons()
{
    QPushButton* const usual = button("cmdDefault", tr("&Defaults"), cmdDefault_Click); // ahead of the others for Tab
    return lastRow({button("cmdOK", tr("OK"), cmdOK_Click), button("cmdCancel", tr("Cancel"), cmdCancel_Click),
                    button("cmdHelp", tr("&Help"), cmdHelp_Click)},
                   usual);
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmNewProject
