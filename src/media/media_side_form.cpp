#include "media/media_side_form.h"

#include "core/forms/frmMediaList.h"
#include "media/frmMediaList_events.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/seek_style.h"
#include "windowing/text.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <algorithm>

namespace {

/// The facts, with a line around what is seen of them while the keyboard scrolls them.
class FactBox final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        const QWidget* const room = parentWidget() != nullptr ? parentWidget()->parentWidget() : nullptr;
        if (room != nullptr && room->hasFocus()) {
            QPainter painter(this);
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(visibleRegion().boundingRect().adjusted(0, 0, -1, -1));
        }
    }
};

constexpr std::size_t kDate = 3; // of the facts: it has blanks to wrap at

} // namespace

MediaSide::MediaSide(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    makePlayer();
    makeFacts();
    forms::frmMediaList.picPreviewSmallHandle = picture_->number();
    forms::frmMediaList.picPreviewSmallCleared.changed = [this] { picture_->clearPicture(); };
}

void MediaSide::makePlayer()
{
    picture_ = new FrameView("picPreviewSmall", this);
    picture_->setMouseTracking(true);
    picture_->installEventFilter(this);
    picture_->setAccessibleName(tr("Picture of the selected file"));
    picture_->setWhatsThis(tr("The selected file as it is, not as the timeline shows it."));
    play_ = new QToolButton(this);
    play_->setObjectName("cmdPlay");
    play_->setIconSize({16, 16});
    play_->setWhatsThis(tr("Plays the selected file, or stops it."));
    connect(play_, &QToolButton::clicked, this, [] { frmMediaList::cmdPlay_Click(); });
    position_ = new QSlider(Qt::Horizontal, this);
    position_->setObjectName("sldFilePreview");
    seekWherePressed(*position_);
    position_->setAccessibleName(tr("Position in the selected file"));
    position_->setWhatsThis(tr("Drag to see another place of the selected file."));
    connect(position_, &QSlider::valueChanged, this, [this](int value) {
        if (!isShowing_) {
            forms::frmMediaList.sldFilePreview.SetValue(value);
            frmMediaList::sldFilePreview_Scroll();
        }
    });
}

void MediaSide::makeFacts()
{
    factBox_ = new FactBox(this);
    connect(qApp, &QApplication::focusChanged, factBox_, [this] { factBox_->update(); });
    factBox_->setMouseTracking(true);
    factBox_->setWhatsThis(tr("Facts of the selected file."));
    factBox_->installEventFilter(this);
    auto* const grid = new QGridLayout(factBox_);
    grid->setContentsMargins(10, 6, 10, 6);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < facts_.size(); ++i) {
        const int row = static_cast<int>(i);
        factNames_[i] = new QLabel(factBox_);
        facts_[i] = new QLabel(factBox_);
        facts_[i]->setObjectName(i == 0 ? QString("lblFileDisplay") : QString("lblInfoDisplay%1").arg(i - 1));
        facts_[i]->setTextFormat(Qt::PlainText);
        facts_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        facts_[i]->setMinimumWidth(10);
        facts_[i]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        grid->addWidget(factNames_[i], row, 0, Qt::AlignLeft | Qt::AlignTop);
        grid->addWidget(facts_[i], row, 1);
        for (QLabel* const label : {factNames_[i], facts_[i]}) {
            label->setMouseTracking(true);
            label->installEventFilter(this);
        }
    }
    facts_[kDate]->setWordWrap(true);
    grid->setRowStretch(static_cast<int>(facts_.size()), 1);
    factRoom_ = new QScrollArea(this);
    factRoom_->setObjectName("fmeMediaInfo");
    factRoom_->setAccessibleName(tr("Facts of the selected file"));
    factRoom_->setFrameShape(QFrame::NoFrame);
    factRoom_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    factRoom_->setWidgetResizable(true);
    factRoom_->setWidget(factBox_);
}

void MediaSide::refreshIcons(const QPalette& quiet)
{
    playPicture_.clear();
    for (QLabel* const name : factNames_) {
        name->setPalette(quiet);
    }
}

int MediaSide::factsHeight() const
{
    constexpr int kBelowFacts = 8;
    return std::min(factBox_->layout()->heightForWidth(width()) + kBelowFacts, height() / 2);
}

/// The picture has what the facts leave.
void MediaSide::place()
{
    constexpr int kControls = 30;
    const int pictureHeight = std::max(10, height() - kControls - factsHeight());
    picture_->setGeometry(0, 0, width(), pictureHeight);
    play_->setGeometry(6, pictureHeight + 2, 26, 26);
    position_->setGeometry(38, pictureHeight + 2, width() - 46, 26);
    factRoom_->setGeometry(0, pictureHeight + kControls, width(), factsHeight());
    tellPlayerSize();
}

void MediaSide::tellPlayerSize()
{
    if (forms::frmMediaList.picPreviewSmallWidth != picture_->width()
        || forms::frmMediaList.picPreviewSmallHeight != picture_->height()) {
        forms::frmMediaList.picPreviewSmallWidth = picture_->width();
        forms::frmMediaList.picPreviewSmallHeight = picture_->height();
        frmMediaList::picPreviewSmall_Resize();
    }
}

bool MediaSide::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove) {
        return hintAt(watched);
    }
    if (event->type() == QEvent::Resize) {
        show::mark(); // a fact is cut to its room
    }
    return false;
}

/// True when the move ends here; else it would go on to the form, which has a hint of its own.
bool MediaSide::hintAt(QObject* watched)
{
    if (watched == picture_) {
        frmMediaList::picPreviewSmall_MouseMove();
        return true;
    }
    frmMediaList::fmeMediaInfo_MouseMove();
    return watched == factBox_; // a label selects its text by moves
}

void MediaSide::showFacts()
{
    const auto& f = forms::frmMediaList;
    const auto showFact = [&](std::size_t i, const Label& name, const Label& fact) {
        factNames_[i]->setText(translated(name.Caption.get()));
        // A long path keeps its end, which tells more than its beginning.
        const QString whole =
            i <= 1 ? fromProgram(fact.Caption.get()) : translated(fact.Caption.get()); // the first two are names
        const QString cut = facts_[i]->fontMetrics().elidedText(whole, Qt::ElideMiddle, facts_[i]->width());
        facts_[i]->setText(i == kDate ? whole : cut);
        facts_[i]->setToolTip(whole);
        facts_[i]->setAccessibleName(whole);
    };
    showFact(0, f.lblFile, f.lblFileDisplay);
    for (std::size_t i = 0; i < f.lblInfo.size(); ++i) {
        showFact(i + 1, f.lblInfo[i], f.lblInfoDisplay[i]);
    }
    if (!facts_[kDate]->text().isEmpty() && factRoom_->height() != factsHeight()) {
        place(); // the date takes more lines or less than the one before
    }
}

void MediaSide::showPlayer()
{
    const auto& f = forms::frmMediaList;
    position_->setVisible(f.sldFilePreview.Visible);
    position_->setRange(f.sldFilePreview.Min(), f.sldFilePreview.Max());
    const int length = f.sldFilePreview.Max() - f.sldFilePreview.Min();
    position_->setPageStep(std::max(1, length / 10));
    position_->setSingleStep(std::max(1, length / 100));
    position_->setValue(f.sldFilePreview.Value());
    play_->setVisible(f.cmdPlay.Visible);
    play_->setEnabled(f.cmdPlay.Enabled && f.lvwMediaList.Count() > 0);
    position_->setEnabled(play_->isEnabled());
    if (playPicture_ != f.cmdPlay.Picture.get()) {
        playPicture_ = f.cmdPlay.Picture.get();
        play_->setIcon(programIcon(playPicture_, palette()));
        play_->setToolTip(playPicture_ == "PLAY" ? tr("Play") : tr("Stop"));
        play_->setAccessibleName(play_->toolTip());
    }
}

void MediaSide::showState()
{
    isShowing_ = true;
    showPlayer();
    showFacts();
    isShowing_ = false;
}
