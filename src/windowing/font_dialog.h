#pragma once

// The toolkit's dialogue for a font, and the colour of the letters with it.

#include <QFontDialog>
#include <cstdint>

class QPushButton;

class FontDialog final : public QFontDialog {
public:
    /// colour: red in the low byte.
    FontDialog(const QFont& font, std::int32_t colour, QWidget* parent);

    std::int32_t colour() const { return colour_; }

private:
    void chooseColour();
    void showColour();

    std::int32_t colour_;
    QPushButton* button_ = nullptr;
};
