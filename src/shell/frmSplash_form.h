#pragma once

// The splash: the product's picture and name while the program starts.

#include <QWidget>

class SplashForm final : public QWidget {
public:
    SplashForm();

protected:
    void paintEvent(QPaintEvent* event) override;
};
