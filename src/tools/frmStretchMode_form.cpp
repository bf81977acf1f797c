#include "tools/frmStretchMode_form.h"

#include "core/forms/frmStretchMode.h"
#include "tools/frmStretchMode.h"
#include "windowing/bound_dialogue.h"
#include "windowing/icons.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace frmStretchMode {

namespace {

forms::FrmStretchMode& form() { return forms::frmStretchMode; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QRadioButton* option(const char* name, const QString& text, const Shown<bool>& state, void (*clicked)());
    QLabel* makePreview();
    QBoxLayout* makeButtons();
};

Dialogue::Dialogue() : BoundDialogue("frmStretchMode", QObject::tr("Stretch Mode"), cmdCancel_Click)
{
    auto* const options = new QVBoxLayout;
    options->addStretch();
    options->addWidget(option("optStretch", tr("&Stretch"), form().optStretch, optStretch_Click));
    options->addWidget(option("optCrop", tr("C&rop (Keep original dimension)"), form().optCrop, optCrop_Click));
    options->addWidget(option("optPreserve", tr("Preserve &Aspect Ratio"), form().optPreserve, optPreserve_Click));
    options->addWidget(option("optStretchPreserve", tr("Str&etch while Preserving Aspect Ratio"),
                              form().optStretchPreserve, optStretchPreserve_Click));
    options->addStretch();
    auto* const mode = new QHBoxLayout;
    mode->setSpacing(24);
    mode->addLayout(options);
    mode->addWidget(makePreview());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addLayout(mode);
    column->addWidget(checkBox("chkApplyToEntireTrack", tr("Apply to entire &track"), form().chkApplyToEntireTrack));
    column->addLayout(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);
    start();
}

QRadioButton* Dialogue::option(const char* name, const QString& text, const Shown<bool>& state, void (*clicked)())
{
    auto* const made = new QRadioButton(text, this);
    made->setObjectName(name);
    connect(made, &QRadioButton::clicked, this, clicked);
    also([made, &state] {
        if (state) { // the others go off by themselves
            made->setChecked(true);
            made->isVisible() ? void() : made->setFocus();
        }
    });
    return made;
}

QLabel* Dialogue::makePreview()
{
    constexpr int kSize = 168;
    auto* const label = new QLabel(this);
    label->setObjectName("imgPreview");
    label->setFixedSize(kSize, kSize);
    also([this, label, shown = std::string("?")]() mutable {
        const std::string& key = form().imgPreview.Picture.get();
        if (std::exchange(shown, key) != key) {
            label->setPixmap(
                programPixmap("FIT_" + key, palette().color(QPalette::WindowText), kSize, label->devicePixelRatioF()));
        }
    });
    return label;
}

QBoxLayout* Dialogue::makeButtons()
{
    return lastRow({button("cmdOK", tr("OK"), cmdOK_Click), button("cmdCancel", tr("Cancel"), cmdCancel_Click),
                    button("cmdHelp", tr("&Help"), cmdHelp_Click)});
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmStretchMode
