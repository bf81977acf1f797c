#include "journal/offer_form.h"

#include "windowing/language.h"
#include "windowing/qt_ports.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace journal {

namespace {

constexpr int kMostCharacters = 120; // of a line

} // namespace

std::optional<std::size_t> showLeftovers(const std::vector<std::string>& descriptions)
{
    QDialog dialog(dialogOwner());
    dialog.setObjectName("frmLeftovers");
    dialog.setWindowTitle("Quillmont");
    auto* const label = new QLabel(QDialog::tr("Work that was set &aside, the newest first:"));
    auto* const list = new QListWidget;
    label->setBuddy(list);
    for (const std::string& description : descriptions) {
        auto* const item = new QListWidgetItem(translated(description), list);
        item->setToolTip(item->text());
    }
    list->setCurrentRow(0);
    list->setTextElideMode(Qt::ElideMiddle); // a name may be longer than the screen is wide
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const QFontMetrics metrics = list->fontMetrics();
    const int most = metrics.averageCharWidth() * kMostCharacters;
    list->setMinimumWidth(std::min(list->sizeHintForColumn(0) + metrics.height() * 2, most));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    auto* const bring = buttons->addButton(QDialog::tr("&Bring Back"), QDialogButtonBox::AcceptRole);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(label);
    column->addWidget(list);
    column->addWidget(buttons);
    list->setFocus(); // both are the dialogue's to give, so only now
    bring->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(list, &QListWidget::itemActivated, &dialog, &QDialog::accept);
    if (dialog.exec() != QDialog::Accepted || list->currentRow() < 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(list->currentRow());
}

} // namespace journal
