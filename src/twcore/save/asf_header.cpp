#include "twcore/save/asf_header.h"

#include "twcore/save/byte_text.h"

#include <algorithm>
#include <unistd.h>

namespace twcore {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Guid = std::array<std::uint8_t, 16>;

constexpr Guid kHeader{0x30, 0x26, 0xb2, 0x75, 0x8e, 0x66, 0xcf, 0x11, 0xa6, 0xd9, 0x00, 0xaa, 0x00, 0x62, 0xce, 0x6c};
constexpr Guid kFile{0xa1, 0xdc, 0xab, 0x8c, 0x47, 0xa9, 0xcf, 0x11, 0x8e, 0xe4, 0x00, 0xc0, 0x0c, 0x20, 0x53, 0x65};
constexpr Guid kContent{0x33, 0x26, 0xb2, 0x75, 0x8e, 0x66, 0xcf, 0x11, 0xa6, 0xd9, 0x00, 0xaa, 0x00, 0x62, 0xce, 0x6c};
constexpr Guid kExtended{0x40, 0xa4, 0xd0, 0xd2, 0x07, 0xe3, 0xd2, 0x11,
                         0x97, 0xf0, 0x00, 0xa0, 0xc9, 0x5e, 0xa8, 0x50};
constexpr Guid kPadding{0x74, 0xd4, 0x06, 0x18, 0xdf, 0xca, 0x09, 0x45, 0xa4, 0xba, 0x9a, 0xab, 0xcb, 0x96, 0xaa, 0xe8};

constexpr std::size_t kObjectHead = 24; // name and size
constexpr std::size_t kHeaderHead = 30; // those, the number of objects, two reserved bytes
constexpr std::size_t kMaxHeaderBytes = 64u << 20;
constexpr std::size_t kMaxTextBytes = 0xfffe;
constexpr std::size_t kFileSizeAt = 16; // in the body of the file properties

/// Reads a body from front to back; what is cut off reads as nothing.
class BodyReader {
public:
    explicit BodyReader(const Bytes& body) : body_(body) {}

    Bytes take(std::size_t count)
    {
        const std::size_t first = std::min(at_, body_.size());
        at_ = std::min(body_.size(), first + count);
        return {body_.begin() + std::ptrdiff_t(first), body_.begin() + std::ptrdiff_t(at_)};
    }
    std::size_t number16()
    {
        const Bytes two = take(2);
        return two.size() == 2 ? std::size_t(two[0] | two[1] << 8) : 0;
    }
    bool isAtEnd() const { return at_ >= body_.size(); }

private:
    const Bytes& body_;
    std::size_t at_ = 0;
};

/// UTF-16 with its terminator, cut at a character where the format has no more room.
Bytes text16(const std::string& text) { return utf16Of(text, kMaxTextBytes); }

void append(Bytes& to, const Bytes& more) { to.insert(to.end(), more.begin(), more.end()); }

struct ExtendedField {
    Bytes name;
    std::size_t type = 0; // 0: text
    Bytes value;
};

} // namespace

std::optional<AsfHeader> AsfHeader::read(int descriptor)
{
    Bytes head(kHeaderHead);
    if (!readAt(descriptor, 0, head) || !std::equal(kHeader.begin(), kHeader.end(), head.begin())) {
        return std::nullopt;
    }
    const std::uint64_t size = littleEndian(head, 16, 8);
    if (size < kHeaderHead || size > kMaxHeaderBytes) {
        return std::nullopt;
    }
    Bytes all(size);
    if (!readAt(descriptor, 0, all)) {
        return std::nullopt;
    }
    AsfHeader header;
    header.size_ = size;
    header.reserved_ = {head[28], head[29]};
    for (std::size_t at = kHeaderHead; at < size;) {
        const std::uint64_t length = size - at >= kObjectHead ? littleEndian(all, at + 16, 8) : 0;
        if (length < kObjectHead || length > size - at) {
            return std::nullopt;
        }
        Object object;
        std::copy_n(all.begin() + std::ptrdiff_t(at), object.guid.size(), object.guid.begin());
        object.body.assign(all.begin() + std::ptrdiff_t(at + kObjectHead), all.begin() + std::ptrdiff_t(at + length));
        if (object.guid != kPadding) {
            header.objects_.push_back(std::move(object));
        }
        at += length;
    }
    return header;
}

