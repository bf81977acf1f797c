#include "timeline/timeline_row_form.h"

#include "hand/row_events.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/scheme.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace {

constexpr int kButtonSize = 22;

/// A tint over a picture that lets presses through.
class Tint final : public QWidget {
public:
    Tint(const QColor& ink, int edge, const QString& name, QWidget* parent) : QWidget(parent), ink_(ink), edge_(edge)
    {
        setObjectName(name);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        constexpr int kGround = 56; // of 255
        constexpr int kEdge = 140;
        QColor ink = ink_;
        ink.setAlpha(kGround);
        painter.fillRect(rect(), ink);
        ink.setAlpha(edge_ > 1 ? 255 : kEdge);
        painter.fillRect(0, 0, edge_, height(), ink);
        painter.fillRect(width() - edge_, 0, edge_, height(), ink);
    }

private:
    QColor ink_;
    int edge_; // pixels; a wide one is seen over any picture
};

/// What an option's picture is drawn as: its key, and whether it is only hinted at.
std::pair<std::string, bool> drawingOf(const std::string& picture, const std::string& whenBlank)
{
    if (picture != "BLANK") {
        return {picture, false};
    }
    return {whenBlank, true};
}

} // namespace

RowPane::RowPane(RowParts parts, QWidget* parent) : QWidget(parent), parts_(std::move(parts))
{
    name_ = new QLabel(parts_.name, this);
    name_->setAttribute(Qt::WA_TransparentForMouseEvents);
    picture_ = new PictureWidget(*parts_.picture, parts_.objectName, this);
    picture_->setAccessibleName(tr("%1 track").arg(parts_.name));
    picture_->setWhatsThis(
        tr("The row %1. Click a bar to select it, drag it to move it, drag its upper right corner to change "
           "its length and speed. With Alt, drag either end to trim it.")
            .arg(parts_.name));
    connectPicture();
    selection_ = new Tint(QColor(60, 60, 210), 1, "selection", picture_);
    dropMark_ = new Tint(QColor(224, 90, 0), 3, "dropMark", picture_);
    for (RowParts::Option* const option : {&parts_.disable, &parts_.lock, &parts_.link}) {
        auto* const button = new QToolButton(this);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize({16, 16});
        button->setCheckable(true);
        connect(button, &QToolButton::clicked, this, [option, button] {
            button->setChecked(option->box->Value == 1); // the toolkit has turned it over; the program's state decides
            option->click();
        });
        toggles_.push_back({option, button, {}});
    }
    toggles_[0].button->setObjectName(parts_.objectName + "_disable");
    toggles_[1].button->setObjectName(parts_.objectName + "_lock");
    toggles_[2].button->setObjectName(parts_.objectName + "_link");
    toggles_[0].button->setAccessibleName(tr("Hide %1").arg(parts_.name));
    toggles_[1].button->setAccessibleName(tr("Lock %1").arg(parts_.name));
    toggles_[2].button->setAccessibleName(tr("Link %1").arg(parts_.name));
    toggles_[0].button->setWhatsThis(tr("Whether this row is seen or heard when the film is played."));
    toggles_[1].button->setWhatsThis(tr("A locked row cannot be edited."));
    toggles_[2].button->setWhatsThis(tr("Whether this row takes part in what is done with the range."));
    setMouseTracking(true);
}

void RowPane::connectPicture()
{
    picture_->pressed = [this](int button, int shift, float x, float y) { press(button, shift, x, y); };
    picture_->moved = [this](int button, int shift, float x, float y) { move(button, shift, x, y); };
    picture_->released = [this](int button, int shift, float x, float y) { release(button, shift, x, y); };
    picture_->keyDown = [this](int key, int shift) {
        parts_.keyDown(key, shift);
        return isHeld_ || key == 37 || key == 39; // the ground below would move the slider
    };
    picture_->setAcceptDrops(true);
    picture_->takesDrops = [this] {
        const QObject* const source = QApplication::focusWidget();
        const bool isEffect = source != nullptr && source->objectName() == "lvwEffects";
        return isEffect == parts_.objectName.startsWith("picEffect");
    };
    picture_->dropped = [this](int shift, float x) { parts_.dropped(shift, x); };
    picture_->filesDropped = parts_.filesDropped;
    picture_->draggedOver = parts_.draggedOver;
    picture_->draggedOff = parts_.draggedOff;
    picture_->doubleClicked = [this](int button, int shift) {
        isDouble_ = button == programButton(Qt::LeftButton) && shift == 0;
    };
    picture_->installEventFilter(this);
}

void RowPane::press(int button, int shift, float x, float y)
{
    if (button == programButton(Qt::LeftButton)) {
        isHeld_ = true;
        isDragged_ = false;
        isDouble_ = false;
        pressX_ = x;
    }
    parts_.pressed(button, shift, x, y);
}

