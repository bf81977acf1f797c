#include "twcore/media/stamp_scan.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace twcore {

namespace {

constexpr int kPlaces = 128;
constexpr int kPackets = 400; // to look through for one with a stamp
// So much is read on either side of a break, in which both streams meet it.
constexpr double kAroundSeconds = 3;
constexpr double kBackSeconds = 2;
constexpr double kAheadSeconds = 10;

StampedPacket stamped(const AVPacket& packet)
{
    return {packet.pos, packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts, packet.pts, packet.duration};
}

std::shared_ptr<const StampBreaks> breaksOf(StampedStreams& streams, const AVStream& any)
{
    return findBreaks(streams, any.time_base.den / any.time_base.num, any.pts_wrap_bits);
}

double endOf(const AVStream& stream, const StampedPacket& packet)
{
    const auto stamp = packet.show != AV_NOPTS_VALUE ? packet.show : packet.decode;
    return static_cast<double>(stamp) * av_q2d(stream.time_base) + secondsOf(stream, packet.length);
}

class Sampler {
public:
    Sampler(InputFile& file, const std::array<int, 2>& indexes)
        : file_(file), indexes_(indexes), main_(indexes[0] >= 0 ? 0 : 1), stream_(*file.stream(indexes[main_])),
          tick_(av_q2d(stream_.time_base))
    {}

    Scan scan()
    {
        std::vector<Place> places;
        for (int i = 0; i < kPlaces; ++i) {
            const auto place = at(file_.byteCount() / kPlaces * i);
            if (place && (places.empty() || place->position > places.back().position)) {
                places.push_back(*place);
            }
        }
        if (places.size() < 3) {
            return {};
        }
        std::vector<double> rates;
        for (std::size_t i = 1; i < places.size(); ++i) {
            rates.push_back(step(places[i - 1], places[i])
                            / static_cast<double>(places[i].position - places[i - 1].position));
        }
        std::ranges::nth_element(rates, rates.begin() + static_cast<std::ptrdiff_t>(rates.size() / 2));
        secondsPerByte_ = rates[rates.size() / 2];
        if (secondsPerByte_ <= 0) {
            return {};
        }
        around_ = static_cast<std::int64_t>(
            std::clamp(kAroundSeconds / secondsPerByte_, double{1 << 18}, static_cast<double>(file_.byteCount())));
        for (std::size_t i = 1; i < places.size(); ++i) {
            lookBetween(places[i - 1], places[i]);
        }
        addWindow(file_.byteCount() - around_, file_.byteCount());
        return file_.gaveUp() ? Scan{} : compose(places);
    }

private:
    struct Place {
        std::int64_t position;
        std::int64_t stamp; // of the main stream
        std::optional<StampedPacket> sound;
    };
    using Window = std::pair<std::int64_t, std::int64_t>; // bytes

    std::optional<Place> at(std::int64_t position)
    {
        std::optional<StampedPacket> sound;
        if (av_seek_frame(file_.context(), stream_.index, position, AVSEEK_FLAG_BYTE) < 0) {
            return std::nullopt;
        }
        for (int i = 0; i < kPackets && file_.read(*packet_); ++i) {
            const bool isPlaced = packet_->dts != AV_NOPTS_VALUE && packet_->pos >= 0;
            if (isPlaced && packet_->stream_index == indexes_[1] && !sound) {
                sound = stamped(*packet_);
            }
            if (isPlaced && packet_->stream_index == stream_.index) {
                return Place{packet_->pos, packet_->dts, sound};
            }
        }
        return std::nullopt;
    }

    /// In seconds, round the counter's end where that is shorter.
    double step(const Place& a, const Place& b) const
    {
        const std::int64_t counter = std::int64_t{1} << std::min(stream_.pts_wrap_bits, 62);
        const std::int64_t ahead = ((b.stamp - a.stamp) % counter + counter) % counter;
        return static_cast<double>(ahead < counter / 2 ? ahead : ahead - counter) * tick_;
    }

    void lookBetween(const Place& a, const Place& b)
    {
        const double expected = secondsPerByte_ * static_cast<double>(b.position - a.position);
        const double found = step(a, b);
        if (file_.gaveUp() || (found >= expected / 2 - kBackSeconds && found <= expected * 2 + kAheadSeconds)) {
            return;
        }
        const auto middle = b.position - a.position > around_ ? at((a.position + b.position) / 2) : std::nullopt;
        if (middle && middle->position > a.position && middle->position < b.position) {
            lookBetween(a, *middle);
            lookBetween(*middle, b);
        } else {
            addWindow(a.position - around_, b.position + around_);
        }
    }

    void addWindow(std::int64_t from, std::int64_t to)
    {
        from = std::max<std::int64_t>(from, 0);
        if (!windows_.empty() && from <= windows_.back().second) {
            windows_.back().second = std::max(windows_.back().second, to);
        } else {
            windows_.emplace_back(from, to);
        }
    }

    StampedStreams read(const Window& window)
    {
        StampedStreams streams;
        if (av_seek_frame(file_.context(), stream_.index, window.first, AVSEEK_FLAG_BYTE) >= 0) {
            for (int i = 0; (i = readOneOf(file_, *packet_, indexes_)) >= 0 && packet_->pos < window.second;) {
                auto& packets = streams[static_cast<std::size_t>(i)];
                if (packet_->pos >= 0 || !packets.empty()) {
                    packets.push_back(stamped(*packet_));
                }
            }
        }
        return streams;
    }

