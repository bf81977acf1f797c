#include "editing/clipboard.h"

#include "core/numbers.h"

#include <algorithm>
#include <utility>

namespace moduleEdit {

namespace {

template <class Clip>
std::int32_t lastOf(const std::vector<Clip>& clips, engine::Handle track)
{
    auto index = static_cast<std::int32_t>(clips.size()) - 1;
    while (index >= 0 && clips[static_cast<std::size_t>(index)].Track != track) {
        --index;
    }
    return index;
}

template <class Clip>
engine::Milliseconds longestRun(const std::vector<Clip>& clips)
{
    engine::Milliseconds longest = 0;
    engine::Milliseconds length = 0;
    for (const Clip& clip : clips) {
        length = numbers::added(clip.Seq == 0 ? 0 : length, clip.isGap() ? clip.gap() : clip.Length);
        longest = std::max(longest, length);
    }
    return longest;
}

} // namespace

void AddSourceClip(SourceClip clip) { SourceClips.push_back(clip); }
void AddEffectClip(EffectClip clip) { EffectClips.push_back(std::move(clip)); }
void AddTransitionClip(TransitionClip clip) { TransitionClips.push_back(std::move(clip)); }

void ClearSourceClips() { SourceClips.clear(); }
void ClearEffectClips() { EffectClips.clear(); }
void ClearTransitionClips() { TransitionClips.clear(); }

std::int32_t LastSourceClip(engine::Handle track) { return lastOf(SourceClips, track); }
std::int32_t LastEffectClip(engine::Handle track) { return lastOf(EffectClips, track); }
std::int32_t LastTransitionClip(engine::Handle track) { return lastOf(TransitionClips, track); }

engine::Milliseconds ClipboardLength() { return std::max(longestRun(SourceClips), longestRun(EffectClips)); }

bool HasSourceClip(engine::Handle track) { return LastSourceClip(track) != -1; }
bool HasEffectClip(engine::Handle track) { return LastEffectClip(track) != -1; }

} // namespace moduleEdit