void RowPane::move(int button, int shift, float x, float y)
{
    const bool isDown = button == programButton(Qt::LeftButton);
    if (isHeld_ && !isDown) {
        loseRelease();
    }
    // A hand that shakes in a click moves nothing.
    constexpr float kShake = 3;
    if (isHeld_ && !isDragged_ && std::abs(x - pressX_) < kShake) {
        return;
    }
    isDragged_ = isHeld_;
    parts_.moved(isHeld_ || !isDown ? button : 0, shift, x, y);
}

void RowPane::release(int button, int shift, float x, float y)
{
    if (button == programButton(Qt::LeftButton)) {
        isHeld_ = false;
    }
    parts_.released(button, shift, x, y);
    if (!isHeld_ && std::exchange(isDouble_, false) && !isDragged_) {
        parts_.doubleClicked(x);
    }
}

void RowPane::loseRelease()
{
    isHeld_ = false;
    frmTimeline::EndItemDrag();
}

bool RowPane::eventFilter(QObject* watched, QEvent* event)
{
    if (isHeld_ && watched == picture_) {
        switch (event->type()) {
        case QEvent::ShortcutOverride: // no command runs in the middle of a drag
            event->accept();
            return true;
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            loseRelease();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void RowPane::setHeaderWidth(int width)
{
    headerWidth_ = width;
    place();
}

void RowPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void RowPane::place()
{
    constexpr int kGap = 6;
    int x = headerWidth_ - kGap;
    for (auto toggle = toggles_.rbegin(); toggle != toggles_.rend(); ++toggle) {
        x -= kButtonSize;
        toggle->button->setGeometry(x, (height() - kButtonSize) / 2, kButtonSize, kButtonSize);
    }
    name_->setGeometry(kGap + 2, 0, x - kGap - 2, height());
    picture_->setGeometry(headerWidth_, 0, std::max(1, width() - headerWidth_), height());
}

void RowPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(0, 0, headerWidth_, height(), palette().color(QPalette::Button));
    painter.setPen(hairline(palette()));
    painter.drawLine(headerWidth_ - 1, 0, headerWidth_ - 1, height());
}

void RowPane::refreshIcons()
{
    for (Toggle& toggle : toggles_) {
        toggle.shownPicture.clear();
        showToggle(toggle);
    }
}

void RowPane::showToggle(Toggle& toggle)
{
    const ImageBox& image = *toggle.option->image;
    QToolButton& button = *toggle.button;
    button.setVisible(image.Visible);
    button.setEnabled(toggle.option->box->Enabled);
    button.setChecked(toggle.option->box->Value == 1);
    button.setToolTip(translated(image.ToolTipText.get()));
    if (toggle.shownPicture == image.Picture.get()) {
        return;
    }
    toggle.shownPicture = image.Picture.get();
    const bool isAudio = parts_.objectName.startsWith("picAudio");
    const std::string whenBlank = toggle.option == &parts_.lock   ? "unlock"
                                  : toggle.option == &parts_.link ? "link"
                                  : isAudio                       ? "disabled_audio"
                                                                  : "disabled";
    const auto [key, isHint] = drawingOf(toggle.shownPicture, whenBlank);
    QColor ink = palette().color(QPalette::WindowText);
    // A box that is off is quieter, but no fainter than what can be used; a track that is switched off must be seen to
    // be.
    if (isHint && toggle.option != &parts_.disable) {
        ink = quietText(palette());
    } else if (isHint) {
        ink = QColor(0xC8, 0x4A, 0x3A);
    }
    QIcon icon;
    for (const double ratio : {1.0, 1.5, 2.0}) {
        icon.addPixmap(programPixmap(key, ink, 16, ratio));
    }
    button.setIcon(icon);
}

void RowPane::showState()
{
    picture_->showState();
    for (Toggle& toggle : toggles_) {
        showToggle(toggle);
    }
    picture_->setToolTip(translated(parts_.pointer->ToolTipText.get()));
    const bool resizes = parts_.pointer->MousePointer == 9;
    if (resizes != (picture_->cursor().shape() == Qt::SizeHorCursor)) {
        picture_->setCursor(resizes ? Qt::SizeHorCursor : Qt::ArrowCursor);
    }
    const Marker& shape = *parts_.selection;
    selection_->setVisible(shape.Visible);
    selection_->setGeometry(shape.Left, 0, std::max<std::int32_t>(1, shape.Width), picture_->height());
    const Marker& mark = parts_.pointer->DropMark;
    dropMark_->setVisible(mark.Visible);
    dropMark_->setGeometry(mark.Left, 0, mark.Width, picture_->height());
}
