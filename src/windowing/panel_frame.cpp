#include "windowing/panel_frame.h"

#include "windowing/icons.h"
#include "windowing/scheme.h"

#include <QMouseEvent>
#include <QPainter>

PanelFrame::PanelFrame(QWidget* form, QWidget* parent) : QWidget(parent), form_(form)
{
    form_->setParent(this);
    setWhatsThis(form_->whatsThis()); // for its strip
    caption_ = new CutLabel(this);
    caption_->setContentsMargins(10, 0, 0, 0);
    caption_->setTextFormat(Qt::PlainText);
    QFont font = caption_->font();
    font.setBold(true);
    caption_->setFont(font);
    caption_->setMouseTracking(true);
    setMouseTracking(true);
}

void PanelFrame::setCaption(const QString& caption)
{
    if (caption_->text() != caption) {
        caption_->setWhole(caption);
        form_->setAccessibleName(caption);
    }
}

void PanelFrame::setClosable(std::function<void()> close)
{
    close_ = new QToolButton(this);
    close_->setAutoRaise(true);
    close_->setMouseTracking(true);
    close_->setFocusPolicy(Qt::NoFocus);
    close_->setToolTip(tr("Hide this panel"));
    close_->setAccessibleName(close_->toolTip());
    close_->setWhatsThis(tr("Hides this panel. The menu Window brings it back."));
    connect(close_, &QToolButton::clicked, this, std::move(close));
    refreshIcons();
}

void PanelFrame::refreshIcons()
{
    if (close_ != nullptr) {
        close_->setIcon(programIcon("CLOSE_PANEL", palette()));
    }
}

void PanelFrame::setActive(bool active)
{
    if (isActive_ != active) {
        isActive_ = active;
        update();
    }
}

/// A press on what takes none itself makes the panel the active one: the focus comes back to where it was in it.
void PanelFrame::mousePressEvent(QMouseEvent*)
{
    if (isActive_) {
        return;
    }
    QWidget* next = form_->focusWidget();
    for (QWidget* widget = form_; next == nullptr && (widget = widget->nextInFocusChain()) != form_;) {
        const bool takesFocus =
            (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() && widget->isEnabled();
        next = takesFocus && form_->isAncestorOf(widget) ? widget : nullptr;
    }
    if (next != nullptr) {
        next->setFocus(Qt::MouseFocusReason);
    }
}

void PanelFrame::mouseMoveEvent(QMouseEvent* event)
{
    if (bareMoved && event->position().y() < kStripHeight) { // what the form did not want comes here as well
        bareMoved();
    }
}

void PanelFrame::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        refreshIcons();
    }
}

void PanelFrame::resizeEvent(QResizeEvent*)
{
    caption_->setGeometry(1, 1, width() - kStripHeight - 2, kStripHeight - 1);
    if (close_ != nullptr) {
        close_->setGeometry(width() - kStripHeight, 2, kStripHeight - 4, kStripHeight - 4);
    }
    form_->setGeometry(1, kStripHeight, width() - 2, height() - kStripHeight - 1);
}

void PanelFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QRect strip(0, 0, width(), kStripHeight);
    painter.fillRect(strip, palette().color(QPalette::Button));
    painter.setPen(hairline(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (isActive_) {
        painter.fillRect(0, 0, width(), 2, palette().color(QPalette::Highlight));
    }
}
