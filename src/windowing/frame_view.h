#pragma once

// A surface that the engine shows pictures on: it keeps the newest one and paints it, unscaled.

#include "engine/surfaces.h"

#include <QWidget>
#include <atomic>

class FrameView : public QWidget, private engine::FrameSink {
public:
    FrameView(const QString& name, QWidget* parent);
    ~FrameView() override;

    /// The number that the engine knows this surface by.
    std::int32_t number() const noexcept { return number_; }
    /// Back to an empty surface; pictures of before that are still on their way are dropped.
    void clearPicture();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void show(const engine::SurfacePicture& picture) noexcept override;
    void say(engine::Text text) noexcept override;
    void postUpdate() noexcept;
    engine::SurfaceSize surfaceSize() const;

    std::int32_t number_ = 0;
    std::mutex mutex_; // guards the mailbox
    engine::SurfacePicture newest_;
    QString words_;
    std::atomic<bool> isPending_{false};
};
