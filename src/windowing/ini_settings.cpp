#include "windowing/ini_settings.h"

#include "windowing/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

namespace {

QString keyOf(std::string_view section, std::string_view key) { return fromProgram(section) + "/" + fromProgram(key); }

std::string memoryKey(std::string_view application, std::string_view section, std::string_view key)
{
    return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
}

/// Whether the file can be locked within a moment: the toolkit's own wait for a lock has no end.
bool isFree(const QString& path)
{
    constexpr int kPatienceMs = 300;
    QLockFile lock(path + ".lock");
    return lock.tryLock(kPatienceMs);
}

} // namespace

IniSettings::IniSettings() = default;

QSettings* IniSettings::fileOf(std::string_view application)
{
    const auto known = files_.find(application);
    if (known != files_.end()) {
        return known->second.get();
    }
    auto& slot = files_[std::string(application)];
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/quillmont";
    const QString path = folder + "/" + fromProgram(application) + ".ini";
    QDir().mkpath(folder);
    if (!isFree(path)) {
        return nullptr;
    }
    slot = std::make_unique<QSettings>(path, QSettings::IniFormat);
    if (slot->status() == QSettings::FormatError) {
        slot.reset();
        const QString damaged = path + ".damaged";
        QFile::remove(damaged);
        QFile::rename(path, damaged);
        slot = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
    return slot.get();
}

std::optional<std::string> IniSettings::get(std::string_view application, std::string_view section,
                                            std::string_view key)
{
    if (const QSettings* const file = fileOf(application)) {
        const QVariant value = file->value(keyOf(section, key));
        // A value with commas in it was written by another hand and reads as a list.
        return value.isValid() ? std::optional(toProgram(value.toStringList().join(", "))) : std::nullopt;
    }
    const auto found = unwritten_.find(memoryKey(application, section, key));
    return found == unwritten_.end() ? std::nullopt : std::optional(found->second);
}

void IniSettings::save(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value)
{
    if (QSettings* const file = fileOf(application)) {
        file->setValue(keyOf(section, key), fromProgram(value));
    } else {
        unwritten_[memoryKey(application, section, key)] = value;
    }
}

void IniSettings::deleteSection(std::string_view application, std::string_view section)
{
    if (QSettings* const file = fileOf(application)) {
        file->remove(fromProgram(section));
        return;
    }
    const std::string prefix = memoryKey(application, section, "");
    std::erase_if(unwritten_, [&](const auto& entry) { return entry.first.starts_with(prefix); });
}
