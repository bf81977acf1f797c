#include "export/frmExportTimeline_form.h"

#include "core/forms/frmExportTimeline.h"
#include "export/frmExportTimeline.h"
#include "windowing/bound_dialogue.h"
#include "windowing/language.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

namespace frmExportTimeline {

namespace {

forms::FrmExportTimeline& form() { return forms::frmExportTimeline; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QGroupBox* makeTracks();
    QGroupBox* makeFormat();
    QBoxLayout* makeFile();
    QBoxLayout* makeButtons();
    void showTracks();
    void tracksChosen();

    QListWidget* tracks_ = nullptr;
};

Dialogue::Dialogue() : BoundDialogue("frmExportTimeline", QObject::tr("Save Timeline"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addWidget(makeTracks());
    column->addWidget(makeFormat());
    column->addLayout(makeFile());
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

QGroupBox* Dialogue::makeTracks()
{
    auto* const group = new QGroupBox(tr("&Tracks to save"), this);
    tracks_ = new QListWidget(group);
    tracks_->setObjectName("lstSaveStreams");
    tracks_->setAccessibleName(tr("Tracks to save"));
    tracks_->setSelectionMode(QAbstractItemView::SingleSelection);
    tracks_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    tracks_->setMinimumHeight(tracks_->fontMetrics().height() * 8);
    connect(tracks_, &QListWidget::itemChanged, this, [this] { tracksChosen(); });
    also([this] { showTracks(); });
    auto* const range = new QHBoxLayout;
    range->addWidget(new QLabel(tr("Range:"), group));
    range->addWidget(said("lblSaveRange", form().lblSaveRange), 1);
    auto* const column = new QVBoxLayout(group);
    column->addWidget(tracks_);
    column->addLayout(range);
    return group;
}

void Dialogue::showTracks()
{
    const auto& rows = form().lstSaveStreams.get();
    if (tracks_->count() != static_cast<int>(rows.size())) {
        tracks_->clear();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            tracks_->addItem(QString());
        }
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QListWidgetItem& item = *tracks_->item(static_cast<int>(i));
        item.setText(translated(rows[i].Text));
        item.setCheckState(rows[i].Selected ? Qt::Checked : Qt::Unchecked);
    }
}

void Dialogue::tracksChosen()
{
    if (isShowing()) {
        return;
    }
    std::vector<forms::StreamRow> rows = form().lstSaveStreams.get();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].Selected = tracks_->item(static_cast<int>(i))->checkState() == Qt::Checked;
    }
    form().lstSaveStreams = std::move(rows);
    lstSaveStreams_Click();
}

QGroupBox* Dialogue::makeFormat()
{
    auto* const group = new QGroupBox(tr("Format"), this);
    auto* const avi = new QRadioButton(tr("&AVI"), group);
    avi->setObjectName("optAVI");
    auto* const windowsMedia = new QRadioButton(tr("&Windows Media"), group);
    windowsMedia->setObjectName("optWMF");
    connect(avi, &QRadioButton::clicked, this, [] { optAVI_Click(); });
    connect(windowsMedia, &QRadioButton::clicked, this, [] { optWMF_Click(); });
    also([avi, windowsMedia] { (form().optAVI ? avi : windowsMedia)->setChecked(true); });
    auto* const choice = new QHBoxLayout;
    choice->addWidget(avi);
    choice->addWidget(windowsMedia);
    choice->addStretch();
    auto* const facts = new QFormLayout;
    facts->addRow(tr("Frames a second:"), said("lblFPS", form().lblFPS));
    facts->addRow(tr("Video dimension:"), said("lblVideoDim", form().lblVideoDim));
    auto* const column = new QVBoxLayout(group);
    column->addLayout(choice);
    column->addLayout(facts);
    return group;
}

QBoxLayout* Dialogue::makeFile()
{
    QLineEdit* const name = textBox("txtSaveFileName", {}, form().txtSaveFileName);
    name->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
    QBoxLayout* const row = labelled(tr("&File name:"), name);
    row->addWidget(button("cmdBrowse", tr("&Browse..."), cmdBrowse_Click));
    return row;
}

QBoxLayout* Dialogue::makeButtons()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(button("cmdAdvanced", tr("A&dvanced..."), cmdAdvanced_Click, &form().cmdAdvanced));
    row->addStretch();
    QPushButton* const save = button("cmdOK", tr("&Save"), cmdOK_Click, &form().cmdOK);
    save->setDefault(true);
    row->addWidget(save);
    row->addWidget(button("cmdCancel", tr("&Close"), cmdCancel_Click));
    row->addWidget(button("cmdHelp", tr("&Help"), cmdHelp_Click));
    return row;
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmExportTimeline
