#include "tools/frmKeyColor_form.h"

#include "core/forms/frmKeyColor.h"
#include "tools/frmKeyColor.h"
#include "windowing/bound_dialogue.h"
#include "windowing/icons.h"
#include "windowing/pixel_view.h"
#include "windowing/scheme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace frmKeyColor {

namespace {

forms::FrmKeyColor& form() { return forms::frmKeyColor; }

class Dialogue final : public BoundDialogue {
public:
    Dialogue();

private:
    QWidget* makeFrame();
    QBoxLayout* makeColours();
    QLayout* makeNumbers();
    QLayout* makePrimaries();
    QBoxLayout* makeButtons();
    QPixmap piece(std::int32_t colour, QSize size) const;
    QLabel* display(const char* name, const QString& text, const Shown<std::int32_t>& colour);
    QCursor dropper() const;
};

Dialogue::Dialogue() : BoundDialogue("frmKeyColor", QObject::tr("Overlay Key Color"), cmdCancel_Click)
{
    auto* const picture = new QVBoxLayout;
    picture->addWidget(makeFrame());
    auto* const hint = new QLabel(tr("Press on the picture to pick a color."), this);
    hint->setForegroundRole(QPalette::WindowText);
    picture->addWidget(hint);
    picture->addStretch();
    auto* const controls = new QVBoxLayout;
    controls->setSpacing(12);
    controls->addLayout(makeColours());
    controls->addLayout(makeNumbers());
    controls->addLayout(makePrimaries());
    controls->addStretch();
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(18);
    columns->addLayout(picture);
    columns->addLayout(controls);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 14, 16, 14);
    rows->setSpacing(14);
    rows->addLayout(columns);
    rows->addLayout(makeButtons());
    rows->setSizeConstraint(QLayout::SetFixedSize);
    start();
    findChild<QLineEdit*>("txtRed")->setFocus();
}

QWidget* Dialogue::makeFrame()
{
    auto* const view = new PixelView(form().picDisplay, this);
    view->setObjectName("imgDisplay");
    view->setAccessibleName(tr("First frame of the overlay"));
    view->setCursor(dropper());
    view->pressed = [](QPoint at) { imgDisplay_MouseDown(at.x(), at.y()); };
    view->moved = [](QPoint at) { imgDisplay_MouseMove(at.x(), at.y()); };
    view->released = [](QPoint) { imgDisplay_MouseUp(); };
    also([view] { view->showPicture(); });
    return view;
}

/// Small enough not to cover what it points at, and seen on light and dark.
QCursor Dialogue::dropper() const
{
    constexpr int kSize = 24;
    const QPixmap picture = programPixmap("DROPPER", Qt::black, kSize, devicePixelRatioF());
    return QCursor(picture, 1, kSize - 2);
}

QPixmap Dialogue::piece(std::int32_t colour, QSize size) const
{
    QPixmap picture(size * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(trackColour(colour));
    QPainter painter(&picture);
    painter.setPen(hairline(palette()));
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    return picture;
}

QLabel* Dialogue::display(const char* name, const QString& text, const Shown<std::int32_t>& colour)
{
    auto* const label = new QLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(text);
    also([this, label, &colour, shown = -1]() mutable {
        if (std::exchange(shown, colour.get()) != colour.get()) {
            label->setPixmap(piece(colour, {72, 36}));
        }
    });
    return label;
}

QBoxLayout* Dialogue::makeColours()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(new QLabel(tr("Now:"), this));
    row->addWidget(display("picCurrentColor", tr("Present color"), form().picCurrentColor));
    row->addSpacing(12);
    row->addWidget(new QLabel(tr("New:"), this));
    row->addWidget(display("picColorDisplay", tr("Chosen color"), form().picColorDisplay));
    row->addStretch();
    return row;
}

QLayout* Dialogue::makeNumbers()
{
    struct Row {
        const char* box;
        const char* slider;
        QString text;
        TextBox& boxState;
        Slider& sliderState;
    };
    const Row rows[] = {{"txtRed", "sldRed", tr("&Red"), form().txtRed, form().sldRed},
                        {"txtGreen", "sldGreen", tr("&Green"), form().txtGreen, form().sldGreen},
                        {"txtBlue", "sldBlue", tr("&Blue"), form().txtBlue, form().sldBlue}};
    auto* const grid = new QGridLayout;
    for (int place = 0; const Row& row : rows) {
        // Tab goes as the widgets are made: along the row.
        QSlider* const slide = slider(row.slider, QString(row.text).remove('&'), row.sliderState);
        slide->setTickInterval(51);
        slide->setPageStep(16);
        slide->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
        QLineEdit* const box = textBox(row.box, {}, row.boxState);
        box->setFixedWidth(fontMetrics().horizontalAdvance("00000") + 16);
        auto* const label = new QLabel(row.text, this);
        label->setBuddy(box);
        grid->addWidget(label, place, 0);
        grid->addWidget(slide, place, 1);
        grid->addWidget(box, place, 2);
        ++place;
    }
    return grid;
}

QLayout* Dialogue::makePrimaries()
{
    const struct {
        QString name;
        std::int32_t colour; // red lowest
    } primaries[] = {{tr("Black"), 0},       {tr("White"), 0xFFFFFF},   {tr("Red"), 0xFF},      {tr("Green"), 0xFF00},
                     {tr("Blue"), 0xFF0000}, {tr("Magenta"), 0xFF00FF}, {tr("Cyan"), 0xFFFF00}, {tr("Yellow"), 0xFFFF}};
    auto* const row = new QHBoxLayout;
    row->setSpacing(2);
    for (std::int16_t index = 0; const auto& primary : primaries) {
        constexpr QSize kPiece(22, 22);
        auto* const made = new QToolButton(this);
        made->setObjectName(QString("lblPrimaryColors%1").arg(index));
        made->setAccessibleName(primary.name);
        made->setToolTip(primary.name);
        made->setFocusPolicy(Qt::StrongFocus);
        made->setIconSize(kPiece);
        made->setIcon(QIcon(piece(primary.colour, kPiece)));
        made->setCursor(dropper());
        connect(made, &QToolButton::clicked, this, [index] { lblPrimaryColors_Click(index); });
        row->addWidget(made);
        ++index;
    }
    row->addStretch();
    auto* const column = new QVBoxLayout;
    column->addWidget(new QLabel(tr("Primary colors:"), this));
    column->addLayout(row);
    return column;
}

QBoxLayout* Dialogue::makeButtons()
{
    return lastRow({button("cmdOK", tr("OK"), cmdOK_Click), button("cmdCancel", tr("Cancel"), cmdCancel_Click)});
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmKeyColor
