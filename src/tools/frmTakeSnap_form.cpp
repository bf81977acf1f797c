#include "tools/frmTakeSnap_form.h"

#include "core/forms/frmTakeSnap.h"
#include "tools/frmTakeSnap.h"
#include "windowing/bound_dialogue.h"
#include "windowing/pixel_view.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace frmTakeSnap {

namespace {

forms::FrmTakeSnap& form() { return forms::frmTakeSnap; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QBoxLayout* makeSize();
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : BoundDialogue("frmTakeSnap", QObject::tr("Take Snap"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(10);
    auto* const view = new PixelView(form().picWorkspace, this);
    view->setObjectName("picWorkspace");
    view->setAccessibleName(tr("Still"));
    auto* const area = new QScrollArea(this);
    area->setObjectName("fmeWorkspace");
    area->setWidget(view);
    area->setAlignment(Qt::AlignCenter);
    area->setFocusPolicy(Qt::NoFocus);
    also([view] { view->showPicture(); });
    column->addWidget(area, 1);
    column->addLayout(makeSize());
    QLineEdit* const path = textBox("txtSaveTo", {}, form().txtSaveTo);
    QBoxLayout* const place = labelled(tr("&Save to:"), path);
    place->addWidget(button("cmdBrowse", tr("&Browse..."), cmdBrowse_Click));
    column->addLayout(place);
    column->addLayout(makeButtons());
    path->setFocus();
    start();
    const QSize around(60, sizeHint().height() - area->sizeHint().height() + 20);
    resize((view->size() + around).expandedTo({520, 360}).boundedTo(screen()->availableSize() * 0.92));
}

QBoxLayout* Dialogue::makeSize()
{
    QLineEdit* const width = textBox("txtWidth", {}, form().Dimension.txtWidth);
    QLineEdit* const height = textBox("txtHeight", {}, form().Dimension.txtHeight);
    for (QLineEdit* const box : {width, height}) {
        box->setFixedWidth(fontMetrics().horizontalAdvance("00000.00") + 16);
    }
    auto* const row = new QHBoxLayout;
    row->addLayout(labelled(tr("&Width:"), width, 0));
    row->addSpacing(10);
    row->addLayout(labelled(tr("&Height:"), height, 0));
    row->addSpacing(10);
    row->addWidget(checkBox("chkLockAspectRatio", tr("&Lock Aspect Ratio"), form().Dimension.chkLockAspectRatio));
    row->addStretch();
    return row;
}

QBoxLayout* Dialogue::makeButtons()
{
    return lastRow({button("cmdOK", tr("&OK"), cmdOK_Click, &form().cmdOK),
                    button("cmdCancel", tr("Cancel"), cmdCancel_Click), button("cmdHelp", tr("Help"), cmdHelp_Click)});
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmTakeSnap
