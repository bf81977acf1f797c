#include "windowing/control_panel_window.h"

#include "core/trap.h"
#include "engine/surfaces.h"
#include "windowing/bound_dialogue.h"
#include "windowing/language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

namespace {

using engine::ControlPanel;
using engine::DeviceControl;

/// The places of a slider over a control's range, of which there may be more values than pixels of any screen.
class Steps {
public:
    explicit Steps(const DeviceControl& control)
        : least_(control.least), most_(std::max(control.least, control.most)), step_(std::max(control.step, 1)),
          count_((most_ - least_) / step_)
    {}

    int last() const { return static_cast<int>(std::min(count_, kMost)); }
    std::int32_t valueAt(int place) const
    {
        const std::int64_t steps = count_ <= kMost ? place : count_ * place / kMost;
        return static_cast<std::int32_t>(least_ + steps * step_);
    }
    int placeOf(std::int32_t value) const
    {
        const std::int64_t steps = (std::clamp<std::int64_t>(value, least_, most_) - least_) / step_;
        return static_cast<int>(count_ <= kMost ? steps : steps * kMost / count_);
    }

private:
    static constexpr std::int64_t kMost = 1000;
    std::int64_t least_;
    std::int64_t most_;
    std::int64_t step_;
    std::int64_t count_;
};

class Panel final : public QDialog {
public:
    Panel(ControlPanel& panel, QWidget* owner);

private:
    QWidget* makeControls();
    QLayout* makeButtons();
    QWidget* makeRange(std::size_t place);
    QWidget* makeSwitch(std::size_t place);
    QWidget* makeChoice(std::size_t place);
    void set(std::size_t place, std::int32_t value);
    void takeOver(const std::vector<DeviceControl>& now);
    void setNormal();
    void showValues();

