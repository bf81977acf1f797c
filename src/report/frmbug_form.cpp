#include "report/frmbug_form.h"

#include "report/frmbug.h"
#include "windowing/icons.h"
#include "windowing/qt_ports.h"
#include "windowing/scheme.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace frmbug {

namespace {

QPointer<QDialog> open;

QLabel* paragraph(const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(text, parent);
    label->setWordWrap(true);
    return label;
}

void show()
{
    QDialog dialog(dialogOwner());
    open = &dialog;
    dialog.setObjectName("frmbug");
    dialog.setWindowTitle("Quillmont");
    dialog.setMinimumWidth(480);
    auto* const column = new QVBoxLayout(&dialog);
    column->setSpacing(12);
    column->setContentsMargins(20, 18, 20, 16);
    auto* const title = paragraph(QObject::tr("Please tell Brindlecove about this problem"), &dialog);
    QFont large = title->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.15);
    title->setFont(large);
    column->addWidget(title);
    column->addWidget(paragraph(QObject::tr("If you are in middle of something, the process you were working on may "
                                            "not work completely."),
                                &dialog));
    column->addWidget(paragraph(QObject::tr("We have created error report that you can send to help us improve "
                                            "Quillmont. We will treat this as confidential and anonymous."),
                                &dialog));
    const QString link = QString("<a href=\"#\" style=\"color: %1\">%2</a>")
                             .arg(linkColour(dialog.palette(), QPalette::Window).name(), QObject::tr("click here"));
    auto* const contents =
        paragraph(QString("%1 %2").arg(QObject::tr("To see what data this report contains,"), link), &dialog);
    contents->setObjectName("lblReportContents");
    contents->setTextFormat(Qt::RichText);
    contents->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(contents, &QLabel::linkActivated, &dialog, [] { lblReportContents_Click(); });
    column->addWidget(contents);
    auto* const buttons = new QHBoxLayout;
    auto* const send = new QPushButton(QObject::tr("Send Error Report"), &dialog);
    send->setObjectName("cmdsendreport");
    auto* const dont = new QPushButton(QObject::tr("Don't Send"), &dialog);
    dont->setObjectName("frmdontsend");
    dont->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(send);
    buttons->addWidget(dont);
    column->addLayout(buttons);
    QObject::connect(send, &QPushButton::clicked, &dialog, [] { cmdsendreport_Click(); });
    QObject::connect(dont, &QPushButton::clicked, &dialog, [] { frmdontsend_Click(); });
    Load();
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    dialog.exec();
    QApplication::restoreOverrideCursor();
}

} // namespace

void connectScreens()
{
    showDialogue = show;
    closeDialogue = [] {
        if (open) {
            open->accept();
        }
    };
}

} // namespace frmbug
