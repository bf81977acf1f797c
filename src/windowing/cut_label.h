#pragma once

// A label of one line that ends in "..." where its room does; the whole text is then its tool tip as well.

#include <QLabel>

class CutLabel final : public QLabel {
public:
    using QLabel::QLabel;

    /// Use it in place of `setText`. `text()` and screen readers always have the whole text.
    void setWhole(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString shown() const;
    void fitToolTip();
};
