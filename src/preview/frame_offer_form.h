#pragma once

// The line in the preview's panel that offers the size of the first picture for the movie: its words and two buttons,
// side by side where there is room, else below each other.

#include <QLabel>
#include <QPushButton>

class FrameOfferLine final : public QWidget {
public:
    explicit FrameOfferLine(QWidget* parent);

    /// Copies the offer's texts, and hides or shows the line.
    void showState();
    /// How high it has to be for its words at that width, pixels.
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int buttonsWidth() const;
    int widthOf(const QPushButton& button) const;
    bool isOneRow(int width) const;
    QString wordsFor(int width) const;
    void layOut();

    QLabel* words_ = nullptr;
    QPushButton* use_ = nullptr;
    QPushButton* keep_ = nullptr;
};
