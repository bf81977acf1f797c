#pragma once

// A panel of the main window: a strip with its caption, and the form below it.

#include "windowing/cut_label.h"

#include <QToolButton>
#include <QWidget>
#include <functional>

class PanelFrame final : public QWidget {
public:
    PanelFrame(QWidget* form, QWidget* parent);

    void setCaption(const QString& caption);
    /// Adds a button that closes the panel from its strip.
    void setClosable(std::function<void()> close);
    QWidget* form() const { return form_; }

    /// The pointer moves over the strip.
    std::function<void()> bareMoved;
    void setActive(bool active);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void refreshIcons();

    static constexpr int kStripHeight = 24;
    QWidget* form_;
    CutLabel* caption_;
    QToolButton* close_ = nullptr;
    bool isActive_ = false;
};
