#include "preview/frmPreview_form.h"

#include "core/forms/frmPreview.h"
#include "preview/frmPreview_events.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/picture_widget.h"
#include "windowing/seek_style.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"

#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <utility>

namespace {

forms::FrmPreview& form() { return forms::frmPreview; }

constexpr int kMargin = 8;
constexpr int kAround = 6; // of ground around the picture's room
constexpr int kSeekHeight = 26;
constexpr int kTransportHeight = 36;
constexpr int kButton = 28;
constexpr int kNarrow = 290; // below it, the times stand under the bar

int around() { return form().WholeScreen ? 0 : kAround; }

/// Where the picture stands on the ground.
QRect picturePlace()
{
    const forms::Rectangle& p = form().picDisplay.get();
    return {around() + p.left, around() + p.top, p.width, p.height};
}

/// What lies around the picture: dark in every palette, so that the picture's edges are seen and its colours are not
/// tinted.
class PictureGround final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        if (form().WholeScreen) {
            painter.fillRect(rect(), Qt::black);
            return;
        }
        painter.fillRect(rect(), QColor(0x20, 0x22, 0x26));
        painter.setPen(QColor(0x48, 0x4C, 0x52)); // shpOutlineRect
        painter.drawRect(picturePlace().adjusted(-1, -1, 0, 0));
    }
};

} // namespace

PreviewForm::PreviewForm(QWidget* parent) : QWidget(parent)
{
    setObjectName("frmPreview");
    setWhatsThis(tr("The preview: plays what lies on the timeline."));
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    offer_ = new FrameOfferLine(this);
    watch(offer_, frmPreview::fmeDisplay_MouseMove);
    makePicture();
    makeSeekBar();
    makeTransport();
    form().picDisplayHandle = picture_->number();
    driveTimer(this, form().tm);
    showPass().add(this, [this] { showState(); });
}

void PreviewForm::watch(QWidget* widget, Hint hint)
{
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
    hints_.emplace_back(widget, hint);
}

void PreviewForm::makePicture()
{
    ground_ = new PictureGround(this);
    ground_->setObjectName("fmeDisplay");
    watch(ground_, frmPreview::fmeDisplay_MouseMove);
    picture_ = new FrameView("picDisplay", ground_);
    picture_->setAccessibleName(tr("Picture of the timeline"));
    picture_->setWhatsThis(tr("The film at the place of the slider. A double click gives it the whole screen."));
    watch(picture_, frmPreview::picDisplay_MouseMove);
    emptyHint_ = new QLabel(tr("What lies on the timeline\nplays here."), picture_);
    emptyHint_->setAlignment(Qt::AlignCenter);
    emptyHint_->setWordWrap(true);
    emptyHint_->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette pale = emptyHint_->palette();
    pale.setColor(QPalette::WindowText, QColor(0x9A, 0xA0, 0xA8));
    emptyHint_->setPalette(pale);
}

void PreviewForm::makeSeekBar()
{
    currentTime_ = new QLabel(this);
    currentTime_->setObjectName("lblCurrentTime");
    duration_ = new QLabel(this);
    duration_->setObjectName("lblDuration");
    currentTime_->setWhatsThis(tr("The time of the picture."));
    duration_->setWhatsThis(tr("The length of the film."));
    duration_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    watch(currentTime_, frmPreview::lblCurrentTime_MouseMove);
    watch(duration_, frmPreview::lblDuration_MouseMove);
    seekBar_ = new QSlider(Qt::Horizontal, this);
    seekBar_->setObjectName("sldSeekBar");
    seekBar_->setAccessibleName(tr("Position in the timeline"));
    seekBar_->setWhatsThis(tr("Press it or drag along it to see another place of the film."));
    seekWherePressed(*seekBar_);
    watch(seekBar_, frmPreview::sldSeekBar_MouseMove);
    connect(seekBar_, &QSlider::valueChanged, this, &PreviewForm::seekBarMoved);
    connect(seekBar_, &QSlider::sliderReleased, this, [] { frmPreview::sldSeekBar_MouseUp(); });
}

QToolButton* PreviewForm::addButton(const char* name, void (*clicked)(), Hint hint)
{
    auto* const button = new QToolButton(this);
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setIconSize({16, 16});
    button->setFocusPolicy(Qt::TabFocus); // a click gives the focus to the panel, whose keys are Enter and Space
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    watch(button, hint);
    connect(button, &QToolButton::clicked, this, clicked);
    return button;
}

