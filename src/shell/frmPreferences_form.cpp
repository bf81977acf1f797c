#include "shell/frmPreferences_form.h"

#include "core/forms/frmPreferences.h"
#include "export/save_widgets_form.h"
#include "shell/frmPreferences.h"
#include "windowing/language.h"
#include "windowing/scheme.h"
#include "windowing/text.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QTabWidget>
#include <QVBoxLayout>

namespace frmPreferences {

namespace {

forms::FrmPreferences& form() { return forms::frmPreferences; }

constexpr const char* kTabs[] = {"GENERAL", "AVI_SAVE_OPTIONS", "WMF_SAVE_OPTIONS"};

/// A piece of the colour, as bars have it.
class Swatch final : public QWidget {
public:
    Swatch(const char* name, QWidget* parent) : QWidget(parent)
    {
        setObjectName(name);
        setFixedSize(72, fontMetrics().height() + 8);
    }
    void show(std::int32_t colour)
    {
        if (colour != colour_) {
            colour_ = colour;
            update();
        }
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(hairline(palette()));
        painter.setBrush(trackColour(colour_));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    std::int32_t colour_ = -1;
};

class Dialogue final : public SaveDialogue {
public:
    Dialogue();

private:
    QWidget* makeGeneral();
    QGroupBox* makeColours();
    QWidget* makeAvi();
    QWidget* makeWindowsMedia();
    struct ProfileNames {
        const char* setting;
        const char* profile;
        const char* description;
        const char* properties;
        const char* usual;
    };
    QGroupBox* makeProfile(const QString& title, const ProfileNames& names, forms::PreferredProfile& state,
                           void (*properties)(), void (*usual)());
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : SaveDialogue("frmPreferences", QObject::tr("Options"), cmdCancel_Click)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName("tbSettings");
    tabs->addTab(makeGeneral(), tr("&General"));
    tabs->addTab(makeAvi(), tr("AVI &Save Options"));
    tabs->addTab(makeWindowsMedia(), tr("&Windows Media Format Save Options"));
    connect(tabs, &QTabWidget::currentChanged, this, [this](int place) {
        if (!isShowing()) {
            form().tbSettings = std::string(kTabs[place]);
        }
    });
    also([tabs] {
        const auto* const found = std::ranges::find(kTabs, form().tbSettings.get());
        tabs->setCurrentIndex(static_cast<int>(found - std::begin(kTabs)));
    });
    column->addWidget(tabs);
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

QWidget* Dialogue::makeGeneral()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeGeneral");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    column->addWidget(
        checkBox("chkDoNotShowTutorial", tr("Do &not show Tutorial on startup"), form().chkDoNotShowTutorial));
    column->addWidget(checkBox("chkPreview", tr("Preview &video after saving timeline"), form().chkPreview));
    QLineEdit* const path = textBox("txtPath", {}, form().txtPath);
    QBoxLayout* const folder = labelled(tr("Working &Folder"), path);
    folder->addWidget(button("cmdBrowse", tr("&Browse..."), cmdBrowse_Click));
    column->addLayout(folder);
    QBoxLayout* const language = labelled(tr("&Language"), list("cboLanguage", {}, form().cboLanguage), 0);
    language->addWidget(new QLabel(tr("from the next start on"), page));
    language->addStretch();
    column->addLayout(language);
    column->addWidget(makeColours());
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(button("cmdDefault", tr("&Defaults"), cmdDefault_Click));
    column->addLayout(row);
    column->addStretch();
    return page;
}

QGroupBox* Dialogue::makeColours()
{
    auto* const group = new QGroupBox(tr("Color Settings"), this);
    group->setObjectName("fmeGeneral2");
    auto* const grid = new QGridLayout(group);
    const struct {
        QString text;
        const char* label;
        Shown<std::int32_t>& colour;
        const char* name;
        void (*change)();
    } rows[] = {{tr("Video"), "lblVideoColor", form().lblVideoColor, "cmdVideo", cmdVideo_Click},
                {tr("Audio"), "lblAudioColor", form().lblAudioColor, "cmdAudio", cmdAudio_Click},
                {tr("Effects"), "lblEffectColor", form().lblEffectColor, "cmdEffects", cmdEffects_Click},
                {tr("Overlays"), "lblOverlayColor", form().lblOverlayColor, "cmdOverlays", cmdOverlays_Click}};
    for (int place = 0; const auto& row : rows) {
        auto* const swatch = new Swatch(row.label, group);
        also([swatch, &colour = row.colour] { swatch->show(colour); });
        QPushButton* const change = button(row.name, tr("Change..."), row.change);
        change->setAccessibleName(tr("Change the colour of %1 bars").arg(row.text));
        grid->addWidget(new QLabel(row.text, group), place, 0);
        grid->addWidget(swatch, place, 1);
        grid->addWidget(change, place, 2);
        ++place;
    }
    grid->setColumnStretch(0, 1);
    return group;
}

QWidget* Dialogue::makeAvi()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeSave");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    auto* const compressors = new QFormLayout;
    compressors->addRow(tr("&Video Compressor"), list("cboVideoCompressorST", {}, form().cboVideoCompressorST));
    compressors->addRow(tr("&Audio Compressor"), list("cboAudioCompressorST", {}, form().cboAudioCompressorST));
    column->addLayout(compressors);
    column->addLayout(values(form().Values, kPlain));
    column->addLayout(
        dimension("cboVideoDimension", tr("Video &Dimension"), tr("Custom Video Di&mension"), form().VideoDimension));
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(button("cmdDefaultSO", tr("Defa&ult"), cmdDefaultSO_Click));
    column->addLayout(row);
    column->addStretch();
    return page;
}

QGroupBox* Dialogue::makeProfile(const QString& title, const ProfileNames& names, forms::PreferredProfile& state,
                                 void (*properties)(), void (*usual)())
{
    auto* const group = new QGroupBox(title, this);
    auto* const column = new QVBoxLayout(group);
    auto* const rows = new QFormLayout;
    rows->addRow(tr("Setting:"), list(names.setting, tr("Setting, %1").arg(title), state.cboSetting));
    rows->addRow(tr("Profile:"), list(names.profile, tr("Profile, %1").arg(title), state.cboProfile));
    column->addLayout(rows);
    QLabel* const description = said(names.description, state.txtProfile);
    description->setWordWrap(true);
    description->setMinimumHeight(fontMetrics().height() * 3);
    description->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    column->addWidget(description);
    auto* const row = new QHBoxLayout;
    row->addWidget(button(names.properties, tr("More Properties..."), properties));
    row->addStretch();
    row->addWidget(button(names.usual, tr("Default"), usual));
    column->addLayout(row);
    return group;
}

QWidget* Dialogue::makeWindowsMedia()
{
    auto* const page = new QWidget(this);
    page->setObjectName("fmeWMFOptions");
    auto* const column = new QVBoxLayout(page);
    column->setSpacing(10);
    column->addWidget(makeProfile(
        tr("Video"), {"cboVideoSetting", "cboVideoProfile", "txtVideoProfile", "cmdVideoProperties", "cmdVideoDefault"},
        form().Video, cmdVideoProperties_Click, cmdVideoDefault_Click));
    column->addWidget(makeProfile(
        tr("Audio"), {"cboAudioSetting", "cboAudioProfile", "txtAudioProfile", "cmdAudioProperties", "cmdAudioDefault"},
        form().Audio, cmdAudioProperties_Click, cmdAudioDefault_Click));
    column->addStretch();
    return page;
}

QBoxLayout* Dialogue::makeButtons()
{
    return lastRow({button("cmdOk", tr("OK"), cmdOk_Click), button("cmdCancel", tr("Cancel"), cmdCancel_Click),
                    button("cmdApply", tr("&Apply"), cmdApply_Click, &form().cmdApply),
                    button("Command1", tr("&Help"), Command1_Click)});
}

} // namespace

void connectScreens()
{
    form().Languages = {{"", "As the desktop"}};
    for (const auto& [code, name] : language::offered()) {
        form().Languages.push_back({toProgram(code), toProgram(name)});
    }
    connectDialogue<Dialogue>(showDialogue, closeDialogue);
}

} // namespace frmPreferences
