#include "twcore/media/jpeg_remarks.h"

#include <array>
#include <string_view>

namespace twcore {

unsigned remarksOf(std::span<const std::uint8_t> jpeg)
{
    static constexpr std::array<std::string_view, 4> kKinds{"CS=ITU601", "Intel(R) JPEG Library, version 1",
                                                            "Metasoft MJPEG Codec", "MULTISCOPE II"};
    constexpr std::uint8_t kRemark = 0xFE, kScan = 0xDA;
    unsigned remarks = 0;
    for (std::size_t at = 2; at + 4 <= jpeg.size() && jpeg[at] == 0xFF && jpeg[at + 1] != kScan;) {
        const std::size_t length = static_cast<std::size_t>(jpeg[at + 2] << 8 | jpeg[at + 3]);
        if (length < 2 || at + 2 + length > jpeg.size()) {
            break;
        }
        const std::string_view text(reinterpret_cast<const char*>(&jpeg[at]) + 4, length - 2);
        for (std::size_t i = 0; i < kKinds.size(); ++i) {
            remarks |= jpeg[at + 1] == kRemark && text.starts_with(kKinds[i]) ? 1u << i : 0;
        }
        at += 2 + length;
    }
    return remarks;
}

} // namespace twcore