void PreviewForm::makeTransport()
{
    namespace events = frmPreview;
    transport_ = {addButton("cmdPlay", events::cmdPlay_Click, events::cmdPlay_MouseMove),
                  addButton("cmdPause", events::cmdPause_Click, events::cmdPause_MouseMove),
                  addButton("cmdStop", events::cmdStop_Click, events::cmdStop_MouseMove),
                  addButton("cmdRewind", events::cmdRewind_Click, events::cmdRewind_MouseMove),
                  addButton("cmdForward", events::cmdForward_Click, events::cmdForward_MouseMove)};
    repeat_ = addButton("cmdRepeat", events::cmdRepeat_Click, events::cmdRepeat_MouseMove);
    repeat_->setCheckable(true);
    volume_ = addButton(
        "cmdMute", [] {}, events::cmdMute_MouseMove);
    connect(volume_, &QToolButton::clicked, this, &PreviewForm::openVolume);
    const std::array answers = {tr("Plays the film, or the range, from the slider on."),
                                tr("Stays at the picture that you see. Play goes on from there."),
                                tr("Ends playing, and goes back to the beginning."),
                                tr("Goes back by a twentieth of the film."), tr("Goes on by a twentieth of the film.")};
    for (std::size_t i = 0; i < transport_.size(); ++i) {
        transport_[i]->setWhatsThis(answers[i]);
    }
    repeat_->setWhatsThis(tr("While it is down, playing begins again when the end is reached."));
    volume_->setWhatsThis(tr("How loud you hear it. It changes nothing in the film."));
}

void PreviewForm::openVolume()
{
    const QPoint corner = volume_->mapToGlobal(QPoint(0, volume_->height()));
    frmPreview::cmdMute_Click(corner.x(), corner.y());
}

void PreviewForm::seekBarMoved(int value)
{
    if (isShowing_) {
        return;
    }
    form().sldSeekBar.SetValue(value);
    frmPreview::sldSeekBar_Scroll();
    // Moved by a key or the wheel: no release comes. Of a button that is down one does, and must not meet the bar in
    // the middle of the press, as the timeline's slider lets events run.
    if (!seekBar_->isSliderDown() && QGuiApplication::mouseButtons() == Qt::NoButton) {
        frmPreview::sldSeekBar_Click();
    }
}

void PreviewForm::resizeEvent(QResizeEvent*) { layOut(); }

void PreviewForm::layOut()
{
    const int top = offer_->isHidden() ? 0 : offer_->heightForWidth(width());
    offer_->setGeometry(0, 0, width(), top);
    const bool isNarrow = width() < kNarrow;
    const int seekHeight = kSeekHeight + (isNarrow ? fontMetrics().height() : 0);
    const int groundHeight = std::max(10, height() - top - seekHeight - kTransportHeight - 4);
    if (whole_ == nullptr) {
        ground_->setGeometry(0, top, width(), groundHeight);
    }
    layOutSeekBar(top + groundHeight + 4, isNarrow);
    layOutTransport(top + groundHeight + 4 + seekHeight);
    tellRoom();
}

void PreviewForm::tellRoom()
{
    form().fmeDisplayWidth = std::max(1, ground_->width() - 2 * around());
    form().fmeDisplayHeight = std::max(1, ground_->height() - 2 * around());
    frmPreview::Resize();
}

/// The ground with the picture moves into a window of its own, and back.
void PreviewForm::showWholeScreen()
{
    if (form().WholeScreen == (whole_ != nullptr)) {
        return;
    }
    if (form().WholeScreen) {
        whole_ = new WholeScreen(this);
        whole_->closed = frmPreview::LeaveWholeScreen;
        whole_->resized = [this] {
            ground_->setGeometry(whole_->rect());
            tellRoom();
        };
        ground_->setParent(whole_);
        whole_->showFullScreen();
        whole_->activateWindow();
        whole_->setFocus();
    } else {
        ground_->setParent(this);
        std::exchange(whole_, nullptr)->deleteLater();
        layOut();
        window()->activateWindow();
    }
    ground_->show();
}

void PreviewForm::layOutSeekBar(int top, bool isNarrow)
{
    const int timeWidth = fontMetrics().horizontalAdvance("0:00:00.0000");
    const int line = isNarrow ? fontMetrics().height() : kSeekHeight;
    const int timeTop = isNarrow ? top + kSeekHeight : top;
    const int barLeft = isNarrow ? kMargin : kMargin + timeWidth + 4;
    currentTime_->setGeometry(kMargin, timeTop, timeWidth, line);
    duration_->setGeometry(width() - kMargin - timeWidth, timeTop, timeWidth, line);
    seekBar_->setGeometry(barLeft, top, std::max(10, width() - 2 * barLeft), kSeekHeight);
}

