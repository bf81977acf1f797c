#pragma once

// Letters by the toolkit.

#include "core/lettering.h"

#include <QFont>

class QtLettering final : public Lettering {
public:
    std::vector<std::string> names() override;
    int lineWidth(const TextFont& font, std::string_view line) override;
    int lineHeight(const TextFont& font) override;
    Letters line(const TextFont& font, std::string_view line, std::int32_t colour) override;
};

/// The toolkit's font of that look. Its size is in pixels.
QFont toolkitFont(const TextFont& font);
