#include "twcore/media/near_pictures.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

constexpr double kSameSeconds = 0.5;
// Packets of picture that are looked through for a key frame: more than the longest usual group.
constexpr int kMostPackets = 600;

} // namespace

bool NearPictures::open()
{
    std::uint32_t error = 0;
    file_ = InputFile::open(media_->path, patience_, error);
    const int stream = media_->picture->streamIndex;
    if (!file_ || !file_->readStreamInfo() || stream >= static_cast<int>(file_->context()->nb_streams)) {
        return false;
    }
    file_->keepOnly(stream);
    decoder_ = Decoder::open(*file_->stream(stream), 1);
    return decoder_ != nullptr;
}

bool NearPictures::seek(double time)
{
    const int stream = media_->picture->streamIndex;
    const auto stamp = static_cast<std::int64_t>(std::floor(time / av_q2d(file_->stream(stream)->time_base)));
    if (av_seek_frame(file_->context(), stream, stamp, AVSEEK_FLAG_BACKWARD) >= 0) {
        return true;
    }
    const double length = std::max(0.001, media_->picture->durationMs / 1000.0);
    const double share = std::clamp((time - media_->zeroSeconds) / length, 0.0, 1.0);
    const auto place = static_cast<std::int64_t>(share * static_cast<double>(file_->byteCount()));
    return av_seek_frame(file_->context(), -1, place, AVSEEK_FLAG_BYTE) >= 0;
}

SharedFrame NearPictures::decodeKey()
{
    const auto packet = makePacket();
    for (int i = 0; i < kMostPackets && file_->read(*packet);) {
        if (packet->stream_index != media_->picture->streamIndex) {
            continue;
        }
        ++i;
        if ((packet->flags & AV_PKT_FLAG_KEY) == 0) {
            continue;
        }
        decoder_->send(packet.get());
        decoder_->send(nullptr);
        FramePtr frame = decoder_->receive();
        decoder_->flush();
        if (frame) {
            return shareFrame(std::move(frame));
        }
    }
    return nullptr;
}

SharedFrame NearPictures::at(double time)
{
    if (last_ && std::abs(time - lastTime_) < kSameSeconds) {
        return last_;
    }
    broken_ = broken_ || (!file_ && !open());
    if (broken_ || !seek(time)) {
        return last_;
    }
    if (SharedFrame frame = decodeKey()) {
        last_ = std::move(frame);
        lastTime_ = time;
    }
    return last_;
}

} // namespace twcore
