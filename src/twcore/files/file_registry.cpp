#include "twcore/files/file_registry.h"

#include "engine/status.h"

#include <algorithm>

namespace twcore {

namespace {

constexpr auto kTrialTime = std::chrono::seconds(10);
constexpr std::size_t kMaxTried = 256;

std::vector<bool> kindsOf(const MediaFile& media)
{
    std::vector<bool> kinds; // true: picture
    if (media.picture) {
        kinds.push_back(true);
    }
    if (media.sound) {
        kinds.push_back(false);
    }
    return kinds;
}

} // namespace

/// On any thread.
FileRegistry::Tried FileRegistry::lookAt(const std::string& path)
{
    const FileStamp stamp = FileStamp::of(path);
    try {
        return {path, stamp, tryMediaFile(path, Patience{.deadline = std::chrono::steady_clock::now() + kTrialTime})};
    } catch (const std::exception&) {
        return {path, stamp, Trial{engine::media_error::kInvalidFormat, nullptr}};
    }
}

void FileRegistry::lookAhead(const std::string& path)
{
    constexpr std::size_t kAhead = 2;
    const bool isKnown = std::ranges::find(ahead_, path, &Ahead::path) != ahead_.end()
                         || std::ranges::find(tried_, path, &Tried::path) != tried_.end();
    if (isKnown) {
        return;
    }
    if (ahead_.size() >= kAhead) {
        ahead_.pop_front();
    }
    ahead_.push_back({path, UnderWay<Tried>([path] { return lookAt(path); })});
}

std::optional<FileRegistry::Tried> FileRegistry::takeAhead(const std::string& path)
{
    const auto found = std::ranges::find(ahead_, path, &Ahead::path);
    if (found == ahead_.end()) {
        return std::nullopt;
    }
    UnderWay<Tried> look = std::move(found->look);
    ahead_.erase(found); // events may run while it is waited for
    return look.within(kTrialTime);
}

const Trial& FileRegistry::keep(Tried tried)
{
    if (tried_.size() >= kMaxTried) {
        tried_.pop_front();
    }
    return tried_.emplace_back(std::move(tried)).trial;
}

Trial FileRegistry::tryFile(const std::string& path)
{
    const auto isLasting = [](const Tried& tried) {
        return tried.stamp.isThere && tried.trial.error != engine::media_error::kCannotLoad;
    };
    if (auto ahead = takeAhead(path); ahead && isLasting(*ahead)) {
        keep(std::move(*ahead));
    }
    const auto stamp = answeredWithin<FileStamp>(kTrialTime, [path] { return FileStamp::of(path); });
    if (!stamp) {
        return {engine::media_error::kCannotLoad, nullptr};
    }
    const auto found = std::ranges::find(tried_, path, &Tried::path);
    if (found != tried_.end()) {
        if (stamp->isThere && found->stamp == *stamp) {
            return found->trial;
        }
        tried_.erase(found);
    }
    auto tried = answeredWithin<Tried>(kTrialTime, [path] { return lookAt(path); });
    if (!tried) {
        return {engine::media_error::kCannotLoad, nullptr};
    }
    return isLasting(*tried) ? keep(std::move(*tried)) : tried->trial;
}

engine::Handle FileRegistry::openFile(const std::string& path)
{
    Trial trial = tryFile(path);
    if (!trial.file) {
        return 0;
    }
    const engine::Handle handle = handles_.next();
    if (handle == 0) {
        return 0;
    }
    File file{trial.file, true, std::vector<engine::Handle>(kindsOf(*trial.file).size(), 0)};
    files_.emplace(handle, std::move(file));
    order_.push_back(handle);
    return handle;
}

bool FileRegistry::closeFile(engine::Handle file)
{
    const auto found = files_.find(file);
    if (found == files_.end() || !found->second.isOpen) {
        return false;
    }
    found->second.isOpen = false;
    std::erase(order_, file);
    return true;
}

bool FileRegistry::hasOpenStream(const File& file) const
{
    return std::ranges::any_of(file.streams, [&](auto handle) { return findOpen(handle) != nullptr; });
}

const std::string* FileRegistry::pathOf(engine::Handle file) const
{
    const auto found = files_.find(file);
    const bool isThere = found != files_.end() && (found->second.isOpen || hasOpenStream(found->second));
    return isThere ? &found->second.media->path : nullptr;
}

engine::Handle FileRegistry::firstOpenStream(engine::Handle file) const
{
    const auto found = files_.find(file);
    if (found == files_.end()) {
        return 0;
    }
    const auto open = std::ranges::find_if(found->second.streams, [&](auto h) { return findOpen(h) != nullptr; });
    return open != found->second.streams.end() ? *open : 0;
}

engine::Handle FileRegistry::openStream(engine::Handle file, std::int16_t index)
{
    const auto found = files_.find(file);
    if (found == files_.end() || !found->second.isOpen || index < 0
        || static_cast<std::size_t>(index) >= found->second.streams.size()) {
        return 0;
    }
    const MediaFile& media = *found->second.media;
    engine::Handle& handle = found->second.streams[static_cast<std::size_t>(index)];
    if (handle == 0) {
        handle = handles_.next();
        const bool isPicture = kindsOf(media)[static_cast<std::size_t>(index)];
        streams_[handle] = {handle, file, isPicture, true,
                            isPicture ? media.picture->durationMs : media.sound->durationMs};
    }
    streams_[handle].isOpen = true;
    return handle;
}

bool FileRegistry::closeStream(engine::Handle stream)
{
    const auto found = streams_.find(stream);
    const bool wasOpen = found != streams_.end() && found->second.isOpen;
    if (wasOpen) {
        found->second.isOpen = false;
    }
    return wasOpen;
}

const FileRegistry::Stream* FileRegistry::findOpen(engine::Handle stream) const
{
    const auto found = streams_.find(stream);
    return found != streams_.end() && found->second.isOpen ? &found->second : nullptr;
}

MediaFilePtr FileRegistry::mediaOf(engine::Handle file) const
{
    const auto found = files_.find(file);
    return found != files_.end() ? found->second.media : nullptr;
}

engine::Handle FileRegistry::streamOfKind(engine::Handle file, bool picture)
{
    const auto media = mediaOf(file);
    if (!media) {
        return 0;
    }
    const auto kinds = kindsOf(*media);
    const auto found = std::ranges::find(kinds, picture);
    return found == kinds.end() ? 0 : openStream(file, static_cast<std::int16_t>(found - kinds.begin()));
}

StreamTarget FileRegistry::targetOf(engine::Handle stream) const
{
    const auto found = streams_.find(stream);
    if (found == streams_.end()) {
        return {};
    }
    return {mediaOf(found->second.file), found->second.isPicture};
}

void FileRegistry::reopen(engine::Handle file)
{
    File& record = files_.at(file);
    if (!record.isOpen) {
        record.isOpen = true;
        order_.push_back(file);
    }
}

bool FileRegistry::acquire(engine::Handle stream)
{
    const auto found = streams_.find(stream);
    if (found == streams_.end()) {
        return false;
    }
    reopen(found->second.file);
    found->second.isOpen = true;
    return true;
}

std::int32_t FileRegistry::durationMs(engine::Handle stream) const
{
    const auto found = streams_.find(stream);
    return found != streams_.end() ? found->second.durationMs : 0;
}

} // namespace twcore