AsfHeader::Object& AsfHeader::objectOf(const Guid& guid)
{
    const auto found = std::ranges::find(objects_, guid, &Object::guid);
    return found != objects_.end() ? *found : objects_.emplace_back(Object{guid, {}});
}

void AsfHeader::set(const MovieFields& fields)
{
    setContent(fields);
    if (!fields.rating.empty()) {
        setExtended(fields);
    }
}

void AsfHeader::setContent(const MovieFields& fields)
{
    Object& object = objectOf(kContent);
    BodyReader reader(object.body);
    std::array<std::size_t, 5> lengths{};
    for (auto& length : lengths) {
        length = reader.number16();
    }
    const std::array<const std::string*, 5> given{&fields.title, &fields.author, &fields.copyright, &fields.description,
                                                  &fields.rating};
    Bytes sizes;
    Bytes texts;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const Bytes old = reader.take(lengths[i]);
        const Bytes text = given[i]->empty() ? old : text16(*given[i]);
        appendLittleEndian(sizes, text.size(), 2);
        append(texts, text);
    }
    object.body = std::move(sizes);
    append(object.body, texts);
}

/// Many players show the rating only when it stands among the extended fields too.
void AsfHeader::setExtended(const MovieFields& fields)
{
    Object& object = objectOf(kExtended);
    const Bytes ratingName = text16("rating");
    BodyReader reader(object.body);
    std::vector<ExtendedField> all;
    for (std::size_t count = reader.number16(); count > 0 && !reader.isAtEnd(); --count) {
        ExtendedField field;
        field.name = reader.take(reader.number16());
        field.type = reader.number16();
        field.value = reader.take(reader.number16());
        if (field.name != ratingName) {
            all.push_back(std::move(field));
        }
    }
    all.push_back({ratingName, 0, text16(fields.rating)});
    Bytes body;
    appendLittleEndian(body, all.size(), 2);
    for (const auto& field : all) {
        appendLittleEndian(body, field.name.size(), 2);
        append(body, field.name);
        appendLittleEndian(body, field.type, 2);
        appendLittleEndian(body, field.value.size(), 2);
        append(body, field.value);
    }
    object.body = std::move(body);
}

std::size_t AsfHeader::leastSize() const
{
    std::size_t size = kHeaderHead;
    for (const auto& object : objects_) {
        size += kObjectHead + object.body.size();
    }
    return size;
}

std::vector<std::uint8_t> AsfHeader::bytes(std::size_t size) const
{
    const std::size_t least = leastSize();
    if (size != least && size < least + kObjectHead) {
        return {};
    }
    const bool padded = size != least;
    Bytes all(kHeader.begin(), kHeader.end());
    appendLittleEndian(all, size, 8);
    appendLittleEndian(all, objects_.size() + (padded ? 1 : 0), 4);
    all.insert(all.end(), reserved_.begin(), reserved_.end());
    const auto add = [&](const Guid& guid, const Bytes& body) {
        all.insert(all.end(), guid.begin(), guid.end());
        appendLittleEndian(all, kObjectHead + body.size(), 8);
        append(all, body);
    };
    for (const auto& object : objects_) {
        add(object.guid, object.body);
    }
    if (padded) {
        add(kPadding, Bytes(size - least - kObjectHead));
    }
    return all;
}

void AsfHeader::setFileSize(std::uint64_t size)
{
    Bytes& body = objectOf(kFile).body;
    if (body.size() >= kFileSizeAt + 8) {
        Bytes number;
        appendLittleEndian(number, size, 8);
        std::ranges::copy(number, body.begin() + kFileSizeAt);
    }
}

bool emptyExtendedFields(int descriptor)
{
    auto header = AsfHeader::read(descriptor);
    if (!header) {
        return false;
    }
    std::erase_if(header->objects_, [](const auto& object) { return object.guid == kExtended; });
    const Bytes all = header->bytes(header->size());
    return !all.empty() && writeAt(descriptor, 0, all);
}

} // namespace twcore
