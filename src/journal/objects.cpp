#include "journal/objects.h"

#include "journal/bytes.h"

#include <algorithm>

namespace journal {

namespace {

enum Change : std::uint8_t { kSet = 1, kDrop = 2 };

} // namespace

const std::string* Objects::find(ObjectNumber number) const
{
    const auto found = objects_.find(number);
    return found == objects_.end() ? nullptr : &found->second;
}

void Objects::remove(ObjectNumber number)
{
    if (const auto gone = objects_.find(number); gone != objects_.end()) {
        byteCount_ -= gone->second.size();
        objects_.erase(gone);
    }
}

void Objects::put(ObjectNumber number, std::string bytes)
{
    std::string& object = objects_[number];
    byteCount_ += bytes.size();
    byteCount_ -= object.size();
    object = std::move(bytes);
}

/// The next change. Nothing in the second: the object goes.
std::pair<ObjectNumber, std::optional<std::string>>
Objects::takeChange(ByteReader& reader, const Changes& changes, bool isFromNothing, std::size_t& byteCount) const
{
    const auto change = reader.take<std::uint8_t>();
    const auto number = reader.take<ObjectNumber>();
    if (change == kDrop) {
        return {number, std::nullopt};
    }
    const auto baseNumber = reader.take<ObjectNumber>();
    const auto head = reader.take<std::uint32_t>();
    const auto tail = reader.take<std::uint32_t>();
    const std::string_view middle = reader.takeText();
    std::string_view base;
    if (const auto changed = changes.find(baseNumber); changed != changes.end()) {
        base = changed->second ? std::string_view(*changed->second) : base;
    } else if (const std::string* const known = isFromNothing ? nullptr : find(baseNumber)) {
        base = *known;
    }
    byteCount += std::size_t{head} + tail + middle.size();
    if (change != kSet || head > base.size() || tail > base.size() - head || byteCount > kMostBytes) {
        throw Broken();
    }
    std::string whole(base.substr(0, head));
    whole.append(middle).append(base.substr(base.size() - tail));
    return {number, std::move(whole)};
}

void Objects::apply(std::string_view difference)
{
    ByteReader reader(difference);
    const auto time = reader.take<std::int64_t>();
    const bool isFromNothing = reader.take<bool>();
    Changes changes;
    std::size_t byteCount = isFromNothing ? 0 : byteCount_;
    while (!reader.isAtEnd()) {
        auto [number, object] = takeChange(reader, changes, isFromNothing, byteCount);
        changes[number] = std::move(object);
    }
    if (isFromNothing) {
        clear();
    }
    for (auto& [number, object] : changes) {
        object ? put(number, std::move(*object)) : remove(number);
    }
    time_ = time;
}

void Objects::clear()
{
    objects_.clear();
    byteCount_ = 0;
}

void Objects::set(ObjectNumber number, ObjectNumber base, std::string bytes, ByteWriter& changes)
{
    const std::string* const known = find(base);
    const std::string_view old = known != nullptr ? *known : std::string_view();
    const auto same = std::ranges::mismatch(old, bytes);
    const auto head = static_cast<std::size_t>(same.in1 - old.begin());
    const auto sameTail = std::mismatch(old.rbegin(), old.rend() - static_cast<std::ptrdiff_t>(head), bytes.rbegin(),
                                        bytes.rend() - static_cast<std::ptrdiff_t>(head));
    const auto tail = static_cast<std::size_t>(sameTail.first - old.rbegin());
    changes.put(std::uint8_t{kSet});
    changes.put(number);
    changes.put(base);
    changes.put(static_cast<std::uint32_t>(head));
    changes.put(static_cast<std::uint32_t>(tail));
    changes.put(std::string_view(bytes).substr(head, bytes.size() - head - tail));
    put(number, std::move(bytes));
}

void Objects::drop(ObjectNumber number, ByteWriter& changes)
{
    changes.put(std::uint8_t{kDrop});
    changes.put(number);
    remove(number);
}

} // namespace journal
