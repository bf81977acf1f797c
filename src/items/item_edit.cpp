#include "items/item_edit.h"

#include "core/shared_state.h"
#include "items/put_back.h"

namespace items {

using engine::EngineAs;
using engine::ITWTimeline;

SourceEdit::SourceEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes)
    : engine_(EngineAs<ITWTimeline>()), at_{*engine_, track, seq},
      source_(readWhole(at_, nameBytes).value_or(WholeSource{}))
{}

bool SourceEdit::remove()
{
    PutBack putBack;
    bool ok = removeSource(at_, source_, putBack);
    if (ok && source_.key) {
        ok = Items(*engine_, ItemKind::kTransition, at_.track).remove(at_.seq);
    }
    putBack.done();
    return ok;
}

bool SourceEdit::trim(const SourceTimes& then)
{
    PutBack putBack;
    putBack.onFailure([&] { setTimes(at_, source_.times, UncheckedCalls{}); });
    bool ok = setTimes(at_, then);
    if (source_.key) {
        ok = Items(*engine_, ItemKind::kTransition, at_.track).setTimes(at_.seq, then.onTimeline());
    }
    putBack.done();
    return ok;
}

bool SourceEdit::split(const SourceTimes& left, const SourceTimes& right)
{
    const ItemPlace second{*engine_, at_.track, static_cast<std::int16_t>(at_.seq + 1)};
    const ItemPlace whole{*engine_, at_.track, static_cast<std::int16_t>(at_.seq + 2)};
    PutBack putBack;
    if (!insertSource(at_, source_.stream, right, putBack) || !insertSource(at_, source_.stream, left, putBack)) {
        return false;
    }
    bool ok = removeSource(whole, source_, putBack);
    setMode(at_, source_.mode);
    setMode(second, source_.mode);
    if (source_.key) {
        if (!insertKey(at_, *source_.key, right.onTimeline(), putBack)
            || !insertKey(at_, *source_.key, left.onTimeline(), putBack)) {
            return false;
        }
        ok = Items(*engine_, ItemKind::kTransition, at_.track).remove(whole.seq);
    }
    putBack.done();
    return ok;
}

bool removeOverlay(std::int16_t seq)
{
    constexpr std::size_t kNameBytes = 20;
    return SourceEdit(state::OverlayTrack, seq, kNameBytes).remove();
}

EffectEdit::EffectEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes)
    : engine_(EngineAs<ITWTimeline>()), at_{*engine_, track, seq},
      effect_(readEffect(at_, nameBytes).value_or(WholeEffect{}))
{}

bool EffectEdit::split(const ItemTimes& left, const ItemTimes& right)
{
    PutBack putBack;
    if (!removeEffect(at_, effect_, putBack) || !insertEffect(at_, effect_.name, right, putBack)
        || !insertEffect(at_, effect_.name, left, putBack)) {
        return false;
    }
    putBack.done();
    return true;
}

} // namespace items
