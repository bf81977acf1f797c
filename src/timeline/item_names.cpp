#include "timeline/item_names.h"

#include "core/file_text.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace timeline {

namespace {

void trim(std::string& text) { text.erase(text.find_last_not_of(std::string_view(" \0", 2)) + 1); }

} // namespace

ItemNames::ItemNames()
    : timeline_(engine::EngineAs<engine::ITWTimeline>()), files_(engine::EngineAs<engine::ITWMediaFiles>())
{}

std::string_view ItemNames::ofSource(engine::Handle track, std::int16_t seq)
{
    engine::Handle stream = 0;
    engine::check(timeline_->GetSourceStream(track, seq, stream));
    const auto [known, isNew] = byStream_.try_emplace(stream);
    if (isNew) {
        known->second = fileNameOf(stream);
    }
    return known->second;
}

std::string_view ItemNames::ofEffect(engine::Handle track, std::int16_t seq)
{
    constexpr std::size_t kLongestName = 10;
    effect_.assign(kLongestName, ' ');
    engine::check(timeline_->GetEffectName(track, seq, effect_));
    trim(effect_);
    return effect_;
}

std::string ItemNames::fileNameOf(engine::Handle stream) const
{
    engine::Handle file = 0;
    engine::check(files_->GetStreamFile(stream, file));
    // The engine says no to a buffer that is too short: a path is never cut. It says no to a missing file as well.
    constexpr std::size_t kUsualPath = 260;
    constexpr std::size_t kLongestPath = kUsualPath << 8;
    engine::Bool16 ok = engine::kFalse;
    for (std::size_t length = kUsualPath; file != 0 && ok == engine::kFalse && length <= kLongestPath; length *= 4) {
        std::string path(length, '\0');
        engine::check(engine::Engine->GetFileName(file, path, ok));
        if (ok != engine::kFalse) {
            trim(path);
            return file_text::ExtractFileName(path);
        }
    }
    return {};
}

} // namespace timeline
