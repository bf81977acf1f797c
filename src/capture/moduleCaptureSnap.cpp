#include "capture/moduleCaptureSnap.h"

#include "core/forms/frmCapture.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWCapture.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "export/frmProgressBar.h"
#include "media/working_folder.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>
#include <vector>

namespace moduleCaptureSnap {

using engine::check;

namespace {

namespace fs = std::filesystem;

constexpr const char* kModule = "moduleCaptureSnap";
constexpr const char* kSection = "Capture Snap";
constexpr const char* kNoSnap = "Unable to take snap.";
constexpr std::int16_t kLastNumber = 9999;

std::string stored(std::string_view key)
{
    return ports.settings->get(state::AppSection, kSection, key).value_or(std::string());
}

std::optional<double> numberIn(const std::string& text)
{
    try {
        return numbers::fromText(text);
    } catch (const engine::RuntimeError&) { // NOLINT: somebody has written into the store by hand
        return std::nullopt;
    }
}

void takeSide(std::int16_t& side, const std::string& text)
{
    constexpr double kMost = 32767;
    const auto number = numberIn(text);
    if (number && std::abs(*number) <= kMost) {
        side = numbers::rounded<std::int16_t>(std::abs(*number));
    }
}

void load()
{
    const std::string folder = stored("Folder");
    SnapFolder = folder.find_first_not_of(' ') != std::string::npos ? folder : state::WorkingFolder;
    std::vector<std::string> pieces; // "640", "x", "480"
    std::istringstream size(stored("Dimension"));
    for (std::string piece; std::getline(size, piece, ' ');) {
        pieces.push_back(piece);
    }
    if (!pieces.empty()) {
        takeSide(SnapWidth, pieces[0]);
    }
    if (pieces.size() > 2) {
        takeSide(SnapHeight, pieces[2]);
    }
    if (const auto number = numberIn(stored("Capture Dimension"))) {
        SnapUseCaptureDimension = *number >= 1;
    }
}

std::string nameOf(std::int16_t number)
{
    char name[24];
    std::snprintf(name, sizeof name, "Snap%04d.bmp", number);
    return name;
}

/// The path of the next snap. The one number behind the last is tried too, as long as the counter has not come there.
std::optional<std::string> freePath(const std::string& folder)
{
    if (SnapCounter > kLastNumber) {
        return std::nullopt;
    }
    const std::string start = (fs::path(folder) / "").string();
    for (; SnapCounter <= kLastNumber + 1; ++SnapCounter) {
        std::string path = start + nameOf(SnapCounter);
        engine::Bool16 exists = engine::kFalse;
        check(engine::Engine->FileExists(path, exists));
        if (exists == engine::kFalse) {
            return path;
        }
    }
    return std::nullopt;
}

std::string take()
{
    const std::string folder = media::inWorkingFolder(SnapFolder);
    if (!frmProgressBar::DoesDiskAnswer((fs::path(folder) / nameOf(SnapCounter)).string())) {
        return kNoSnap;
    }
    const auto path = freePath(folder);
    if (!path) {
        tellUser("There are too many snaps present in the folder to which the snaps are being saved.");
        return "Unable to take snap. Too many snaps present.";
    }
    std::error_code isTold; // by the engine, which cannot write there
    fs::create_directories(folder, isTold);
    constexpr std::int16_t kAsItComes = -1;
    const std::int16_t width = SnapUseCaptureDimension ? kAsItComes : SnapWidth;
    const std::int16_t height = SnapUseCaptureDimension ? kAsItComes : SnapHeight;
    try {
        check(engine::EngineAs<engine::ITWCapture>()->TakeSnap(*path, width, height));
    } catch (const engine::RuntimeError& error) { // of the disk or the device, and no fault of ours
        ReportError(kModule, "TakeSnapFile*", error);
        tellUser(error.what(), MessageIcon::kCritical);
        return kNoSnap;
    }
    forms::frmCapture.LastSnapFile = *path;
    forms::frmCapture.mnuFilePLCFrame.Enabled = true;
    forms::frmCapture.mnuCaptureLStoML.Enabled = true;
    return nameOf(SnapCounter) + " (" + folder + ")";
}

} // namespace

void LoadSettings() { Trapped(kModule, "LoadSettings", load); }

void StoreSettings()
{
    Trapped(kModule, "StoreSettings", [] {
        const auto save = [](const char* key, const std::string& value) {
            ports.settings->save(state::AppSection, kSection, key, value);
        };
        save("Folder", SnapFolder);
        save("Dimension", std::to_string(SnapWidth) + " x " + std::to_string(SnapHeight));
        save("Capture Dimension", SnapUseCaptureDimension ? "1" : "0");
    });
}

void SetSnapFolder(const std::string& folder)
{
    if (folder != SnapFolder && SnapCounter > kLastNumber) {
        SnapCounter = 0;
    }
    SnapFolder = folder;
}

std::string TakeSnapFile()
{
    std::string told = kNoSnap;
    Trapped(kModule, "TakeSnapFile", [&] { told = take(); });
    return told;
}

} // namespace moduleCaptureSnap