    ControlPanel& panel_;
    std::vector<std::function<void()>> shows_;
    bool isShowing_ = false;
};

Panel::Panel(ControlPanel& panel, QWidget* owner) : QDialog(owner), panel_(panel)
{
    setObjectName("controlPanel");
    setWindowTitle(translated(panel.title));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(12);
    column->addWidget(makeControls(), 1);
    column->addLayout(makeButtons());
    showValues();
}

QWidget* Panel::makeControls()
{
    if (panel_.controls.empty()) {
        return new QLabel(tr("This device has no settings of this kind."), this);
    }
    auto* const ground = new QWidget;
    auto* const rows = new QFormLayout(ground);
    rows->setContentsMargins(0, 0, 8, 0);
    for (std::size_t place = 0; place < panel_.controls.size(); ++place) {
        const DeviceControl& control = panel_.controls[place];
        QWidget* const widget = control.kind == DeviceControl::Kind::kRange    ? makeRange(place)
                                : control.kind == DeviceControl::Kind::kSwitch ? makeSwitch(place)
                                                                               : makeChoice(place);
        if (control.kind == DeviceControl::Kind::kSwitch) {
            rows->addRow(widget);
        } else {
            rows->addRow(translated(control.name).replace('&', "&&") + ":", widget);
        }
    }
    auto* const area = new QScrollArea(this);
    area->setWidget(ground);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const QSize wanted = ground->sizeHint();
    area->setMinimumWidth(wanted.width() + area->verticalScrollBar()->sizeHint().width());
    area->setMinimumHeight(std::min(wanted.height(), screen()->availableSize().height() / 2));
    return area;
}

QWidget* Panel::makeRange(std::size_t place)
{
    const DeviceControl& control = panel_.controls[place];
    const QString name = translated(control.name);
    auto* const both = new QWidget;
    auto* const slider = new QSlider(Qt::Horizontal, both);
    slider->setObjectName("sld" + QString::number(control.id));
    slider->setAccessibleName(name);
    slider->setMinimumWidth(fontMetrics().averageCharWidth() * 26);
    auto* const number = new QSpinBox(both);
    number->setObjectName("txt" + QString::number(control.id));
    number->setAccessibleName(name);
    number->setKeyboardTracking(false); // a number that is half typed is none
    if (!control.unit.empty()) {
        number->setSuffix(" " + translated(control.unit));
    }
    connect(slider, &QSlider::valueChanged, this,
            [this, place](int at) { set(place, Steps(panel_.controls[place]).valueAt(at)); });
    connect(number, &QSpinBox::valueChanged, this, [this, place](int value) { set(place, value); });
    shows_.push_back([this, place, slider, number] {
        const DeviceControl& now = panel_.controls[place];
        const Steps steps(now);
        slider->setRange(0, steps.last());
        slider->setPageStep(std::max(1, steps.last() / 10));
        slider->setValue(steps.placeOf(now.value));
        slider->setEnabled(now.isActive);
        number->setRange(now.least, now.most);
        number->setSingleStep(std::max(now.step, 1));
        number->setValue(now.value);
        number->setEnabled(now.isActive);
    });
    auto* const row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(slider, 1);
    row->addWidget(number);
    return both;
}

QWidget* Panel::makeSwitch(std::size_t place)
{
    const DeviceControl& control = panel_.controls[place];
    auto* const box = new QCheckBox(translated(control.name).replace('&', "&&"));
    box->setObjectName("chk" + QString::number(control.id));
    connect(box, &QCheckBox::toggled, this, [this, place](bool isOn) { set(place, isOn ? 1 : 0); });
    shows_.push_back([this, place, box] {
        box->setChecked(panel_.controls[place].value != 0);
        box->setEnabled(panel_.controls[place].isActive);
    });
    return box;
}

QWidget* Panel::makeChoice(std::size_t place)
{
    const DeviceControl& control = panel_.controls[place];
    auto* const box = new QComboBox;
    box->setObjectName("cbo" + QString::number(control.id));
    box->setAccessibleName(translated(control.name));
    box->setMaxVisibleItems(20);
    for (const DeviceControl::Choice& choice : control.choices) {
        box->addItem(translated(choice.name), choice.value);
    }
    connect(box, &QComboBox::currentIndexChanged, this, [this, place, box](int at) {
        if (at >= 0) {
            set(place, box->itemData(at).toInt());
        }
    });
    shows_.push_back([this, place, box] {
        box->setCurrentIndex(box->findData(panel_.controls[place].value));
        box->setEnabled(panel_.controls[place].isActive);
    });
    return box;
}

QLayout* Panel::makeButtons()
{
    const auto button = [this](const char* name, const QString& text, auto&& clicked) {
        auto* const made = new QPushButton(text, this);
        made->setObjectName(name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, clicked);
        return made;
    };
    auto* const row = new QHBoxLayout;
    const bool isEmpty = panel_.controls.empty();
    if (!isEmpty) {
        row->addWidget(button("cmdDefault", tr("&Default"), [this] { setNormal(); }));
    }
    row->addStretch();
    QPushButton* const ok = button("cmdOK", tr("OK"), [this] { accept(); });
    ok->setDefault(true);
    row->addWidget(ok);
    if (!isEmpty) {
        row->addWidget(button("cmdCancel", tr("Cancel"), [this] { reject(); }));
    }
    return row;
}

void Panel::set(std::size_t place, std::int32_t value)
{
    DeviceControl& control = panel_.controls[place];
    if (isShowing_ || control.value == value) {
        return;
    }
    control.value = value;
    if (panel_.apply) {
        Trapped("control_panel_window", "set", [&] { takeOver(panel_.apply(control.id, value)); });
    }
    showValues();
}

/// One control may switch others on and off, or move them.
void Panel::takeOver(const std::vector<DeviceControl>& now)
{
    for (DeviceControl& control : panel_.controls) {
        const auto found = std::ranges::find(now, control.id, &DeviceControl::id);
        if (found != now.end()) {
            control = *found;
        }
    }
}

/// Twice, as some take a value only once another has been set.
void Panel::setNormal()
{
    for (int round = 0; round < 2; ++round) {
        for (std::size_t place = 0; place < panel_.controls.size(); ++place) {
            if (panel_.controls[place].isActive) {
                set(place, panel_.controls[place].normal);
            }
        }
    }
}

void Panel::showValues()
{
    isShowing_ = true;
    for (const auto& show : shows_) {
        show();
    }
    isShowing_ = false;
}

} // namespace

ControlPanelWindow::ControlPanelWindow(QWidget* owner)
    : owner_(owner), number_(engine::surfaces().add(static_cast<engine::ControlPanelHost&>(*this)))
{}

ControlPanelWindow::~ControlPanelWindow() { engine::surfaces().removeHost(number_); }

bool ControlPanelWindow::run(engine::ControlPanel& panel)
{
    Panel dialogue(panel, owner_);
    runDialogue(dialogue);
    return dialogue.result() == QDialog::Accepted;
}
