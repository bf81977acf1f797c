#pragma once

// The small window with a device's own controls, which the engine asks for over the number of a window. What a person
// changes is tried on the device at once. Interface thread only.

#include "engine/control_panel.h"

#include <QWidget>
#include <cstdint>

class ControlPanelWindow final : public engine::ControlPanelHost {
public:
    /// owner: the window that panels stand over; it outlives this object.
    explicit ControlPanelWindow(QWidget* owner);
    ~ControlPanelWindow() override;
    ControlPanelWindow(const ControlPanelWindow&) = delete;
    ControlPanelWindow& operator=(const ControlPanelWindow&) = delete;

    /// The number that the engine knows it by.
    std::int32_t number() const noexcept { return number_; }
    bool run(engine::ControlPanel& panel) override;

private:
    QWidget* owner_;
    std::int32_t number_;
};
