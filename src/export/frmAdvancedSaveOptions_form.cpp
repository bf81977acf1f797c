#include "export/frmAdvancedSaveOptions_form.h"

#include "core/forms/frmAdvancedSaveOptions.h"
#include "export/frmAdvancedSaveOptions.h"
#include "export/save_widgets_form.h"
#include "windowing/bound_dialogue.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>

namespace frmAdvancedSaveOptions {

namespace {

forms::FrmAdvancedSaveOptions& form() { return forms::frmAdvancedSaveOptions; }

class Dialogue final : public SaveDialogue {
public:
    Dialogue();

private:
    QWidget* makeAvi();
    QWidget* makeWindowsMedia();
    QWidget* makeTexts();
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : SaveDialogue("frmAdvancedSaveOptions", QObject::tr("Advanced Save Options"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName("tbs");
    tabs->addTab(makeAvi(), tr("AVI &Options"));
    tabs->addTab(makeWindowsMedia(), tr("&Windows Media Options"));
    tabs->addTab(makeTexts(), tr("Descriptio&n"));
    tabs->setCurrentIndex(form().tbs.get() == "AVI_OPTIONS" ? 0 : 1);
    connect(tabs, &QTabWidget::currentChanged, this, [](int place) {
        if (place < 2) {
            form().tbs = std::string(place == 0 ? "AVI_OPTIONS" : "WMF_OPTIONS");
        }
    });
    column->addWidget(tabs);
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

QWidget* Dialogue::makeAvi()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeAVIOptions");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    auto* const compressors = new QFormLayout;
    compressors->addRow(tr("&Video compressor:"), list("cboVideoCompressor", {}, form().cboVideoCompressor));
    compressors->addRow(tr("&Audio compressor:"), list("cboAudioCompressor", {}, form().cboAudioCompressor));
    column->addLayout(compressors);
    column->addLayout(values(form().Values, kTicked));
    column->addLayout(
        dimension("cboVideoDimension", tr("Video &dimension:"), tr("Custom Video Di&mension"), form().VideoDimension));
    QCheckBox* const copy =
        checkBox("chkCopyUnchanged", tr("&Copy unchanged parts as they are"), form().chkCopyUnchanged);
    copy->setToolTip(tr("Quick, and loses nothing, where the movie is like the clip and nothing is done to it"));
    column->addWidget(copy);
    column->addStretch();
    return page;
}

QWidget* Dialogue::makeWindowsMedia()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeWMFOptions");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    auto* const rows = new QFormLayout;
    rows->addRow(tr("&Setting:"), list("cboSetting", {}, form().Profile.cboSetting));
    rows->addRow(tr("P&rofile:"), profile("cboProfile", "txtProfile", form().Profile));
    rows->addRow(tr("Video dimension:"), said("txtDimension", form().txtDimension));
    rows->addRow(tr("Frame rate:"), said("txtFrameRate", form().txtFrameRate));
    rows->addRow(tr("Audio frequency:"), said("txtFrequency", form().txtFrequency));
    column->addLayout(rows);
    auto* const more = new QHBoxLayout;
    more->addWidget(button("cmdProperties", tr("&More Properties..."), cmdProperties_Click));
    more->addStretch();
    column->addLayout(more);
    column->addStretch();
    return page;
}

QWidget* Dialogue::makeTexts()
{
    auto* const page = new QWidget(this);
    auto* const rows = new QFormLayout(page);
    rows->addRow(tr("&Title:"), textBox("txtTitle", {}, form().txtTitle));
    rows->addRow(tr("A&uthor:"), textBox("txtAuthor", {}, form().txtAuthor));
    rows->addRow(tr("Rat&ing:"), textBox("txtRating", {}, form().txtRating));
    rows->addRow(tr("Cop&yright:"), textBox("txtCopyright", {}, form().txtCopyright));
    rows->addRow(tr("D&escription:"), textBox("txtDescription", {}, form().txtDescription));
    return page;
}

QBoxLayout* Dialogue::makeButtons()
{
    return lastRow({button("cmdOK", tr("OK"), cmdOK_Click), button("cmdCancel", tr("Cancel"), cmdCancel_Click),
                    button("cmdHelp", tr("&Help"), cmdHelp_Click)});
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmAdvancedSaveOptions
