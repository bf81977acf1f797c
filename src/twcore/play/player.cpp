#include "twcore/play/player.h"

#include "twcore/render/picture_store.h"

#include <algorithm>

namespace twcore {

namespace {

constexpr std::int64_t kSamplesPerMs = kPlayRate / 1000;

} // namespace

void Player::open()
{
    if (!sound_) {
        sound_.emplace(makeAudio_);
        sound_->setGain(gain_);
        pictures_.emplace(sound_->clock(), static_cast<std::size_t>(static_cast<double>(storeBytes()) * storeShare_));
        pictures_->setArea(area_);
        pictures_->setSurface(surface_);
    }
}

void Player::setSurface(std::int32_t number)
{
    surface_ = number;
    if (pictures_) {
        pictures_->setSurface(number);
    }
}

void Player::setArea(std::optional<PictureRect> area)
{
    area_ = area;
    if (pictures_) {
        pictures_->setArea(area);
    }
}

bool Player::isPlaying() const { return isRunning_ && sound_->clock()->isPlaying(); }

std::int64_t Player::position()
{
    if (isRunning_) {
        at_ = sound_->clock()->position();
    }
    return at_;
}

void Player::standAt(std::int64_t sample)
{
    at_ = std::clamp<std::int64_t>(sample, 0, durationMs() * kSamplesPerMs);
    isRunning_ = false;
    sound_->stand(plan_, at_);
}

void Player::load(PlanPtr plan)
{
    open();
    const std::int64_t at = position();
    plan_ = std::move(plan);
    pictures_->clear();
    isShown_ = false;
    standAt(at);
}

void Player::swap(PlanPtr plan)
{
    if (!plan_) {
        load(std::move(plan));
        return;
    }
    const std::int64_t at = position();
    const bool plays = isPlaying();
    plan_ = std::move(plan);
    if (plays) {
        sound_->swap(plan_);
    } else {
        pictures_->hold(at);
        standAt(at);
    }
    if (isShown_) {
        pictures_->swap(plan_, std::min(at, durationMs() * kSamplesPerMs));
    }
}

void Player::unload()
{
    if (!plan_) {
        return;
    }
    at_ = position();
    isRunning_ = false;
    plan_.reset();
    pictures_->clear();
    sound_->stand(nullptr, 0);
    if (hasFailed()) {
        pictures_.reset();
        sound_.reset();
    }
}

void Player::show()
{
    if (plan_ && !isPlaying()) {
        isShown_ = true;
        pictures_->show(plan_, position());
    }
}

void Player::play()
{
    if (!plan_ || isPlaying() || position() >= durationMs() * kSamplesPerMs) {
        return;
    }
    isRunning_ = true;
    isShown_ = true;
    sound_->play(plan_, at_);
    pictures_->run(plan_, at_);
}

void Player::stop()
{
    if (isRunning_) {
        standAt(position());
        pictures_->hold(at_);
    }
}

void Player::seek(std::int64_t ms)
{
    if (!plan_) {
        return;
    }
    const bool plays = isPlaying();
    at_ = sought_ = std::clamp<std::int64_t>(ms, 0, durationMs()) * kSamplesPerMs;
    isRunning_ = false;
    if (plays && at_ < durationMs() * kSamplesPerMs) {
        play();
        return;
    }
    standAt(at_);
    show();
}

void Player::halt()
{
    if (!plan_) {
        return;
    }
    const bool isThere = position() == sought_;
    stop();
    if (!isThere) {
        seek(sought_ / kSamplesPerMs);
    }
}

std::int32_t Player::positionMs() { return static_cast<std::int32_t>(position() / kSamplesPerMs); }

void Player::setVolume(std::int32_t level)
{
    // Loudness as it is felt: half way down the slider is an eighth of the amplitude, 18 dB less.
    const float share = static_cast<float>(std::clamp(level, -100, 0) + 100) / 100;
    gain_ = share * share * share;
    if (sound_) {
        sound_->setGain(gain_);
    }
}

bool Player::hasFailed() const { return sound_ && (sound_->hasFailed() || pictures_->hasFailed()); }

} // namespace twcore
