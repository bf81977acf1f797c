#pragma once

// One row of the timeline: its name, its options, its picture with the shape of the selection.

#include "core/forms/frmTimeline.h"
#include "windowing/picture_widget.h"

#include <QLabel>
#include <QToolButton>
#include <functional>

/// What a row shows and calls.
struct RowParts {
    QString name;
    QString objectName; // "picVideo0"
    PictureBox* picture;
    Marker* selection;
    forms::RowPointer* pointer;
    std::function<void(int button, int shift, float x, float y)> pressed;
    std::function<void(int button, int shift, float x, float y)> moved;
    std::function<void(int button, int shift, float x, float y)> released;
    std::function<void(int key, int shift)> keyDown;
    std::function<void(int shift, float x)> dropped;
    std::function<void(const std::vector<std::string>& paths, int shift, float x)> filesDropped;
    std::function<void(bool areRows, int shift, float x)> draggedOver;
    std::function<void()> draggedOff;
    std::function<void(float x)> doubleClicked;
    struct Option {
        CheckBox* box;
        ImageBox* image;
        std::function<void()> click;
    };
    Option disable;
    Option lock;
    Option link;
};

class RowPane final : public QWidget {
public:
    RowPane(RowParts parts, QWidget* parent);

    PictureWidget& picture() { return *picture_; }
    const RowParts& parts() const { return parts_; }
    /// The picture's left edge, logical pixels.
    void setHeaderWidth(int width);
    void showState();
    void refreshIcons();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Toggle {
        RowParts::Option* option;
        QToolButton* button;
        std::string shownPicture;
    };

    void connectPicture();
    void press(int button, int shift, float x, float y);
    void move(int button, int shift, float x, float y);
    void release(int button, int shift, float x, float y);
    void loseRelease();
    void place();
    void showToggle(Toggle& toggle);

    RowParts parts_;
    QLabel* name_;
    PictureWidget* picture_;
    QWidget* selection_;
    QWidget* dropMark_;
    std::vector<Toggle> toggles_;
    int headerWidth_ = 150;
    bool isDouble_ = false;  // by a press that was the second of a double click
    bool isHeld_ = false;    // the left button is down on the picture
    bool isDragged_ = false; // and the pointer has left the place of the press
    float pressX_ = 0;
};
