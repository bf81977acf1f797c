#include "twcore/render/sound_mixer.h"

#include <algorithm>

namespace twcore {

namespace {

constexpr double kSlowest = 0.1;
constexpr double kFastest = 10;
// Files of a track that stay open at once.
constexpr std::size_t kMaxVoices = 8;

} // namespace

SoundMixer::SoundMixer(PlanPtr plan, int rate, Patience patience)
    : plan_(std::move(plan)), rate_(rate), patience_(patience), voices_(plan_->soundTracks.size())
{}

SoundMixer::~SoundMixer() = default;

void SoundMixer::read(std::int64_t first, std::span<float> out)
{
    std::ranges::fill(out, 0.0f);
    const std::int64_t end = first + static_cast<std::int64_t>(out.size() / 2);
    for (std::size_t t = 0; t < plan_->soundTracks.size(); ++t) {
        const auto& track = plan_->soundTracks[t];
        auto source =
            std::ranges::upper_bound(track, first, {}, [&](const auto& s) { return sampleAt(s.stopMs, rate_); });
        for (; source != track.end() && sampleAt(source->startMs, rate_) < end; ++source) {
            const std::int64_t from = std::max(first, sampleAt(source->startMs, rate_));
            const std::int64_t to = std::min(end, sampleAt(source->stopMs, rate_));
            if (from >= to || !source->media) {
                continue;
            }
            block_.resize(static_cast<std::size_t>(to - from) * 2);
            readSource(voices_[t], *source, from - sampleAt(source->startMs, rate_), block_);
            float* const target = out.data() + (from - first) * 2;
            for (std::size_t i = 0; i < block_.size(); ++i) {
                target[i] += block_[i];
            }
        }
    }
}

void SoundMixer::takeReaders(SoundMixer& other)
{
    other.voices_.push_back(std::move(other.taken_)); // last, as what is wanted least
    for (auto& voices : other.voices_) {
        for (auto& voice : voices) {
            // A reader that failed is not taken over: its file may be back.
            const bool isWanted = plays(voice.media) && voice.source && !voice.source->isBroken();
            if (isWanted && taken_.size() < kMaxVoices * voices_.size()) {
                taken_.push_back({voice.media, std::move(voice.source), nullptr, nullptr, 0});
            }
        }
    }
    other.voices_.clear();
}

bool SoundMixer::plays(const MediaFilePtr& media) const
{
    return std::ranges::any_of(plan_->soundTracks, [&](const auto& track) {
        return std::ranges::find(track, media, &PlannedSource::media) != track.end();
    });
}

std::unique_ptr<SoundSource> SoundMixer::readerOf(const MediaFilePtr& media)
{
    const auto found = std::ranges::find(taken_, media, &Voice::media);
    if (found == taken_.end()) {
        return openSound(media, rate_, patience_);
    }
    auto reader = std::move(found->source);
    taken_.erase(found);
    return reader;
}

SoundMixer::Voice& SoundMixer::voiceFor(std::vector<Voice>& voices, const PlannedSource& source)
{
    auto found = std::ranges::find(voices, source.media, &Voice::media);
    if (found == voices.end()) {
        if (voices.size() >= kMaxVoices) {
            voices.erase(std::ranges::min_element(voices, {}, &Voice::lastUse));
        }
        voices.push_back({source.media, readerOf(source.media), nullptr, nullptr, 0});
        found = voices.end() - 1;
    }
    found->lastUse = ++uses_;
    return *found;
}

void SoundMixer::readSource(std::vector<Voice>& voices, const PlannedSource& source, std::int64_t first,
                            std::span<float> out)
{
    const double speed = source.speed();
    std::ranges::fill(out, 0.0f);
    if (speed <= 0) {
        return;
    }
    Voice& voice = voiceFor(voices, source);
    if (std::int64_t{source.mediaStopMs} - source.mediaStartMs == source.stopMs - source.startMs) {
        voice.source->read(sampleAt(source.mediaStartMs, rate_) + first, out);
        return;
    }
    if (speed < kSlowest || speed > kFastest) {
        return;
    }
    if (voice.stretched != &source) {
        const double mediaStart = source.mediaStartMs * 0.001 * rate_;
        voice.stretcher = std::make_unique<TimeStretcher>(*voice.source, rate_, speed, mediaStart);
        voice.stretched = &source;
    }
    voice.stretcher->read(first, out);
}

} // namespace twcore
