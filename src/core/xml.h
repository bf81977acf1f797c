#pragma once

// XML as the program reads it: documents whose attributes keep their order and are told by their places. Pure; any
// thread.

#include "core/numbers.h"

#include <pugixml.hpp>

#include <fstream>
#include <string>
#include <string_view>

namespace xml {

/// Reads a file. False when it is none, or not well formed; `why` says what and where then.
inline bool load(pugi::xml_document& document, const std::string& path, std::string& why)
{
    const auto result = document.load_file(path.c_str());
    if (!result) {
        why = std::string(result.description()) + ", at byte " + std::to_string(result.offset);
    }
    return result;
}

/// Writes a file, without a declaration ahead of the root. False when not all of it could be written.
inline bool save(const pugi::xml_document& document, const std::string& path)
{
    std::ofstream file(path, std::ios::binary);
    document.save(file, "  ", pugi::format_default | pugi::format_no_declaration, pugi::encoding_utf8);
    file.close();
    return !file.fail();
}

/// The first element of that name anywhere in the document; an empty node when there is none.
inline pugi::xml_node firstNamed(const pugi::xml_document& document, std::string_view name)
{
    return document.find_node([&](const pugi::xml_node& node) { return node.name() == name; });
}

/// The attribute at a place of an element's list, from 0; an empty one when there are not as many.
inline pugi::xml_attribute attributeAt(pugi::xml_node node, int place)
{
    auto attribute = node.first_attribute();
    for (; place > 0; --place) {
        attribute = attribute.next_attribute();
    }
    return attribute;
}

/// That attribute as a whole number. Raises errors 6 and 13, as `numbers::fromText`.
template <std::signed_integral Number = std::int16_t>
Number numberAt(pugi::xml_node node, int place)
{
    return numbers::rounded<Number>(numbers::fromText(attributeAt(node, place).value()));
}

} // namespace xml
