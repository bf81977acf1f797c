#include "tools/frmAddText_form.h"

#include "core/forms/frmAddText.h"
#include "tools/frmAddText.h"
#include "tools/title_view_form.h"
#include "windowing/bound_dialogue.h"
#include "windowing/icons.h"
#include "windowing/language.h"
#include "windowing/text.h"
#include "windowing/turn_end.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace frmAddText {

namespace {

forms::FrmAddText& form() { return forms::frmAddText; }

template <Position Where>
void place()
{
    PlaceText(Where);
}

/// An entry of the menus, of the toolbar, or of both.
struct Entry {
    const char* name;
    const char* caption; // of the menu; none for a rule
    const char* keys;
    const char* icon; // of the toolbar's button; none when it has none there
    void (*run)();
    const Menu* ticked; // none: it has no tick
};

const std::vector<Entry> kFile = {
    {"mnuFileNew", "&New", "Ctrl+N", "NEW", mnuFileNew_Click, nullptr},
    {"mnuFileSave", "&Save", "Ctrl+S", "SAVE", mnuFileSave_Click, nullptr},
    {"mnuFileSaveas", "Save &As...", "", nullptr, mnuFileSaveas_Click, nullptr},
    {"", nullptr, "", nullptr, nullptr, nullptr},
    {"mnuFileSaveAndClose", "Save and &Close", "", nullptr, mnuFileSaveAndClose_Click, nullptr},
    {"mnuFileSaveAndAdd", "Save and A&dd to Overlay", "", nullptr, mnuFileSaveAndAdd_Click, nullptr},
    {"mnuFileSaveAddAndClose", "Sa&ve, Add to Overlay and Close", "", nullptr, mnuFileSaveAddAndClose_Click, nullptr},
    {"", nullptr, "", nullptr, nullptr, nullptr},
    {"mnuFileClose", "C&lose", "", nullptr, mnuFileClose_Click, nullptr},
};

const std::vector<Entry> kFormat = {
    {"mnuFormatText", "&Text", "F2", "ADD_TEXT", OnFormatText, nullptr},
    {"", nullptr, "", nullptr, nullptr, nullptr},
    {"mnuFormatFont", "&Font...", "", nullptr, mnuFormatFont_Click, nullptr},
    {"mnuFormatFontStyleBold", "&Bold", "Ctrl+B", "BOLD", mnuFormatFontStyleBold_Click,
     &forms::frmAddText.mnuFormatFontStyleBold},
    {"mnuFormatFontStyleItalic", "&Italic", "Ctrl+I", "ITALIC", mnuFormatFontStyleItalic_Click,
     &forms::frmAddText.mnuFormatFontStyleItalic},
    {"mnuFormatFontStyleUnderline", "&Underline", "Ctrl+U", "UNDERLINE", mnuFormatFontStyleUnderline_Click,
     &forms::frmAddText.mnuFormatFontStyleUnderline},
    {"mnuFormatFontStyleStrikethrough", "&Strikethrough", "", "STRIKETHROUGH", mnuFormatFontStyleStrikethrough_Click,
     &forms::frmAddText.mnuFormatFontStyleStrikethrough},
    {"", nullptr, "", nullptr, nullptr, nullptr},
    {"mnuFormatFontColor", "Font &Color...", "", nullptr, mnuFormatFontColor_Click, nullptr},
    {"mnuFormatBackgroundColor", "Back&ground Color...", "", nullptr, mnuFormatBackgroundColor_Click, nullptr},
    {"mnuFormatTransparentBackground", "T&ransparent Background", "", "TRANSPARENT_BACKGROUND",
     mnuFormatTransparentBackground_Click, &forms::frmAddText.mnuFormatTransparentBackground},
    {"", nullptr, "", nullptr, nullptr, nullptr},
};

const std::vector<Entry> kPositionsMenu = {
    {"mnuFormatPositionTopLeft", "Top &Left", "", "TOP_LEFT", place<kTopLeft>, nullptr},
    {"mnuFormatPositionTopRight", "Top &Right", "", "TOP_RIGHT", place<kTopRight>, nullptr},
    {"mnuFormatPositionCenterLeft", "&Center Left", "", "CENTER_LEFT", place<kCenterLeft>, nullptr},
    {"mnuFormatPositionCenterRight", "C&enter Right", "", "CENTER_RIGHT", place<kCenterRight>, nullptr},
    {"mnuFormatPositionBottomLeft", "&Bottom Left", "", "BOTTOM_LEFT", place<kBottomLeft>, nullptr},
    {"mnuFormatPositionBottomRight", "B&ottom Right", "", "BOTTOM_RIGHT", place<kBottomRight>, nullptr},
};

const std::vector<Entry> kCentering = {
    {"mnuFormatCenterHorizontally", "Center &Horizontally", "", "CENTER_HORIZONTALLY",
     mnuFormatCenterHorizontally_Click, nullptr},
    {"mnuFormatCenterVertically", "Center &Vertically", "", "CENTER_VERTICALLY", mnuFormatCenterVertically_Click,
     nullptr},
};

class Dialogue final : public BoundDialogue {
public:
    Dialogue();
    ~Dialogue() override { form().txtText.SetFocus = nullptr; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void add(QMenu* menu, const std::vector<Entry>& entries);
    QToolBar* makeFontBar();
    void makeMenus(QMenuBar* bar);
    void makePositionButton(QMenu* positions);
    QComboBox* editableList(const char* name, const QString& accessibleName, forms::EditableList& state,
                            void (*chosen)(const std::string&));
    QToolButton* colourButton(const char* name, const QString& text, const Shown<std::int32_t>& state,
                              void (*clicked)());
    QStatusBar* makeStatus();

    QToolBar* tools_;
};

Dialogue::Dialogue()
    : BoundDialogue("frmAddText", QObject::tr("Add Text"), mnuFileClose_Click), tools_(new QToolBar(this))
{
    tools_->setObjectName("tbr");
    tools_->setIconSize({20, 20});
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const bar = new QMenuBar(this);
    makeMenus(bar);
    column->setMenuBar(bar);
    column->addWidget(tools_);
    column->addWidget(makeFontBar());
    auto* const view = new TitleView(this);
    auto* const area = new QScrollArea(this);
    area->setObjectName("fmeWorkspace");
    area->setWidget(view);
    area->setAlignment(Qt::AlignCenter);
    area->setFocusPolicy(Qt::NoFocus);
    column->addWidget(area, 1);
    view->sought = [area](const QRect& place) {
        constexpr int kAround = 90; // pixels; holds the hint, too
        const QPoint middle = place.center();
        area->ensureVisible(middle.x(), middle.y(), place.width() / 2 + kAround, place.height() / 2 + kAround / 4);
    };
    QStatusBar* const status = makeStatus();
    column->addWidget(status);
    also([this, view] {
        setWindowTitle(translated(form().Caption.get()));
        view->showTitle();
    });
    start();
    TurnEnd::endTurnsIn(*this); // a title that is put over the film is journalled while the next one is written
    const QSize around(40,
                       tools_->sizeHint().height() * 2 + bar->sizeHint().height() + status->sizeHint().height() + 40);
    resize((view->size() + around).expandedTo({640, 420}).boundedTo(screen()->availableSize() * 0.92));
    view->setFocus();
}

/// A title that nobody has saved does not go by a key that was meant for the box.
void Dialogue::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        BoundDialogue::keyPressEvent(event);
        return;
    }
    findChild<QWidget*>("picWorkspace")->setFocus(); // what is half typed in a list goes
    show::mark();
}

