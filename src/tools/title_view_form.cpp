#include "tools/title_view_form.h"

#include "core/forms/frmAddText.h"
#include "tools/frmAddText.h"
#include "windowing/qt_lettering.h"
#include "windowing/text.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextDocument>
#include <algorithm>
#include <utility>

namespace {

forms::FrmAddText& form() { return forms::frmAddText; }

QColor colourOf(std::int32_t colour) { return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF}; }

/// The platform's text has line feeds alone.
QString shownText() { return fromProgram(form().txtText.Text.get()).replace("\r\n", "\n"); }

} // namespace

TitleView::TitleView(QWidget* parent) : PixelView(form().picWorkspace, parent), edit_(new QPlainTextEdit(this))
{
    setObjectName("picWorkspace");
    setAccessibleName(tr("Picture with the text"));
    setFocusPolicy(Qt::StrongFocus);
    makeEdit();
    pressed = [this](QPoint at) { press(at); };
    moved = [this](QPoint at) { move(at); };
    released = [this](QPoint at) { release(at); };
}

void TitleView::makeEdit()
{
    edit_->setObjectName("txtText");
    edit_->setAccessibleName(tr("Text"));
    edit_->setFrameShape(QFrame::NoFrame);
    edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit_->document()->setDocumentMargin(0);
    edit_->setTabChangesFocus(true);
    edit_->setContextMenuPolicy(Qt::NoContextMenu); // it would take the focus, which ends the typing
    edit_->hide();
    edit_->installEventFilter(this);
    connect(edit_, &QPlainTextEdit::textChanged, this, [this] {
        if (!isShowing_) {
            form().txtText.Text = toProgram(edit_->toPlainText().replace("\n", "\r\n"));
        }
    });
    connect(edit_, &QPlainTextEdit::cursorPositionChanged, this, [this] { seekCaret(); });
    form().txtText.SetFocus = [this] {
        showTitle();
        edit_->setFocus();
        edit_->selectAll();
    };
}

bool TitleView::isEmpty() { return form().txtText.Text.get().empty(); }

QRect TitleView::handle() const
{
    return {form().imgDragLeft, form().imgDragTop, form().imgDragWidth, form().imgDragHeight};
}

/// Over the text. It has room for all of it, but grew after the letter that needed the room.
void TitleView::placeEdit()
{
    constexpr int kCaret = 3; // room behind the last letter
    edit_->setGeometry(handle().adjusted(0, 0, kCaret, 0));
    edit_->horizontalScrollBar()->setValue(0);
    edit_->verticalScrollBar()->setValue(0);
}

void TitleView::seek(const QRect& place) const
{
    if (sought && isVisible()) {
        sought(place);
    }
}

void TitleView::seekCaret() const
{
    if (form().txtTextVisible) {
        seek(edit_->cursorRect().translated(edit_->pos()));
    }
}

void TitleView::showTitle()
{
    isShowing_ = true;
    showPicture();
    const bool wasTyping = edit_->hasFocus();
    if (form().txtTextVisible) {
        QPalette palette = edit_->palette();
        palette.setColor(QPalette::Base, colourOf(form().picBackColorDisplay));
        palette.setColor(QPalette::Text, colourOf(form().picColorDisplay));
        edit_->setPalette(palette);
        edit_->setFont(toolkitFont(form().Font));
        if (edit_->toPlainText() != shownText()) {
            edit_->setPlainText(shownText());
        }
        placeEdit();
    }
    if (wasTyping && !form().txtTextVisible) {
        setFocus(); // ahead of hiding, which would look for another part
    }
    edit_->setVisible(form().txtTextVisible);
    if (std::exchange(placed_, handle()) != handle()) {
        form().txtTextVisible ? seekCaret() : seek(handle());
    }
    isShowing_ = false;
    update();
}

bool TitleView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == edit_ && event->type() == QEvent::FocusOut && !isShowing_) {
        frmAddText::LeaveTyping();
    } else if (watched == edit_ && event->type() == QEvent::KeyPress
               && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        frmAddText::LeaveTyping();
        return true;
    }
    return PixelView::eventFilter(watched, event);
}

