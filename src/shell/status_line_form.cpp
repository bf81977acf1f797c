#include "shell/status_line_form.h"

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "timeline/bar_pictures.h"
#include "windowing/cut_label.h"
#include "windowing/language.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <algorithm>

namespace {

QLabel* makeSign(const char* name, const QString& text, const QString& toolTip, QStatusBar& bar)
{
    auto* const sign = new QLabel(text, &bar);
    sign->setObjectName(name);
    sign->setContentsMargins(6, 0, 6, 0);
    sign->setToolTip(toolTip);
    sign->setWhatsThis(toolTip);
    sign->hide();
    bar.addPermanentWidget(sign);
    return sign;
}

} // namespace

StatusLine::StatusLine(QStatusBar& bar)
{
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        panels_[i] = i == 0 ? message_ = new CutLabel(&bar) : new QLabel(&bar);
        panels_[i]->setObjectName(QString("sbr%1").arg(i + 1));
        panels_[i]->setTextFormat(Qt::PlainText);
        panels_[i]->setContentsMargins(6, 0, 6, 0);
    }
    panels_[0]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const int timeWidth = bar.fontMetrics().horizontalAdvance("00:00:00.000") + 16;
    progress_ = new QProgressBar(&bar);
    progress_->setObjectName("pbarMain");
    progress_->setFixedWidth(180);
    progress_->setMaximumHeight(16);
    progress_->setAccessibleName(QObject::tr("Progress"));
    progress_->setWhatsThis(QObject::tr("How far the task has come."));
    cancel_ = new QPushButton(QObject::tr("Cancel"), &bar);
    cancel_->setWhatsThis(QObject::tr("Ends the task after the file that is being read."));
    QObject::connect(cancel_, &QPushButton::clicked, &bar, [] { state::OpeningCancelled = true; });
    bar.addWidget(panels_[0], 1);
    bar.addPermanentWidget(cancel_);
    bar.addPermanentWidget(progress_);
    makeSigns(bar);
    for (std::size_t i = 1; i < panels_.size(); ++i) {
        panels_[i]->setMinimumWidth(i == 3 ? 2 * timeWidth : timeWidth);
        bar.addPermanentWidget(panels_[i]);
    }
    panels_[1]->setToolTip(QObject::tr("Position of the slider"));
    panels_[2]->setToolTip(QObject::tr("Length of the timeline"));
    panels_[3]->setToolTip(QObject::tr("Selected item"));
    panels_[0]->setWhatsThis(QObject::tr("What the part under the pointer is for, or how far a task has come."));
    panels_[1]->setWhatsThis(QObject::tr("The time at which the slider stands."));
    panels_[2]->setWhatsThis(QObject::tr("The length of the film."));
    panels_[3]->setWhatsThis(QObject::tr("When the selected item begins and ends."));
}

void StatusLine::makeSigns(QStatusBar& bar)
{
    barsSign_ =
        makeSign("barsSign", QObject::tr("Making pictures"),
                 QObject::tr("Pictures and waves on bars are being made. They wait while the film plays."), bar);
    constexpr int kNoticed = 700; // ms; what is made within that needs no sign
    awaited_.setSingleShot(true);
    awaited_.setInterval(kNoticed);
    QObject::connect(&awaited_, &QTimer::timeout, barsSign_, &QWidget::show);
    trimSign_ =
        makeSign("trimSign", QObject::tr("Trim Mode"),
                 QObject::tr("While this is on, both ends of a bar trim it. Tools > Trim Mode, or T, ends it."), bar);
    trimSign_->setAutoFillBackground(true); // seen from the corner of the eye
    trimSign_->setBackgroundRole(QPalette::Highlight);
    trimSign_->setForegroundRole(QPalette::HighlightedText);
}

void StatusLine::showState()
{
    const auto& m = forms::mdiTarnwick;
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        const QString text = translated(const_cast<StatusBar&>(m.sbr).Panel(static_cast<std::int32_t>(i) + 1).get());
        i == 0 ? message_->setWhole(text) : panels_[i]->setText(text); // the others have their room
    }
    progress_->setVisible(m.pbarMain.Visible);
    progress_->setRange(m.pbarMain.Min(), std::max(m.pbarMain.Min() + 1, m.pbarMain.Max()));
    progress_->setValue(m.pbarMain.Value());
    cancel_->setVisible(m.pbarMain.Visible || (state::BusyOpening && QApplication::activeModalWidget() == nullptr));
    if (!timeline::areBarPicturesAwaited()) {
        awaited_.stop();
        barsSign_->hide();
    } else if (barsSign_->isHidden() && !awaited_.isActive()) {
        awaited_.start();
    }
    trimSign_->setVisible(m.mnuToolsTrimMode.Checked);
}
