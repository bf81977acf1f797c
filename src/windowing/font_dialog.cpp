#include "windowing/font_dialog.h"

#include "core/platform.h"
#include "engine/runtime_error.h"

#include <QGridLayout>
#include <QPushButton>

FontDialog::FontDialog(const QFont& font, std::int32_t colour, QWidget* parent)
    : QFontDialog(font, parent), colour_(colour)
{
    setOption(QFontDialog::DontUseNativeDialog);
    setObjectName("fontDialog");
    setWindowTitle(tr("Font"));
    button_ = new QPushButton(tr("&Color..."), this);
    button_->setObjectName("cmdFontColor");
    button_->setAutoDefault(false);
    connect(button_, &QPushButton::clicked, this, [this] { chooseColour(); });
    if (auto* const grid = qobject_cast<QGridLayout*>(layout())) {
        grid->addWidget(button_, grid->rowCount(), 0, Qt::AlignLeft);
    }
    showColour();
}

void FontDialog::chooseColour()
{
    try {
        colour_ = ports.dialogs->chooseColour(colour_);
        showColour();
    } catch (const engine::RuntimeError&) { // NOLINT: cancelled
    }
}

void FontDialog::showColour()
{
    QPixmap sample(16, 16);
    sample.fill(QColor(colour_ & 0xFF, colour_ >> 8 & 0xFF, colour_ >> 16 & 0xFF));
    button_->setIcon(QIcon(sample));
}
