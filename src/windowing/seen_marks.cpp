#include "windowing/seen_marks.h"

#include "windowing/scheme.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

const QString kToolkits = QStringLiteral("fusion");

class SeenMarks final : public QProxyStyle {
public:
    SeenMarks() : QProxyStyle(QStyleFactory::create(kToolkits)) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isRound = element == PE_IndicatorRadioButton;
        if ((!isRound && element != PE_IndicatorCheckBox) || !isDark(option->palette)) {
            return;
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, isRound);
        const bool isEnabled = option->state.testFlag(State_Enabled);
        painter->setPen(isEnabled ? quietText(option->palette) : hairline(option->palette));
        painter->setBrush(Qt::NoBrush);
        const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        isRound ? painter->drawEllipse(edge) : painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }
};

} // namespace

void edgeMarksInTheDark()
{
    if (QApplication::style()->name().compare(kToolkits, Qt::CaseInsensitive) == 0) {
        QApplication::setStyle(new SeenMarks);
    }
}