void TitleView::paintEvent(QPaintEvent* event)
{
    PixelView::paintEvent(event);
    if (isEmpty() && !form().txtTextVisible) {
        paintHint();
        return;
    }
    const QRect outline = isDragging_ ? QRect(drawnTo_, handle().size()) : hasFocus() ? handle() : QRect();
    if (!outline.isEmpty() && !form().txtTextVisible) {
        QPainter painter(this);
        painter.setPen(QPen(Qt::white, 1));
        painter.drawRect(outline.adjusted(0, 0, -1, -1));
        painter.setPen(QPen(Qt::black, 1, Qt::DashLine)); // seen on any picture
        painter.drawRect(outline.adjusted(0, 0, -1, -1));
    }
}

void TitleView::paintHint()
{
    const QString hint = tr("Click here to write the text");
    QRect box = fontMetrics().boundingRect(hint).adjusted(-10, -6, 10, 6);
    box.moveCenter(rect().center());
    QPainter painter(this);
    painter.fillRect(box, palette().color(QPalette::ToolTipBase));
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawText(box, Qt::AlignCenter, hint);
}

void TitleView::keyPressEvent(QKeyEvent* event)
{
    const bool isShift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        return frmAddText::picWorkspace_KeyDown(frmAddText::Key::kLeft, isShift);
    case Qt::Key_Right:
        return frmAddText::picWorkspace_KeyDown(frmAddText::Key::kRight, isShift);
    case Qt::Key_Up:
        return frmAddText::picWorkspace_KeyDown(frmAddText::Key::kUp, isShift);
    case Qt::Key_Down:
        return frmAddText::picWorkspace_KeyDown(frmAddText::Key::kDown, isShift);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return frmAddText::OnFormatText();
    case Qt::Key_Escape:
        isDragging_ = false;
        update();
        return;
    default:
        PixelView::keyPressEvent(event);
    }
}

void TitleView::leaveEvent(QEvent* event)
{
    frmAddText::Form_MouseMove();
    PixelView::leaveEvent(event);
}

/// The pointer leaves the picture in the middle of a drag: its edge counts, where the text can be taken again.
QPoint TitleView::within(QPoint at) const
{
    return {std::clamp(at.x(), 0, width() - 1), std::clamp(at.y(), 0, height() - 1)};
}

void TitleView::showEvent(QShowEvent* event)
{
    PixelView::showEvent(event);
    seek(handle());
}

void TitleView::press(QPoint at)
{
    setFocus();
    isDragging_ = !isEmpty() && handle().contains(at);
    if (isDragging_) {
        const QPoint grabbed = at - handle().topLeft();
        frmAddText::imgDrag_MouseMove(grabbed.x(), grabbed.y());
        drawnTo_ = handle().topLeft();
    }
}

void TitleView::move(QPoint at)
{
    if (isDragging_) {
        drawnTo_ = within(at) - QPoint(form().DragOffsetX, form().DragOffsetY);
        update();
    } else if (isEmpty()) {
        setCursor(Qt::IBeamCursor);
        frmAddText::imgDrag_MouseMove(0, 0); // a click begins the text wherever it is
    } else if (handle().contains(at)) {
        setCursor(Qt::SizeAllCursor);
        frmAddText::imgDrag_MouseMove(at.x() - form().imgDragLeft, at.y() - form().imgDragTop);
    } else {
        unsetCursor();
        frmAddText::picWorkspace_MouseMove();
    }
}

void TitleView::release(QPoint at)
{
    if (isEmpty()) { // there is no handle yet that anybody could hit
        frmAddText::OnFormatText();
        return;
    }
    if (!isDragging_) {
        return;
    }
    isDragging_ = false;
    at = within(at);
    if (handle().contains(at)) {
        frmAddText::imgDrag_DragDrop(at.x() - form().imgDragLeft, at.y() - form().imgDragTop);
    } else {
        frmAddText::picWorkspace_DragDrop(at.x(), at.y());
    }
}
