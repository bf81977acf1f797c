#include "export/frmProfileProperties_form.h"

#include "core/forms/frmProfileProperties.h"
#include "export/frmProfileProperties.h"
#include "windowing/bound_dialogue.h"
#include "windowing/language.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace frmProfileProperties {

namespace {

forms::FrmProfileProperties& form() { return forms::frmProfileProperties; }

void cancel()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QWidget* makeGeneral();
    QWidget* makeVideo();
    QWidget* makeAudio();
};

Dialogue::Dialogue() : BoundDialogue("frmProfileProperties", QObject::tr("Profile Properties"), cancel)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName("tbs");
    tabs->addTab(makeGeneral(), tr("&General"));
    if (!form().lvwStreamDetails.get().empty()) {
        tabs->addTab(makeVideo(), tr("&Video"));
    }
    tabs->addTab(makeAudio(), tr("&Audio"));
    column->addWidget(tabs);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    QPushButton* const close = button("cmdCancel", tr("Close"), cancel);
    close->setDefault(true);
    row->addWidget(close);
    column->addLayout(row);
    resize(fontMetrics().averageCharWidth() * 84, fontMetrics().height() * 22);
    start();
}

QWidget* Dialogue::makeGeneral()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeGeneralProperties");
    auto* const rows = new QFormLayout(page);
    rows->addRow(tr("Name:"), said("txtProfileName", form().txtProfileName));
    auto* const description = new QPlainTextEdit(translated(form().txtDescription.get()), page);
    description->setObjectName("txtDescription");
    description->setReadOnly(true);
    rows->addRow(tr("Description:"), description);
    rows->addRow(tr("Streams:"), said("txtTotalStreams", form().txtTotalStreams));
    return page;
}

QWidget* Dialogue::makeVideo()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeVideoProperties");
    auto* const rows = new QVBoxLayout(page);
    auto* const facts = new QFormLayout;
    facts->addRow(tr("Dimension:"), said("txtVideoDimension", form().txtVideoDimension));
    rows->addLayout(facts);
    auto* const table = new QTreeWidget(page);
    table->setObjectName("lvwStreamDetails");
    table->setAccessibleName(tr("Video streams"));
    table->setRootIsDecorated(false);
    table->setHeaderLabels(
        {tr("No."), tr("Stream Name"), tr("Bit Rate"), tr("Frame Rate"), tr("Key Frame Interval"), tr("Quality")});
    for (const forms::StreamDetails& details : form().lvwStreamDetails.get()) {
        QStringList texts;
        for (const std::string& text : details) {
            texts << translated(text);
        }
        table->addTopLevelItem(new QTreeWidgetItem(texts));
    }
    QHeaderView& header = *table->header();
    header.setStretchLastSection(false);
    header.resizeSections(QHeaderView::ResizeToContents);
    constexpr int kMostCharacters = 110; // a stream may have a long name
    table->setMinimumWidth(
        std::min(header.length() + table->frameWidth() * 2, fontMetrics().averageCharWidth() * kMostCharacters));
    header.setStretchLastSection(true);
    rows->addWidget(table);
    return page;
}

QWidget* Dialogue::makeAudio()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeAudioProperties");
    auto* const rows = new QFormLayout(page);
    rows->addRow(tr("Format:"), said("txtAudioFormat", form().txtAudioFormat));
    return page;
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmProfileProperties
