#include "capture/frmCaptureOptions_form.h"

#include "capture/frmCaptureOptions.h"
#include "core/forms/frmCaptureOptions.h"
#include "export/save_widgets_form.h"
#include "windowing/text.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace frmCaptureOptions {

namespace {

forms::FrmCaptureOptions& form() { return forms::frmCaptureOptions; }

constexpr const char* kTabs[] = {"SAVE", "TAKE_SNAP"};

class Dialogue final : public SaveDialogue {
public:
    Dialogue();

private:
    void makeTabs(QTabWidget* tabs);
    QWidget* makeSave();
    QGroupBox* makeDevices();
    QGroupBox* makeFormat();
    QFormLayout* makeProfile();
    QWidget* makeSnap();
    QRadioButton* radio(const char* name, const QString& text, void (*clicked)());
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : SaveDialogue("frmCaptureOptions", QObject::tr("Options"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    auto* const tabs = new QTabWidget(this);
    makeTabs(tabs);
    column->addWidget(tabs);
    auto* const warning = new QLabel(
        tr("Applying Capture Options will restore Video and Audio Settings (Dimension, Frame Rate etc.)"), this);
    warning->setObjectName("lblWarning");
    warning->setWordWrap(true);
    column->addWidget(warning);
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

void Dialogue::makeTabs(QTabWidget* tabs)
{
    tabs->setObjectName("tbs");
    tabs->addTab(makeSave(), tr("Sa&ve"));
    if (form().TakeSnapTabVisible) {
        tabs->addTab(makeSnap(), tr("&Take Snap"));
    }
    connect(tabs, &QTabWidget::currentChanged, this, [this](int place) {
        if (!isShowing()) {
            form().tbs = std::string(kTabs[place]);
        }
    });
    also([tabs] { tabs->setCurrentIndex(form().tbs.get() == kTabs[0] ? 0 : 1); });
}

QWidget* Dialogue::makeSave()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeSaveOptions");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    column->addWidget(makeDevices());
    column->addWidget(makeFormat());
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(button("cmdDefaultSO", tr("Defa&ult"), cmdDefaultSO_Click));
    column->addLayout(row);
    return page;
}

QGroupBox* Dialogue::makeDevices()
{
    auto* const group = new QGroupBox(tr("Devices"), this);
    auto* const rows = new QFormLayout(group);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->addRow(tr("Vi&deo Device"), list("cmbVideoDevices", {}, form().cmbVideoDevices));
    rows->addRow(tr("Aud&io Device"), list("cmbAudioDevices", {}, form().cmbAudioDevices));
    return group;
}

QGroupBox* Dialogue::makeFormat()
{
    auto* const group = new QGroupBox(tr("Output Format"), this);
    auto* const column = new QVBoxLayout(group);
    QRadioButton* const avi = radio("optAVI", tr("&AVI"), optAVI_Click);
    QRadioButton* const asf = radio("optASF", tr("AS&F (Windows Media)"), optASF_Click);
    also([avi, asf] { (form().optASF ? asf : avi)->setChecked(true); });
    column->addWidget(avi);
    auto* const compressors = new QFormLayout;
    compressors->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto addBox = [&](const char* label, const QString& text, const char* name, ComboBox& state) {
        QComboBox* const box = list(name, {}, state);
        auto* const told = new QLabel(text, group);
        told->setObjectName(label);
        told->setBuddy(box);
        also([told, &state] { told->setEnabled(state.Enabled); });
        compressors->addRow(told, box);
    };
    addBox("lblVideoCompressor", tr("Video &Compressor"), "cmbVideoCompressors", form().cmbVideoCompressors);
    addBox("lblAudioCompressor", tr("Audio C&ompressor"), "cmbAudioCompressors", form().cmbAudioCompressors);
    compressors->setContentsMargins(22, 0, 0, 4);
    column->addLayout(compressors);
    column->addWidget(asf);
    column->addLayout(makeProfile());
    return group;
}

QFormLayout* Dialogue::makeProfile()
{
    auto* const rows = new QFormLayout;
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setContentsMargins(22, 0, 0, 0);
    const auto addRow = [&](const char* name, const QString& text, QWidget* buddy, QLayout* field) {
        auto* const told = new QLabel(text, this);
        told->setObjectName(name);
        told->setBuddy(buddy);
        also([told] { told->setEnabled(form().Profile.cboSetting.Enabled); });
        rows->addRow(told, field);
    };
    QComboBox* const setting = list("cboSetting", {}, form().Profile.cboSetting);
    auto* const settingRow = new QHBoxLayout;
    settingRow->addWidget(setting);
    settingRow->addStretch();
    addRow("lblSetting", tr("&Setting"), setting, settingRow);
    QWidget* const chosen = profile("cboProfile", "txtProfile", form().Profile);
    auto* const profileRow = new QHBoxLayout;
    profileRow->addWidget(chosen, 1);
    profileRow->addWidget(
        button("cmdCustomProfile", tr("&Properties..."), cmdCustomProfile_Click, &form().cmdCustomProfile));
    addRow("lblProfile", tr("P&rofile"), chosen, profileRow);
    return rows;
}

QWidget* Dialogue::makeSnap()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeTakeSnapOptions");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    QLineEdit* const folder = textBox("txtSnapFolder", {}, form().txtSnapFolder);
    QBoxLayout* const place = labelled(tr("Snap &Folder"), folder);
    place->addWidget(button("cmdSnapFolderBrowse", tr("&Browse..."), cmdSnapFolderBrowse_Click));
    column->addLayout(place);
    QRadioButton* const same =
        radio("optSaveSnapCapDim", tr("Save snaps in &capture dimension"), optSaveSnapCapDim_Click);
    QRadioButton* const other = radio(
        "optSaveSnapOthDim", tr("Save snaps in &other dimension (specify Snap Dimension)"), optSaveSnapOthDim_Click);
    also([same, other] { (form().optSaveSnapOthDim ? other : same)->setChecked(true); });
    column->addWidget(same);
    column->addWidget(other);
    column->addLayout(
        dimension("cboSnapDimension", tr("Snap &Dimension"), tr("Custom Snap Dimension"), form().SnapDimension));
    for (QLabel* const label : page->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr && label->buddy()->objectName() == "cboSnapDimension") {
            label->setObjectName("lblSnapDimension");
            also([label] { label->setEnabled(form().SnapDimension.cboDimension.Enabled); });
        }
    }
    column->addStretch();
    return page;
}

QRadioButton* Dialogue::radio(const char* name, const QString& text, void (*clicked)())
{
    auto* const made = new QRadioButton(text, this);
    made->setObjectName(name);
    connect(made, &QRadioButton::clicked, this, clicked);
    return made;
}

QBoxLayout* Dialogue::makeButtons()
{
    QPushButton* const help = button("cmdHelp", tr("Help"), cmdHelp_Click);
    help->setShortcut(Qt::Key_F1);
    return lastRow({button("cmdOK", tr("OK"), cmdOK_Click, &form().cmdOK),
                    button("cmdCancel", tr("Cancel"), cmdCancel_Click),
                    button("cmdApply", tr("Appl&y"), cmdApply_Click, &form().cmdApply), help});
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmCaptureOptions
