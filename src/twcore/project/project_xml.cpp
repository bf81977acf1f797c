#include "twcore/project/project_xml.h"

#include <charconv>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace twcore {

namespace {

constexpr const char* kRoot = "QuillmontProject";
constexpr const char* kVideo = "Video";
constexpr const char* kAudio = "Audio";

void writeRange(pugi::xml_node node, std::int32_t startMs, std::int32_t stopMs)
{
    node.append_attribute("Start") = startMs;
    node.append_attribute("Stop") = stopMs;
}

void writeSource(pugi::xml_node track, const SourceItem& source, const StreamPlace& place)
{
    auto node = track.append_child("Source");
    node.append_attribute("File") = place.file;
    node.append_attribute("Stream") = place.isPicture ? kVideo : kAudio;
    writeRange(node, source.startMs, source.stopMs);
    node.append_attribute("MediaStart") = source.mediaStartMs;
    node.append_attribute("MediaStop") = source.mediaStopMs;
    node.append_attribute("StretchMode") = int{source.stretchMode};
}

void writeTransition(pugi::xml_node track, const TransitionItem& transition)
{
    auto node = track.append_child("Transition");
    node.append_attribute("Name") = transition.name.c_str();
    writeRange(node, transition.startMs, transition.stopMs);
    node.append_attribute("Red") = int{transition.red};
    node.append_attribute("Green") = int{transition.green};
    node.append_attribute("Blue") = int{transition.blue};
    for (const auto& [name, value] : transition.parameters) {
        auto parameter = node.append_child("Parameter");
        parameter.append_attribute("Name") = name.c_str();
        parameter.append_attribute("Value") = value;
    }
}

[[noreturn]] void refuse(pugi::xml_node node, const std::string& what)
{
    throw std::runtime_error("Element " + std::string(node.name()) + ", byte " + std::to_string(node.offset_debug())
                             + ": " + what);
}

std::int32_t number(pugi::xml_node node, const char* name, std::optional<std::int32_t> otherwise = std::nullopt)
{
    const auto attribute = node.attribute(name);
    if (!attribute && otherwise) {
        return *otherwise;
    }
    const std::string_view text = attribute.value();
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        refuse(node, std::string("the attribute ") + name + " is missing or is no whole number");
    }
    return value;
}

std::int16_t smallNumber(pugi::xml_node node, const char* name, std::optional<std::int32_t> otherwise = std::nullopt)
{
    const std::int32_t value = number(node, name, otherwise);
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
        refuse(node, std::string("the attribute ") + name + " is out of range");
    }
    return static_cast<std::int16_t>(value);
}

std::int32_t toNumber(pugi::xml_node node, const char* name, std::int64_t value)
{
    if (value > std::numeric_limits<std::int32_t>::max()) {
        refuse(node, std::string("the attribute ") + name + " is out of range");
    }
    return static_cast<std::int32_t>(value);
}

/// Start and stop of an item: from 0 upwards, the stop behind the start.
std::pair<std::int32_t, std::int32_t> range(pugi::xml_node node)
{
    const std::int32_t start = number(node, "Start");
    const std::int32_t stop = number(node, "Stop");
    if (start < 0 || stop <= start) {
        refuse(node, "its stop is not behind its start, or its start is below 0");
    }
    return {start, stop};
}

SourceItem readSource(pugi::xml_node node, const std::function<engine::Handle(StreamPlace)>& streamAt)
{
    const std::string_view kind = node.attribute("Stream").value();
    if (kind != kVideo && kind != kAudio) {
        refuse(node, "the attribute Stream is neither Video nor Audio");
    }
    SourceItem source;
    const std::int32_t file = number(node, "File");
    source.stream = streamAt({file, kind == kVideo});
    if (source.stream == 0) {
        refuse(node, "file " + std::to_string(file) + " of the media list is not open, or has no such stream");
    }
    std::tie(source.startMs, source.stopMs) = range(node);
    source.mediaStartMs = number(node, "MediaStart", 0);
    const std::int64_t ownStop = std::int64_t{source.mediaStartMs} + (source.stopMs - source.startMs);
    source.mediaStopMs =
        node.attribute("MediaStop") ? number(node, "MediaStop") : toNumber(node, "MediaStart", ownStop);
    source.stretchMode = smallNumber(node, "StretchMode", 0);
    return source;
}

EffectItem readEffect(pugi::xml_node node)
{
    const auto [start, stop] = range(node);
    return {node.attribute("Name").value(), start, stop, false};
}

TransitionItem readTransition(pugi::xml_node node)
{
    TransitionItem transition;
    transition.name = node.attribute("Name").value();
    std::tie(transition.startMs, transition.stopMs) = range(node);
    transition.red = smallNumber(node, "Red", 0);
    transition.green = smallNumber(node, "Green", 0);
    transition.blue = smallNumber(node, "Blue", 0);
    for (const auto parameter : node.children("Parameter")) {
        transition.parameters.emplace_back(parameter.attribute("Name").value(), number(parameter, "Value"));
    }
    return transition;
}

/// Items of a list stand in the order of time and do not overlap.
template <class Item>
void append(std::vector<Item>& items, Item item, pugi::xml_node node)
{
    if (!items.empty() && item.startMs < items.back().stopMs) {
        refuse(node, "it begins before the one ahead of it ends");
    }
    if (items.size() >= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
        refuse(node, "a track has no more numbers for it");
    }
    items.push_back(std::move(item));
}

ReadTimeline::ReadTrack readTrack(pugi::xml_node node, const std::function<engine::Handle(StreamPlace)>& streamAt)
{
    ReadTimeline::ReadTrack track;
    const std::string_view kind = node.attribute("Kind").value();
    if (kind != kVideo && kind != kAudio) {
        refuse(node, "the attribute Kind is neither Video nor Audio");
    }
    track.isVideo = kind == kVideo;
    for (const auto child : node.children()) {
        const std::string_view name = child.name();
        if (name == "Source") {
            append(track.contents.sources, readSource(child, streamAt), child);
        } else if (name == "Effect") {
            append(track.contents.effects, readEffect(child), child);
        } else if (name == "Transition") {
            append(track.contents.transitions, readTransition(child), child);
        }
    }
    return track;
}

} // namespace

void writeTimeline(pugi::xml_document& document, const TimelineSnapshot& timeline,
                   const std::function<StreamPlace(engine::Handle)>& placeOf)
{
    auto node = document.append_child(kRoot).append_child("Timeline");
    node.append_attribute("FrameWidth") = int{timeline.frameWidth};
    node.append_attribute("FrameHeight") = int{timeline.frameHeight};
    for (const auto& track : timeline.tracks) {
        auto trackNode = node.append_child("Track");
        trackNode.append_attribute("Kind") = track.isVideo ? kVideo : kAudio;
        for (const auto& source : track.sources) {
            writeSource(trackNode, source, placeOf(source.stream));
        }
        for (const auto& effect : track.effects) {
            auto effectNode = trackNode.append_child("Effect");
            effectNode.append_attribute("Name") = effect.name.c_str();
            writeRange(effectNode, effect.startMs, effect.stopMs);
        }
        for (const auto& transition : track.transitions) {
            writeTransition(trackNode, transition);
        }
    }
}

ReadTimeline readTimeline(const pugi::xml_document& document,
                          const std::function<engine::Handle(StreamPlace)>& streamAt)
{
    const auto node = document.child(kRoot).child("Timeline");
    if (!node) {
        throw std::runtime_error(std::string("It has no element Timeline in a root element ") + kRoot + ".");
    }
    ReadTimeline timeline;
    if (node.attribute("FrameWidth") || node.attribute("FrameHeight")) {
        const auto width = smallNumber(node, "FrameWidth");
        const auto height = smallNumber(node, "FrameHeight");
        if (width < 1 || height < 1) {
            refuse(node, "the frame size is below 1");
        }
        timeline.frameSize = {width, height};
    }
    for (const auto track : node.children("Track")) {
        timeline.tracks.push_back(readTrack(track, streamAt));
    }
    return timeline;
}

} // namespace twcore
