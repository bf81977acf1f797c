#include "preview/frame_offer_form.h"

#include "core/forms/frmPreview.h"
#include "preview/frame_offer.h"
#include "windowing/language.h"
#include "windowing/scheme.h"
#include "windowing/text.h"

#include <QAccessible>
#include <QPainter>
#include <algorithm>

namespace {

forms::FrameOffer& offer() { return forms::frmPreview.fmeFrameOffer; }

constexpr int kMargin = 8;
constexpr int kApart = 6;
constexpr int kShortestName = 110; // pixels; a name is not cut below that to bring the line into one row

/// Sizes in it are not torn over two lines.
QString untorn(QString text) { return text.replace(" x ", QString("%1x%1").arg(QChar(QChar::Nbsp))); }

} // namespace

FrameOfferLine::FrameOfferLine(QWidget* parent) : QWidget(parent)
{
    setObjectName("fmeFrameOffer");
    setWhatsThis(tr("The film and its first picture differ in size. Use the picture's size, and nothing is squeezed."));
    words_ = new QLabel(this);
    words_->setObjectName("lblFrameOffer");
    words_->setTextFormat(Qt::PlainText);
    words_->setWordWrap(true);
    const auto button = [this](const char* name, void (*clicked)()) {
        auto* const made = new QPushButton(this);
        made->setObjectName(name);
        made->setFocusPolicy(Qt::TabFocus); // the panel keeps the focus, as with its other buttons
        made->setAutoDefault(true);         // Enter on it is its own, not the panel's
        connect(made, &QPushButton::clicked, this, clicked);
        return made;
    };
    use_ = button("cmdUseFrame", frmPreview::cmdUseFrame_Click);
    keep_ = button("cmdKeepFrame", frmPreview::cmdKeepFrame_Click);
    hide();
}

void FrameOfferLine::showState()
{
    const bool isNew = offer().Visible && isHidden();
    setVisible(offer().Visible);
    if (!offer().Visible) {
        return;
    }
    use_->setText(translated(offer().cmdUseCaption.get()));
    keep_->setText(translated(offer().cmdKeepCaption.get()));
    layOut();
    if (isNew) {
        setAccessibleName(translated(offer().Caption.get()));
        QAccessibleEvent appeared(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&appeared);
    }
}

int FrameOfferLine::buttonsWidth() const { return use_->sizeHint().width() + kApart + keep_->sizeHint().width(); }

/// Buttons have more room than their words need, but in a panel that is too narrow for it.
int FrameOfferLine::widthOf(const QPushButton& button) const
{
    const bool isNarrow = buttonsWidth() + 2 * kMargin > width();
    return isNarrow ? fontMetrics().horizontalAdvance(button.text()) + 2 * kMargin : button.sizeHint().width();
}

bool FrameOfferLine::isOneRow(int width) const
{
    const QFontMetrics metrics = fontMetrics();
    const int name = metrics.horizontalAdvance(fromProgram(offer().FileName));
    const int words = metrics.horizontalAdvance(translated(offer().Caption.get()));
    return words - name + std::min(name, kShortestName) + kApart + buttonsWidth() + 2 * kMargin <= width;
}

/// The caption, with the file's name cut in its middle where there is no room for all of it.
QString FrameOfferLine::wordsFor(int width) const
{
    QString caption = translated(offer().Caption.get());
    const QString name = fromProgram(offer().FileName);
    const QFontMetrics metrics = fontMetrics();
    const int line = width - 2 * kMargin;
    const int room = isOneRow(width) ? line - buttonsWidth() - kApart - metrics.horizontalAdvance(caption)
                                           + metrics.horizontalAdvance(name)
                                     : line;
    caption.replace(caption.lastIndexOf(name), name.size(), metrics.elidedText(name, Qt::ElideMiddle, room));
    return untorn(caption);
}

int FrameOfferLine::heightForWidth(int width) const
{
    const int button = use_->sizeHint().height();
    if (isOneRow(width)) {
        return button + kApart;
    }
    const QRect room(0, 0, width - 2 * kMargin, 1000);
    return fontMetrics().boundingRect(room, Qt::TextWordWrap, wordsFor(width)).height() + kApart + button + kApart;
}

void FrameOfferLine::layOut()
{
    const QString words = wordsFor(width());
    const QString whole = translated(offer().Caption.get());
    words_->setText(words);
    words_->setToolTip(words == untorn(whole) ? QString() : whole);
    const int height = use_->sizeHint().height();
    const int top = this->height() - kApart / 2 - height;
    const int keep = width() - kMargin - widthOf(*keep_);
    const int use = std::max(kMargin, keep - kApart - widthOf(*use_));
    keep_->setGeometry(keep, top, widthOf(*keep_), height);
    use_->setGeometry(use, top, keep - kApart - use, height);
    if (isOneRow(width())) {
        words_->setGeometry(kMargin, top, use - kApart - kMargin, height);
    } else {
        words_->setGeometry(kMargin, kApart / 2, width() - 2 * kMargin, top - kApart / 2);
    }
}

void FrameOfferLine::resizeEvent(QResizeEvent*) { layOut(); }

void FrameOfferLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(hairline(palette()));
    painter.drawLine(0, height() - 1, width(), height() - 1);
}
