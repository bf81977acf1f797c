#pragma once

// Letters for runs without fonts: a filled box in the place of each byte that is no blank.

#include "core/lettering.h"

class BlockLetters final : public Lettering {
public:
    std::vector<std::string> names() override { return {"Arial", "Block"}; }
    int lineWidth(const TextFont& font, std::string_view line) override;
    int lineHeight(const TextFont& font) override;
    Letters line(const TextFont& font, std::string_view line, std::int32_t colour) override;
};
