#include "app/engine_lists.h"

#include "app/terminal_text.h"
#include "engine/ITWProfiles.h"
#include "engine/ITWSave.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <iostream>

namespace app {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWProfiles;
using engine::ITWSave;

namespace {

std::string trimmed(const std::string& buffer)
{
    const auto end = buffer.find_last_not_of(' ');
    std::string text = end == std::string::npos ? std::string() : buffer.substr(0, end + 1);
    while (!text.empty() && text.back() == '\0') {
        text.pop_back();
    }
    return text;
}

std::vector<std::string> compressorNames(engine::Status (ITWSave::*nameAt)(std::int16_t, engine::TextBuffer))
{
    constexpr std::size_t kNameLength = 128;
    std::vector<std::string> names;
    const auto save = EngineAs<ITWSave>();
    for (std::int16_t index = 0;; ++index) {
        std::string buffer(kNameLength, ' ');
        check((save.get()->*nameAt)(index, buffer));
        const std::string name = trimmed(buffer);
        if (name.empty()) {
            return names;
        }
        names.push_back(name);
    }
}

void printOpenProfile()
{
    const auto profiles = EngineAs<ITWProfiles>();
    std::string buffer(500, ' ');
    check(profiles->GetProfileName(buffer));
    std::cout << "  " << trimmed(buffer) << "\n";
    check(profiles->CloseProfile());
}

} // namespace

std::vector<std::string> videoCompressorNames() { return compressorNames(&ITWSave::GetVideoCompressorName); }

std::vector<std::string> audioCompressorNames() { return compressorNames(&ITWSave::GetAudioCompressorName); }

void listCompressors()
{
    std::cout << "Video:\n";
    for (const auto& name : videoCompressorNames()) {
        std::cout << "  " << name << "\n";
    }
    std::cout << "  Uncompressed\nAudio:\n";
    for (const auto& name : audioCompressorNames()) {
        std::cout << "  " << name << "\n";
    }
    std::cout << "  Uncompressed\n";
}

void listProfiles()
{
    const auto profiles = EngineAs<ITWProfiles>();
    std::int16_t count = 0;
    Bool16 ok = engine::kFalse;
    check(profiles->InitProfileManager(ok));
    check(profiles->GetSystemProfileCount(count));
    std::cout << "System:\n";
    for (std::int16_t index = 0; index < count; ++index) {
        check(profiles->OpenSystemProfile(index, ok));
        if (ok != engine::kFalse) {
            printOpenProfile();
        }
    }
    std::string buffer(260, ' ');
    check(profiles->GetFirstCustomProfile(buffer, ok));
    for (bool isFirst = true; !trimmed(buffer).empty(); isFirst = false) {
        std::cout << (isFirst ? "Yours:\n" : "") << "  " << forTerminal(trimmed(buffer)) << "\n";
        check(profiles->GetNextCustomProfile(buffer));
    }
    check(profiles->CloseCustomProfileList());
    check(profiles->ReleaseProfileManager());
}

} // namespace app
