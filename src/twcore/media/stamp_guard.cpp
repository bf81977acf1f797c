#include "twcore/media/stamp_guard.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

namespace twcore {

namespace {

/// The main header of AVI tells the length once more, beside the rates of the streams, which the stamps hang on.
double aviLength(const std::string& path)
{
    constexpr std::size_t kPeriod = 32;
    constexpr std::size_t kFrames = 48;
    std::array<char, kFrames + 4> head{};
    std::ifstream in(path, std::ios::binary);
    if (!in.read(head.data(), head.size()) || std::memcmp(head.data() + 24, "avih", 4) != 0) {
        return 0;
    }
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 4; i-- > 0;) {
            value = value << 8 | static_cast<std::uint8_t>(head[at + i]);
        }
        return static_cast<double>(value);
    };
    return number(kPeriod) * number(kFrames) / 1e6;
}

} // namespace

double ownLength(const InputFile& file, const std::string& path)
{
    const AVFormatContext& context = *file.context();
    if (file.formatName() == "avi") {
        return aviLength(path);
    }
    const bool isTold = context.duration_estimation_method == AVFMT_DURATION_FROM_STREAM && context.duration > 0;
    return isTold && (context.iformat->flags & AVFMT_TS_DISCONT) == 0
               ? static_cast<double>(context.duration) / AV_TIME_BASE
               : 0;
}

bool StampGuard::isDamaged(std::int64_t stamp) const
{
    const double jump = (static_cast<double>(stamp) - static_cast<double>(last_)) * tick_;
    return jump > kLongestHoleSeconds
           || (ownEnd_ > 0 && jump > kJumpSeconds && static_cast<double>(stamp) * tick_ > ownEnd_ + kJumpSeconds);
}

bool StampGuard::pass(AVPacket& packet)
{
    auto& main = packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
    if (main == AV_NOPTS_VALUE) {
        return true;
    }
    if (last_ != AV_NOPTS_VALUE && isDamaged(main)) {
        if (++damaged_ > kDamagedStamps) {
            return false;
        }
        main = last_ += std::max<std::int64_t>(step_, 1);
        packet.pts = packet.pts != AV_NOPTS_VALUE ? main + lead_ : packet.pts;
        return true;
    }
    damaged_ = 0;
    if (packet.pts != AV_NOPTS_VALUE && last_ != AV_NOPTS_VALUE && isDamaged(packet.pts)) {
        packet.pts = main + lead_;
    }
    lead_ = packet.pts != AV_NOPTS_VALUE ? packet.pts - main : lead_;
    step_ = last_ != AV_NOPTS_VALUE && main > last_ ? main - last_ : step_;
    last_ = main;
    return true;
}

} // namespace twcore
