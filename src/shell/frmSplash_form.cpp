#include "shell/frmSplash_form.h"

#include "windowing/icons.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

SplashForm::SplashForm() : QWidget(nullptr, Qt::SplashScreen | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint)
{
    setObjectName("frmSplash");
    setAttribute(Qt::WA_ShowWithoutActivating);
    resize(420, 220);
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
}

void SplashForm::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, QColor(0x24, 0x44, 0x5A));
    ground.setColorAt(1, QColor(0x14, 0x26, 0x34));
    painter.fillRect(rect(), ground);
    constexpr int kPicture = 84;
    painter.drawPixmap(36, (height() - kPicture) / 2, applicationIcon().pixmap(kPicture, kPicture));
    painter.setPen(QColor(0xF6, 0xF2, 0xE8));
    QFont title = font();
    title.setPixelSize(34);
    title.setBold(true);
    painter.setFont(title);
    painter.drawText(QRect(144, 62, width() - 160, 46), Qt::AlignLeft | Qt::AlignVCenter, "Quillmont");
    QFont words = font();
    words.setPixelSize(13);
    painter.setFont(words);
    painter.setPen(QColor(0xC6, 0xD2, 0xDA));
    painter.drawText(QRect(146, 112, width() - 160, 24), Qt::AlignLeft | Qt::AlignVCenter, tr("Getting ready..."));
}
