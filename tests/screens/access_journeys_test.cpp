// The main window without a pointer and without sight: what Tab reaches and shows, what a screen reader is told, and
// whether texts stand out from their ground.

#include "screens/screen_harness.h"
#include "timeline/moduleBookmarks.h"
#include "windowing/scheme.h"
#include "windowing/seen_marks.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabBar>
#include <set>

namespace screens_test {
namespace {

/// As the guidelines for the web reckon it: 1 to 21.
double contrast(const QColor& a, const QColor& b)
{
    const auto light = [](const QColor& colour) {
        const auto part = [](double share) {
            return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const double first = light(a);
    const double second = light(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QPalette darkPalette()
{
    QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x2A, 0x2A, 0x2A));
    dark.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    dark.setColor(QPalette::AlternateBase, QColor(0x2C, 0x2C, 0x2C));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        dark.setColor(role, QColor(0xEE, 0xEE, 0xEE));
    }
    return dark;
}

std::string called(const QWidget& widget)
{
    return widget.metaObject()->className() + (" " + widget.objectName().toStdString()) + " in "
           + (widget.parentWidget() != nullptr ? widget.parentWidget()->objectName().toStdString() : "");
}

using AccessTest = ScreenTest;

TEST_F(AccessTest, BarsAndSlidersTellNamesAndTimes)
{
    opened({"mpeg4.avi"});
    onTheTracks();
    QAccessibleInterface* const row = QAccessible::queryAccessibleInterface(&find("picVideo0"));
    ASSERT_EQ(row->childCount(), 1);
    QAccessibleInterface* const bar = row->child(0);
    const QString name = bar->text(QAccessible::Name);
    EXPECT_TRUE(name.startsWith("mpeg4.avi, 0:00:00.000 to 0:00:")) << name.toStdString();
    EXPECT_EQ(row->indexOfChild(bar), 0);
    EXPECT_FALSE(bar->state().selected);
    const QPoint inside = bar->rect().center();
    EXPECT_EQ(row->childAt(inside.x(), inside.y()), bar);
    click(find("picVideo0"), find("picVideo0").mapFromGlobal(inside));
    EXPECT_TRUE(bar->state().selected);
    answers.click("&Yes");
    choose("&Edit", "Clear &Timeline");
    EXPECT_EQ(row->childCount(), 0);
    EXPECT_FALSE(bar->isValid());
    QAccessibleInterface* const handle = QAccessible::queryAccessibleInterface(&find("imgSliderHandle"));
    EXPECT_EQ(handle->role(), QAccessible::Slider);
    EXPECT_EQ(handle->text(QAccessible::Name), "Position on the timeline, 0:00:00.000");
    moduleBookmarks::takeBookmarks({2000, 3000});
    settle();
    EXPECT_EQ(find("imgBookmark0").toolTip(), "0:00:02.000");
    EXPECT_EQ(find("imgBookmark0").accessibleName(), "Marker 1, 0:00:02.000");
    EXPECT_EQ(find("imgBookmark1").accessibleName(), "Marker 2, 0:00:03.000");
}

TEST_F(AccessTest, TabGoesRoundAndIsSeenWhereItStands)
{
    opened({"mpeg4.avi"});
    onTheTracks();
    std::set<const QWidget*> reached;
    std::string order;
    while (true) {
        key(Qt::Key_Tab);
        QWidget* const now = QApplication::focusWidget();
        ASSERT_NE(now, nullptr);
        if (!reached.insert(now).second) {
            break;
        }
        order += called(*now) + "\n";
        const QImage with = now->grab().toImage();
        now->clearFocus();
        EXPECT_NE(with, now->grab().toImage()) << "the focus is not seen on " << called(*now);
        now->setFocus(Qt::TabFocusReason);
    }
    for (const QWidget* const widget : window->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0
            && widget->focusProxy() == nullptr) {
            EXPECT_TRUE(reached.contains(widget)) << "Tab does not reach " << called(*widget);
        }
    }
    EXPECT_GT(reached.size(), 20U) << order;
}

TEST_F(AccessTest, EmptyBoxesStandOutInTheDark)
{
    edgeMarksInTheDark();
    QCheckBox box;
    QRadioButton button;
    for (QWidget* const mark : {static_cast<QWidget*>(&box), static_cast<QWidget*>(&button)}) {
        mark->setPalette(darkPalette());
        const QImage drawn = mark->grab().toImage();
        double best = 1;
        for (int x = 0; x < drawn.width(); ++x) {
            best = std::max(best, contrast(drawn.pixelColor(x, drawn.height() / 2), darkPalette().window().color()));
        }
        EXPECT_GE(best, 3) << called(*mark);
    }
}

TEST_F(AccessTest, TextsStandOutInEitherPalette)
{
    opened({"mpeg4.avi"});
    onTheTracks();
    window->findChild<QAction*>("mnuAddEffectFade")->trigger();
    window->findChild<QAction*>("mnuEditUndo")->trigger(); // an undone step
    window->findChild<QTabBar*>("tbsTools")->setCurrentIndex(2);
    settle();
    const QPalette before = QApplication::palette();
    for (const QPalette& palette : {before, darkPalette()}) {
        QApplication::setPalette(palette);
        settle();
        for (const QWidget* const widget : window->findChildren<QWidget*>()) {
            const QPalette& own = widget->palette();
            const bool isView = qobject_cast<const QAbstractItemView*>(widget) != nullptr;
            if (!widget->isVisible() || !widget->isEnabled()) {
                continue;
            }
            if (const auto* const field = qobject_cast<const QLineEdit*>(widget);
                field != nullptr && !field->placeholderText().isEmpty()) {
                const QColor words = own.color(QPalette::PlaceholderText);
                EXPECT_EQ(words.alpha(), 255) << called(*widget); // else it is fainter than it says
                EXPECT_GE(contrast(words, own.color(QPalette::Base)), 4.5) << called(*widget);
            }
            const auto fore = isView ? QPalette::Text : widget->foregroundRole();
            const auto back = isView ? QPalette::Base : widget->backgroundRole();
            EXPECT_GE(contrast(own.color(fore), own.color(back)), 4.5)
                << called(*widget) << (isDark(palette) ? " dark " : " light ") << own.color(fore).name().toStdString()
                << " on " << own.color(back).name().toStdString();
        }
        const auto& history = *window->findChild<QListWidget*>("lvwHistory");
        EXPECT_GT(history.count(), 0);
        for (int i = 0; i < history.count(); ++i) {
            EXPECT_GE(contrast(history.item(i)->foreground().color(), palette.color(QPalette::Base)), 4.5)
                << history.item(i)->text().toStdString() << (isDark(palette) ? " dark" : " light");
        }
        EXPECT_GE(contrast(quietText(palette), palette.color(QPalette::Window)), 4.5);
    }
    QApplication::setPalette(before);
    settle();
}

} // namespace
} // namespace screens_test
