#pragma once

// The settings store: one INI file in the user's configuration folder, sections and keys as the program names them.
//
// A file that is damaged is kept beside under another name, and a new one begun. One that cannot be read, written or
// locked costs nothing but the settings of other runs: values are kept in memory for this one.

#include "core/platform.h"

#include <QSettings>
#include <map>
#include <memory>

class IniSettings final : public SettingsStore {
public:
    IniSettings();

    std::optional<std::string> get(std::string_view application, std::string_view section,
                                   std::string_view key) override;
    void save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override;
    void deleteSection(std::string_view application, std::string_view section) override;

private:
    /// The file of an application; nullptr when there is no reaching it.
    QSettings* fileOf(std::string_view application);

    std::map<std::string, std::unique_ptr<QSettings>, std::less<>> files_;
    std::map<std::string, std::string> unwritten_; // "application/section/key", while there is no file
};