void Dialogue::add(QMenu* menu, const std::vector<Entry>& entries)
{
    for (const Entry& entry : entries) {
        if (entry.caption == nullptr) {
            menu->addSeparator();
            continue;
        }
        auto* const action = new QAction(tr(entry.caption), this);
        action->setObjectName(entry.name);
        action->setShortcut(QKeySequence(entry.keys));
        connect(action, &QAction::triggered, this, [run = entry.run] { run(); });
        if (entry.icon != nullptr) {
            action->setIcon(programIcon(entry.icon, palette()));
        }
        if (entry.ticked != nullptr) {
            action->setCheckable(true);
            also([action, ticked = entry.ticked] { action->setChecked(ticked->Checked); });
        }
        menu->addAction(action);
        addAction(action); // its keys work wherever the focus is
    }
}

void Dialogue::makeMenus(QMenuBar* bar)
{
    const auto buttons = [this](const std::vector<Entry>& entries) {
        for (const Entry& entry : entries) {
            if (entry.icon != nullptr) {
                tools_->addAction(findChild<QAction*>(entry.name));
            }
        }
    };
    QMenu* const file = bar->addMenu(tr("&File"));
    add(file, kFile);
    QMenu* const format = bar->addMenu(tr("F&ormat"));
    connect(format, &QMenu::aboutToShow, this, [] { LeaveTyping(); });
    add(format, kFormat);
    auto* const positions = new QMenu(tr("&Position"), this);
    add(positions, kPositionsMenu);
    format->addMenu(positions);
    add(format, kCentering);
    buttons(kFile);
    tools_->addSeparator();
    buttons(kFormat);
    tools_->addSeparator();
    makePositionButton(positions);
    buttons(kCentering);
}

