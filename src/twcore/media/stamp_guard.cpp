#include "twcore/media/stamp_guard.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

namespace twcore {

namespace {

/// The main header of AVI tells the length once more, beside the rates of the streams, which the stamps hang on. It
/// may count the first part of a large file alone: then the picture's own header, or a further one, counts them all.
double aviLength(const std::string& path)
{
    constexpr std::int64_t kHeaders = 24; // the first of them
    constexpr int kMostHeaders = 200;
    std::ifstream in(path, std::ios::binary);
    std::array<char, 12> head{};
    const auto readAt = [&](std::int64_t at) {
        in.clear();
        return static_cast<bool>(in.seekg(at).read(head.data(), head.size()));
    };
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 4; i-- > 0;) {
            value = value << 8 | static_cast<std::uint8_t>(head[at + i]);
        }
        return value;
    };
    const auto isNamed = [&](std::size_t at, const char* name) { return std::memcmp(head.data() + at, name, 4) == 0; };
    if (!readAt(4) || !readAt(number(0) + std::int64_t{8})) {
        head.fill(0);
    }
    const bool hasParts = isNamed(0, "RIFF");
    if (!readAt(kHeaders) || !isNamed(0, "avih")) {
        return 0;
    }
    const double period = number(8);
    readAt(kHeaders + 24);
    double counted = number(0);
    double all = 0;
    std::int64_t at = kHeaders;
    for (int i = 0; i < kMostHeaders && readAt(at) && !isNamed(8, "movi"); ++i) {
        if (isNamed(0, "dmlh")) {
            all = number(8);
        }
        const bool isEntered = isNamed(0, "LIST") && (isNamed(8, "odml") || isNamed(8, "strl"));
        const bool isPicture = isNamed(0, "strh") && isNamed(8, "vids");
        const std::int64_t next = at + (isEntered ? 12 : 8 + std::int64_t{number(4)} + number(4) % 2);
        if (isPicture && readAt(at + 40)) {
            counted = std::max<double>(counted, number(0));
        }
        at = next;
    }
    return all > 0 || !hasParts ? period * std::max(counted, all) / 1e6 : 0;
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
        hasRefused_ = true;
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
