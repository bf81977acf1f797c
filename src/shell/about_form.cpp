#include "shell/about_form.h"

#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/text.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace about {

namespace {

std::vector<engine::LibraryFacts> libraries()
{
    std::vector<engine::LibraryFacts> all{{"Qt", qVersion(), "LGPL version 3"}};
    if (engineLibraries) {
        const auto ofEngine = engineLibraries();
        all.insert(all.end(), ofEngine.begin(), ofEngine.end());
    }
    return all;
}

QString versionText() { return QDialog::tr("Version %1").arg(QApplication::applicationVersion()); }

/// Picture, name and the few words that say what this is.
QLayout* heading()
{
    constexpr int kPicture = 72;
    auto* const picture = new QLabel;
    picture->setPixmap(applicationIcon().pixmap(kPicture, kPicture));
    auto* const name = new QLabel("Quillmont");
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    name->setFont(large);
    auto* const version = new QLabel(versionText());
    version->setObjectName("lblVersion");
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const words =
        new QLabel(QDialog::tr("A video editor for holidays, lectures and school projects.\n"
                               "Free software under the GNU General Public License, version 3 or later, "
                               "without any warranty."));
    words->setWordWrap(true);
    auto* const column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(name);
    column->addWidget(version);
    column->addSpacing(6);
    column->addWidget(words);
    auto* const row = new QHBoxLayout;
    row->setSpacing(18);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(column, 1);
    return row;
}

QTreeWidget* libraryList()
{
    auto* const list = new QTreeWidget;
    list->setObjectName("lvwLibraries");
    list->setAccessibleName(QDialog::tr("Libraries"));
    list->setHeaderLabels({QDialog::tr("Library"), QDialog::tr("Version"), QDialog::tr("Licence")});
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    for (const engine::LibraryFacts& library : libraries()) {
        list->addTopLevelItem(new QTreeWidgetItem(
            {fromProgram(library.name), fromProgram(library.version), translated(library.licence)}));
    }
    list->setCurrentItem(list->topLevelItem(0));
    constexpr int kBetween = 16;
    for (int column = 0; column + 1 < list->columnCount(); ++column) { // the last one has what is left
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, list->columnWidth(column) + kBetween);
    }
    return list;
}

QWidget* libraryPage()
{
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->addWidget(libraryList());
    auto* const words = new QLabel(
        QDialog::tr("FFmpeg brings encoders and decoders of other projects along, each under its own licence."));
    words->setWordWrap(true);
    column->addWidget(words);
    return page;
}

QWidget* licencePage()
{
    QFile file(":/LICENSE");
    auto* const text =
        new QPlainTextEdit(file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString());
    text->setObjectName("txtLicence");
    text->setAccessibleName(QDialog::tr("Licence"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    constexpr int kColumns = 80; // of its longest lines
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * kColumns
                          + text->verticalScrollBar()->sizeHint().width());
    return text;
}

/// What a report of a fault should say, a line each.
void copyVersions()
{
    QString text = "Quillmont " + QApplication::applicationVersion() + "\n";
    for (const engine::LibraryFacts& library : libraries()) {
        text += fromProgram(library.name + " " + library.version) + "\n";
    }
    QApplication::clipboard()->setText(text);
}

} // namespace

void show(QWidget* owner)
{
    QDialog dialog(owner);
    dialog.setObjectName("frmAbout");
    dialog.setWindowTitle(QDialog::tr("About Quillmont"));
    auto* const pages = new QTabWidget;
    pages->addTab(libraryPage(), QDialog::tr("&Libraries"));
    pages->addTab(licencePage(), QDialog::tr("L&icence"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* const copy = buttons->addButton(QDialog::tr("&Copy Versions"), QDialogButtonBox::ActionRole);
    copy->setObjectName("cmdCopy");
    QObject::connect(copy, &QPushButton::clicked, &dialog, copyVersions);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* const column = new QVBoxLayout(&dialog);
    column->setContentsMargins(18, 16, 18, 14);
    column->setSpacing(12);
    column->addLayout(heading());
    column->addWidget(pages, 1);
    column->addWidget(buttons);
    QPushButton* const close = buttons->button(QDialogButtonBox::Close);
    close->setDefault(true);
    close->setFocus();
    dialog.resize(600, 460);
    dialog.exec();
}

} // namespace about
