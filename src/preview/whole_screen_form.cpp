#include "preview/whole_screen_form.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPainter>
#include <QScreen>

WholeScreen::WholeScreen(QWidget* panel) : QWidget(panel, Qt::Window)
{
    setObjectName("wholeScreen");
    setWindowTitle(tr("Preview"));
    setAccessibleName(tr("Picture of the timeline on the whole screen"));
    setWhatsThis(tr("The film. Escape goes back to the window."));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_QuitOnClose, false);
    setMouseTracking(true);
    setGeometry(panel->screen()->geometry());
    constexpr int kRestMs = 2000;
    rest_.setInterval(kRestMs);
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, [this] { setCursor(Qt::BlankCursor); });
    rest_.start();
}

void WholeScreen::pointerMoved()
{
    unsetCursor();
    rest_.start();
}

void WholeScreen::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), Qt::black); }

void WholeScreen::resizeEvent(QResizeEvent*)
{
    if (resized) {
        resized();
    }
}

void WholeScreen::keyPressEvent(QKeyEvent* event) { QCoreApplication::sendEvent(parentWidget(), event); }

void WholeScreen::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (closed) {
        closed();
    }
}