    /// What is added at each window holds from there up to the next one.
    Scan compose(const std::vector<Place>& places)
    {
        auto breaks = std::make_shared<StampBreaks>();
        breaks->shifts = {{{{0, 0}}, {{0, 0}}}};
        Scan scan;
        for (const Window& window : windows_) {
            StampedStreams streams = read(window);
            const auto found = breaksOf(streams, stream_);
            for (std::size_t i = 0; i < streams.size(); ++i) {
                auto& shifts = breaks->shifts[i];
                // A stream that is missing here moves with the other one.
                const std::size_t from = streams[i].empty() ? 1 - i : i;
                const std::int64_t before = shifts.back().ticks;
                const std::int64_t base = found && !found->shifts[from].empty() ? found->shifts[from].front().ticks : 0;
                for (const auto& shift : found ? found->shifts[from] : std::vector<StampBreaks::Shift>{}) {
                    if (before + shift.ticks - base != shifts.back().ticks) {
                        shifts.push_back({shift.position, before + shift.ticks - base});
                    }
                }
                for (auto& packet : streams[i]) {
                    packet.decode += before - base;
                    packet.show += packet.show != AV_NOPTS_VALUE ? before - base : 0;
                    if (window == windows_.back()) {
                        scan.ends[i] = std::max(scan.ends[i], endOf(*file_.stream(indexes_[i]), packet));
                    }
                }
            }
            for (const auto& packet : streams[1]) {
                breaks->soundPlaces.push_back({packet.position, packet.decode});
            }
        }
        if (scan.ends[main_] < 0 || file_.gaveUp()) {
            return {};
        }
        if (indexes_[1 - main_] >= 0 && scan.ends[1 - main_] < 0) {
            scan.ends[1 - main_] = scan.ends[main_]; // it is over before: no longer than that
        }
        if (std::ranges::all_of(breaks->shifts, [](const auto& shifts) { return shifts.size() == 1; })) {
            return scan;
        }
        addPlaces(*breaks, places);
        scan.breaks = std::move(breaks);
        return scan;
    }

    /// The sound of the places between the windows.
    void addPlaces(StampBreaks& breaks, const std::vector<Place>& places) const
    {
        auto& all = breaks.soundPlaces;
        const auto& shifts = breaks.shifts[1];
        for (const Place& place : places) {
            const auto isInside = [&](const Window& w) {
                return place.position >= w.first && place.position < w.second;
            };
            if (place.sound && std::ranges::none_of(windows_, isInside)) {
                const auto above =
                    std::ranges::upper_bound(shifts, place.sound->position, {}, &StampBreaks::Shift::position);
                all.push_back({place.sound->position, place.sound->decode + (above - 1)->ticks});
            }
        }
        std::ranges::stable_sort(all, {}, &StampBreaks::Place::position);
        std::vector<StampBreaks::Place> rising;
        for (const auto& place : all) {
            if (rising.empty() || place.ticks > rising.back().ticks) {
                rising.push_back(place);
            }
        }
        all = std::move(rising);
    }

    InputFile& file_;
    const std::array<int, 2>& indexes_;
    std::size_t main_;
    const AVStream& stream_;
    double tick_;
    double secondsPerByte_ = 0;
    std::int64_t around_ = 0;
    std::vector<Window> windows_;
    PacketPtr packet_ = makePacket();
};

} // namespace

bool mayBreak(const InputFile& file) { return file.formatName() == "mpeg" || file.formatName() == "mpegts"; }

double secondsOf(const AVStream& stream, std::int64_t length)
{
    if (length <= 0 && stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO && stream.avg_frame_rate.num > 0) {
        return 1 / av_q2d(stream.avg_frame_rate);
    }
    return static_cast<double>(std::max<std::int64_t>(0, length)) * av_q2d(stream.time_base);
}

int readOneOf(InputFile& file, AVPacket& packet, const std::array<int, 2>& indexes)
{
    while (file.read(packet)) {
        if (packet.stream_index == indexes[0] || packet.stream_index == indexes[1]) {
            return packet.stream_index == indexes[0] ? 0 : 1;
        }
    }
    return -1;
}

Scan brokenScan(InputFile& file, const std::array<int, 2>& indexes)
{
    StampedStreams streams;
    auto packet = makePacket();
    for (int i = 0; (i = readOneOf(file, *packet, indexes)) >= 0;) {
        streams[static_cast<std::size_t>(i)].push_back(stamped(*packet));
    }
    Scan scan;
    scan.breaks = breaksOf(streams, *file.stream(std::max(indexes[0], indexes[1])));
    scan.hasDamage = scan.breaks && scan.breaks->hasDamage;
    for (std::size_t i = 0; i < streams.size(); ++i) {
        for (const auto& read : streams[i]) {
            scan.ends[i] = std::max(scan.ends[i], endOf(*file.stream(indexes[i]), read));
        }
    }
    return scan;
}

Scan sampledScan(InputFile& file, const std::array<int, 2>& indexes) { return Sampler(file, indexes).scan(); }

} // namespace twcore
