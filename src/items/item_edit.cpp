#include "items/item_edit.h"

#include "core/shared_state.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "items/put_back.h"
#include "items/transition_key.h"

namespace items {

using engine::Bool16;
using engine::check;
using engine::ITWTimeline;
using engine::kFalse;

namespace {

template <class Call>
std::string readName(std::size_t bytes, Call call)
{
    std::string name(bytes, ' ');
    check(call(engine::TextBuffer(name)));
    name.erase(name.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return name;
}

std::optional<OverlayKey> readKey(ITWTimeline& engine, engine::Handle track, std::int16_t seq, std::size_t nameBytes)
{
    if (track != state::OverlayTrack || seq >= Items(engine, ItemKind::kTransition, track).count()) {
        return {};
    }
    const auto keys = engine::EngineAs<engine::ITWKeyTransition>();
    OverlayKey key;
    key.name = readName(nameBytes, [&](auto buffer) { return engine.GetTransitionName(track, seq, buffer); });
    check(keys->GetKeyRed(track, seq, key.red));
    check(keys->GetKeyGreen(track, seq, key.green));
    check(keys->GetKeyBlue(track, seq, key.blue));
    return key;
}

} // namespace

SourceEdit::SourceEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes)
    : engine_(engine::EngineAs<ITWTimeline>()), track_(track), seq_(seq), key_(readKey(*engine_, track, seq, nameBytes))
{
    check(engine_->GetSourceStream(track, seq, stream_));
    check(engine_->GetSourceStretchMode(track, seq, mode_));
}

bool SourceEdit::remove(const SourceTimes& now)
{
    PutBack putBack;
    bool ok = removeSource(seq_, now, putBack);
    if (ok && key_) {
        ok = Items(*engine_, ItemKind::kTransition, track_).remove(seq_);
    }
    putBack.done();
    return ok;
}

bool SourceEdit::trim(const SourceTimes& now, const SourceTimes& then)
{
    PutBack putBack;
    putBack.onFailure([&] {
        Bool16 ok = kFalse;
        (void)engine_->SetSourceTimes(track_, seq_, now.start, now.stop, ok);
        (void)engine_->SetSourceMediaTimes(track_, seq_, now.mediaStart, now.mediaStop, ok);
    });
    Bool16 ok = kFalse;
    check(engine_->SetSourceTimes(track_, seq_, then.start, then.stop, ok));
    check(engine_->SetSourceMediaTimes(track_, seq_, then.mediaStart, then.mediaStop, ok));
    if (key_) {
        check(engine_->SetTransitionTimes(track_, seq_, then.start, then.stop, ok));
    }
    putBack.done();
    return ok != kFalse;
}

bool SourceEdit::split(const SourceTimes& now, const SourceTimes& left, const SourceTimes& right)
{
    const auto whole = static_cast<std::int16_t>(seq_ + 2);
    PutBack putBack;
    if (!insertSource(seq_, right, putBack) || !insertSource(seq_, left, putBack)) {
        return false;
    }
    bool ok = removeSource(whole, now, putBack);
    // Last, as it may have a player take in what lies on the track. A new source has mode 0.
    for (std::int16_t seq = seq_; seq <= seq_ + 1 && mode_ != 0; ++seq) {
        check(engine_->SetSourceStretchMode(track_, seq, mode_));
    }
    if (key_) {
        insertKey(seq_, right, putBack);
        insertKey(seq_, left, putBack);
        ok = Items(*engine_, ItemKind::kTransition, track_).remove(whole);
    }
    putBack.done();
    return ok;
}

/// False when the engine has no room.
bool SourceEdit::insertSource(std::int16_t seq, const SourceTimes& times, PutBack& putBack)
{
    Bool16 ok = kFalse;
    check(engine_->InsertSource(track_, stream_, seq, times.start, 0, ok));
    if (ok == kFalse) {
        return false;
    }
    putBack.onFailure([this, seq] {
        Bool16 removed = kFalse;
        (void)engine_->RemoveSource(track_, seq, removed);
    });
    check(engine_->SetSourceTimes(track_, seq, times.start, times.stop, ok));
    check(engine_->SetSourceMediaTimes(track_, seq, times.mediaStart, times.mediaStop, ok));
    return true;
}

void SourceEdit::insertKey(std::int16_t seq, const SourceTimes& times, PutBack& putBack)
{
    Bool16 ok = kFalse;
    check(engine_->InsertTransition(track_, key_->name, seq, times.start, times.stop, 0, ok));
    putBack.onFailure([this, seq] {
        Bool16 removed = kFalse;
        (void)engine_->RemoveTransition(track_, seq, removed);
    });
    moduleEdit::ApplyTransitionKey(track_, seq, key_->red, key_->green, key_->blue);
}

bool SourceEdit::removeSource(std::int16_t seq, const SourceTimes& now, PutBack& putBack)
{
    const bool ok = Items(*engine_, ItemKind::kSource, track_).remove(seq);
    if (ok) {
        putBack.onFailure([this, seq, now] {
            Bool16 inserted = kFalse;
            (void)engine_->InsertSource(track_, stream_, seq, now.start, now.stop, inserted);
            (void)engine_->SetSourceMediaTimes(track_, seq, now.mediaStart, now.mediaStop, inserted);
            (void)engine_->SetSourceStretchMode(track_, seq, mode_);
        });
    }
    return ok;
}

bool removeOverlay(ITWTimeline& engine, std::int16_t seq)
{
    constexpr std::size_t kNameBytes = 20;
    const engine::Handle track = state::OverlayTrack;
    const auto now = readSource(engine, track, seq);
    return now && SourceEdit(track, seq, kNameBytes).remove(*now);
}

EffectEdit::EffectEdit(engine::Handle track, std::int16_t seq, std::size_t nameBytes)
    : engine_(engine::EngineAs<ITWTimeline>()), track_(track), seq_(seq),
      name_(readName(nameBytes, [&](auto buffer) { return engine_->GetEffectName(track, seq, buffer); }))
{}

bool EffectEdit::split(const ItemTimes& now, const ItemTimes& left, const ItemTimes& right)
{
    const Items effects(*engine_, ItemKind::kEffect, track_);
    if (!effects.remove(seq_)) {
        return false;
    }
    PutBack putBack;
    putBack.onFailure([&] {
        Bool16 ok = kFalse;
        (void)engine_->InsertEffect(track_, name_, seq_, now.start, now.stop, 0, ok);
    });
    if (!insert(right)) {
        return false;
    }
    putBack.onFailure([&] {
        Bool16 ok = kFalse;
        (void)engine_->RemoveEffect(track_, seq_, ok);
    });
    if (!insert(left)) {
        return false;
    }
    putBack.done();
    return true;
}

bool EffectEdit::insert(const ItemTimes& times)
{
    Bool16 ok = kFalse;
    check(engine_->InsertEffect(track_, name_, seq_, times.start, times.stop, 0, ok));
    return ok != kFalse;
}

} // namespace items
