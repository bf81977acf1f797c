#pragma once

// Hears that there are more pictures or peaks for the bars, and has the bars painted again: a few times a second, so
// that a film of an hour that is being looked through costs the interface little.

#include "engine/surfaces.h"

#include <QObject>
#include <atomic>
#include <cstdint>

class TimelineNews final : public QObject, public engine::NewsSink {
public:
    explicit TimelineNews(QObject* parent);
    ~TimelineNews() override;
    void hear() noexcept override;

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    std::int32_t number_ = 0;
    std::atomic<bool> isPending_ = false;
};