/// The transport at the left, loop and volume at the right: with their captions where there is room for them.
void PreviewForm::layOutTransport(int top)
{
    const int count = static_cast<int>(transport_.size());
    const int plain = std::min(kButton, (width() - 2 * kMargin) / (count + 2));
    const auto captioned = [&](const QToolButton& button) {
        return 16 + 18 + fontMetrics().horizontalAdvance(button.text());
    };
    constexpr int kApart = 12;
    const int wanted = count * kButton + kApart + captioned(*repeat_) + captioned(*volume_);
    const bool hasRoom = 2 * kMargin + wanted <= width();
    for (int i = 0; i < count; ++i) {
        transport_[static_cast<std::size_t>(i)]->setGeometry(kMargin + i * plain, top, plain, kButton);
    }
    int right = width() - kMargin;
    for (QToolButton* const button : {volume_, repeat_}) {
        button->setToolButtonStyle(hasRoom ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
        const int buttonWidth = hasRoom ? captioned(*button) : plain;
        right -= buttonWidth;
        button->setGeometry(right, top, buttonWidth, kButton);
    }
}

void PreviewForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        for (QToolButton* const button : findChildren<QToolButton*>()) {
            button->setProperty("picture", {}); // drawn anew in the palette's ink
        }
        show::mark();
    }
}

void PreviewForm::keyPressEvent(QKeyEvent* event)
{
    const int key = programKey(event->key());
    if (key == 13 || key == 32) {
        if (!event->isAutoRepeat()) { // a held key would play and pause in turns
            frmPreview::Form_KeyDown(key);
        }
        return;
    }
    QWidget::keyPressEvent(event);
}

void PreviewForm::mouseMoveEvent(QMouseEvent*) { frmPreview::fmeDisplay_MouseMove(); }

bool PreviewForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick
        && (watched == picture_ || (watched == ground_ && whole_ != nullptr))) {
        frmPreview::TurnWholeScreen();
        return true;
    }
    if (event->type() == QEvent::MouseMove) {
        if (whole_ != nullptr) {
            whole_->pointerMoved();
        }
        const auto found = std::ranges::find(hints_, watched, &std::pair<QObject*, Hint>::first);
        if (found != hints_.end()) {
            found->second();
            // It would go on to the form, which has a hint of its own.
            return static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void PreviewForm::showSeekBar()
{
    const auto& bar = form().sldSeekBar;
    seekBar_->setRange(bar.Min(), bar.Max());
    const int length = bar.Max() - bar.Min();
    seekBar_->setPageStep(std::max(1, length / 10));
    seekBar_->setSingleStep(std::max(1, length / 100));
    seekBar_->setValue(bar.Value());
    currentTime_->setText(fromProgram(form().lblCurrentTime.Caption.get()));
    duration_->setText(fromProgram(form().lblDuration.Caption.get()));
}

void PreviewForm::showButtons()
{
    const auto dress = [&](QToolButton& shown, const std::string& picture, const std::string& toolTip) {
        const QString key = fromProgram(picture);
        if (shown.property("picture").toString() != key) {
            shown.setProperty("picture", key);
            shown.setIcon(programIcon(picture, palette()));
            shown.setToolTip(translated(toolTip));
            shown.setAccessibleName(shown.toolTip());
        }
    };
    const std::array buttons{&form().cmdPlay, &form().cmdPause, &form().cmdStop, &form().cmdRewind, &form().cmdForward};
    for (std::size_t i = 0; i < transport_.size(); ++i) {
        dress(*transport_[i], buttons[i]->Picture, buttons[i]->ToolTipText);
        transport_[i]->setEnabled(buttons[i]->Enabled);
    }
    dress(*repeat_, form().cmdRepeat.Picture, form().cmdRepeat.ToolTipText);
    repeat_->setChecked(form().cmdRepeat.Value);
    dress(*volume_, form().cmdMute.Picture, form().cmdMute.ToolTipText);
    const QString loop = translated(form().cmdRepeat.Caption.get());
    const QString volume = translated(form().cmdMuteCaption.get());
    if (repeat_->text() != loop || volume_->text() != volume) {
        repeat_->setText(loop);
        volume_->setText(volume);
        layOutTransport(transport_.front()->y());
    }
}

/// The line takes its room from the picture, so that it covers nothing.
void PreviewForm::showOffer()
{
    const bool wasHidden = offer_->isHidden();
    offer_->showState();
    const int wanted = offer_->isHidden() ? 0 : offer_->heightForWidth(width());
    if (wasHidden != offer_->isHidden() || offer_->height() != wanted) {
        layOut();
    }
}

void PreviewForm::showState()
{
    isShowing_ = true;
    showOffer();
    showWholeScreen();
    if (picture_->geometry() != picturePlace()) {
        picture_->setGeometry(picturePlace());
        emptyHint_->setGeometry(picture_->rect().adjusted(8, 8, -8, -8));
        ground_->update();
    }
    emptyHint_->setVisible(form().PreviewBuilt == engine::kFalse);
    showSeekBar();
    showButtons();
    isShowing_ = false;
}
