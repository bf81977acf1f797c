#include "volume/frmVolume_form.h"

#include "volume/frmVolume.h"
#include "windowing/icons.h"
#include "windowing/scheme.h"
#include "windowing/show_pass.h"

#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

namespace {

forms::FrmVolume& form() { return forms::frmVolume; }

constexpr int kWidth = 190;
constexpr int kHeight = 36;

} // namespace

VolumeForm::VolumeForm(QWidget* parent) : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint)
{
    setObjectName("frmVolume");
    setAccessibleName(tr("Volume"));
    setAttribute(Qt::WA_NoMouseReplay); // a press on the button that opened it only closes it
    setFixedSize(kWidth, kHeight);
    icon_ = new QLabel(this);
    icon_->setGeometry(10, 10, 16, 16);
    slider_ = new QSlider(Qt::Horizontal, this);
    slider_->setObjectName("sldVolume");
    slider_->setAccessibleName(tr("Volume"));
    slider_->setGeometry(34, 5, kWidth - 34 - 40, 26);
    slider_->installEventFilter(this);
    level_ = new QLabel(this);
    level_->setGeometry(kWidth - 40, 5, 30, 26);
    level_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(slider_, &QSlider::valueChanged, this, [this](int value) {
        if (!isShowing_) {
            form().sldVolume.SetValue(value);
        }
    });
    refreshIcon();
    showPass().add(this, [this] { showState(); });
}

void VolumeForm::refreshIcon()
{
    icon_->setPixmap(programPixmap("MUTE_FALSE", palette().color(QPalette::WindowText), 16, devicePixelRatioF()));
}

void VolumeForm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(hairline(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

bool VolumeForm::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate) {
        frmVolume::Form_Deactivate();
    } else if (event->type() == QEvent::PaletteChange && icon_ != nullptr) {
        refreshIcon();
    }
    return QWidget::event(event);
}

/// A popup is hidden by the toolkit when something else is pressed.
void VolumeForm::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    frmVolume::Form_Deactivate();
}

bool VolumeForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        frmVolume::Form_KeyDown();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void VolumeForm::open()
{
    QPoint at(form().Left, form().Top);
    if (const QScreen* const screen = parentWidget()->screen()) {
        const QRect room = screen->availableGeometry();
        at.setX(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() + 1 - width())));
        at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() + 1 - height())));
    }
    move(at);
    show();
    slider_->setFocus(Qt::PopupFocusReason);
}

void VolumeForm::showState()
{
    isShowing_ = true;
    slider_->setRange(form().sldVolume.Min(), form().sldVolume.Max());
    slider_->setPageStep(10);
    slider_->setValue(form().sldVolume.Value());
    level_->setText(QString::number(form().sldVolume.Value()));
    isShowing_ = false;
    if (form().Visible && !isVisible()) {
        open();
    } else if (!form().Visible && isVisible()) {
        hide();
    }
}
