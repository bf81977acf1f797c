#include "screens/answers.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <utility>

namespace screens_test {

namespace {

constexpr int kLookEveryMs = 5;
constexpr const char* kAnswered = "answered";

QPushButton* buttonOf(const QWidget& dialog, const std::string& text)
{
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
        if (button->text() == QString::fromStdString(text)) {
            return button;
        }
    }
    return nullptr;
}

} // namespace

Answers::Answers()
{
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        timer_.start(); // first, so that a box is seen that opens over the one being answered
        look();
    });
    timer_.setSingleShot(true);
    timer_.start(kLookEveryMs);
}

Answers::~Answers() { EXPECT_EQ(planned_.size(), 0U) << "a box that was waited for did not open"; }

void Answers::look()
{
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || !dialog->isActiveWindow()
        || dialog->property(kAnswered).toBool()) {
        return; // one that is not active yet gets no keys
    }
    dialog->setProperty(kAnswered, true);
    if (const auto* const box = qobject_cast<QMessageBox*>(dialog)) {
        note(*box);
    }
    if (planned_.empty()) {
        ADD_FAILURE() << "unexpected: " << dialog->windowTitle().toStdString() << " "
                      << (boxes.empty() ? "" : boxes.back());
        dialog->reject();
        return;
    }
    const Answer planned = planned_.front();
    planned_.pop_front();
    if (const auto first = std::exchange(meanwhile, {})) {
        first();
    }
    answer(*dialog, planned);
}

void Answers::note(const QMessageBox& box)
{
    const std::string title = box.windowTitle() == "Quillmont" ? "" : box.windowTitle().toStdString() + ": ";
    const char* const icon = box.icon() == QMessageBox::Information ? "i: "
                             : box.icon() == QMessageBox::Question  ? "?: "
                             : box.icon() == QMessageBox::Critical  ? "x: "
                                                                    : "";
    boxes.push_back(title + icon + box.text().replace("\r\n", "|").toStdString());
}

void Answers::answer(QWidget& dialog, const Answer& planned)
{
    if (planned.deeds) {
        planned.deeds();
        return;
    }
    if (planned.button.empty() && planned.paths.empty()) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    if (planned.button.empty()) {
        auto* const files = qobject_cast<QFileDialog*>(&dialog);
        ASSERT_NE(files, nullptr) << dialog.windowTitle().toStdString();
        typePaths(*files, planned.paths);
        return;
    }
    QPushButton* const button = buttonOf(dialog, planned.button);
    if (button == nullptr) {
        ADD_FAILURE() << "there is no button " << planned.button;
        static_cast<QDialog&>(dialog).reject();
        return;
    }
    QTest::mouseClick(button, Qt::LeftButton);
}

void Answers::typePaths(QFileDialog& dialog, const std::vector<std::string>& paths)
{
    QString words;
    for (const std::string& path : paths) {
        words += (words.isEmpty() ? "" : " ") + ("\"" + QString::fromStdString(path) + "\"");
    }
    auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    ASSERT_NE(edit, nullptr);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, paths.size() == 1 ? QString::fromStdString(paths.front()) : words);
    if (QWidget* const completions = QApplication::activePopupWidget()) {
        completions->hide(); // it would take the click
    }
    const bool isToSave = dialog.acceptMode() == QFileDialog::AcceptSave;
    QTest::mouseClick(buttonOf(dialog, isToSave ? "&Save" : "&Open"), Qt::LeftButton);
}

} // namespace screens_test
