#pragma once

// The volume's popup: a slider without a frame. Any key closes it, and so does any other window.

#include <QLabel>
#include <QSlider>

class VolumeForm final : public QWidget {
public:
    explicit VolumeForm(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refreshIcon();
    void open();
    void showState();

    QLabel* icon_ = nullptr;
    QSlider* slider_ = nullptr;
    QLabel* level_ = nullptr;
    bool isShowing_ = false; // state is being copied: what the widgets tell is no deed of the person's
};
