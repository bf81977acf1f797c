#include "windowing/cut_label.h"

#include <QEvent>
#include <QPainter>

void CutLabel::setWhole(const QString& text)
{
    if (text != QLabel::text()) {
        setText(text);
        fitToolTip();
    }
}

QString CutLabel::shown() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width(), Qt::TextSingleLine);
}

void CutLabel::fitToolTip() { setToolTip(shown() == text() ? QString() : text()); }

void CutLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, shown());
}

void CutLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    fitToolTip();
}

void CutLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitToolTip();
    }
}
