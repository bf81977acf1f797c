#include "journal/offer_form.h"

#include "windowing/qt_ports.h"
#include "windowing/text.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace journal {

std::optional<std::size_t> showLeftovers(const std::vector<std::string>& descriptions)
{
    QDialog dialog(dialogOwner());
    dialog.setObjectName("frmLeftovers");
    dialog.setWindowTitle("Quillmont");
    auto* const label = new QLabel(QDialog::tr("Work that was set &aside, the newest first:"));
    auto* const list = new QListWidget;
    label->setBuddy(list);
    for (const std::string& description : descriptions) {
        list->addItem(fromProgram(description));
    }
    list->setCurrentRow(0);
    list->setFocus();
    list->setMinimumWidth(list->sizeHintForColumn(0) + list->fontMetrics().height() * 2);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    buttons->addButton(QDialog::tr("&Bring Back"), QDialogButtonBox::AcceptRole)->setDefault(true);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(label);
    column->addWidget(list);
    column->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(list, &QListWidget::itemActivated, &dialog, &QDialog::accept);
    if (dialog.exec() != QDialog::Accepted || list->currentRow() < 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(list->currentRow());
}

} // namespace journal