void Dialogue::makePositionButton(QMenu* positions)
{
    auto* const button = new QToolButton(tools_);
    button->setObjectName("POSITION");
    button->setAccessibleName(tr("Position Text"));
    button->setPopupMode(QToolButton::MenuButtonPopup);
    button->setMenu(positions);
    connect(button, &QToolButton::clicked, this, [] { tbrPosition_Click(); });
    also([this, button, shown = std::string()]() mutable {
        if (shown != form().tbrPosition.Picture.get()) {
            shown = form().tbrPosition.Picture.get();
            button->setIcon(programIcon(shown, palette()));
            button->setToolTip(translated(form().tbrPosition.ToolTipText.get()));
        }
    });
    tools_->addWidget(button);
}

QComboBox* Dialogue::editableList(const char* name, const QString& accessibleName, forms::EditableList& state,
                                  void (*chosen)(const std::string&))
{
    auto* const box = new QComboBox(this);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setEditable(true);
    box->lineEdit()->setAccessibleName(accessibleName);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMaxVisibleItems(20);
    for (const std::string& text : state.List.get()) {
        box->addItem(fromProgram(text));
    }
    connect(box, &QComboBox::textActivated, this, [chosen](const QString& text) { chosen(toProgram(text)); });
    connect(box->lineEdit(), &QLineEdit::returnPressed, this, [box, &state, chosen] {
        chosen(toProgram(box->currentText()));
        box->setEditText(fromProgram(state.Text.get())); // what was refused goes
    });
    also([box, &state, shown = std::string()]() mutable {
        if (shown != state.Text.get() || !box->lineEdit()->hasFocus()) { // else somebody is typing
            shown = state.Text.get();
            box->setCurrentIndex(box->findText(fromProgram(shown))); // the list opens at it
            box->setEditText(fromProgram(shown));
        }
    });
    return box;
}

QToolButton* Dialogue::colourButton(const char* name, const QString& text, const Shown<std::int32_t>& state,
                                    void (*clicked)())
{
    auto* const button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(text);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(button, &QToolButton::clicked, this, clicked);
    also([button, &state] {
        QPixmap sample(20, 14);
        const std::int32_t colour = state;
        sample.fill(QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF));
        QPainter painter(&sample);
        painter.setPen(button->palette().color(QPalette::Mid));
        painter.drawRect(0, 0, sample.width() - 1, sample.height() - 1);
        button->setIcon(QIcon(sample));
    });
    return button;
}

QToolBar* Dialogue::makeFontBar()
{
    auto* const bar = new QToolBar(this);
    bar->setObjectName("fontBar");
    QComboBox* const fonts = editableList("cboFonts", tr("Font"), form().cboFonts, ChooseFont);
    fonts->setMinimumContentsLength(18);
    fonts->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    bar->addWidget(fonts);
    bar->addWidget(editableList("cboSize", tr("Size"), form().cboSize, ChooseSize));
    bar->addSeparator();
    bar->addWidget(colourButton("picColorDisplay", tr("Font color"), form().picColorDisplay, mnuFormatFontColor_Click));
    bar->addWidget(colourButton("picBackColorDisplay", tr("Background"), form().picBackColorDisplay,
                                mnuFormatBackgroundColor_Click));
    return bar;
}

QStatusBar* Dialogue::makeStatus()
{
    auto* const bar = new QStatusBar(this);
    bar->setObjectName("sbr");
    for (const char* const key : {"STATUS", "IMAGE_DIMENSION", "TEXT_POSITION"}) {
        const bool isFirst = std::string_view(key) == "STATUS";
        QLabel* const label = said(key, form().sbr.Panel(key));
        label->setTextInteractionFlags(Qt::NoTextInteraction);
        label->setMinimumWidth(isFirst ? 60 : fontMetrics().horizontalAdvance("00000 x 00000"));
        bar->addWidget(label, isFirst ? 1 : 0);
    }
    return bar;
}

} // namespace

void connectScreens() { connectDialogue<Dialogue>(showDialogue, closeDialogue); }

} // namespace frmAddText
