#pragma once

// The program's ports over the toolkit. One object of each, made by the main program before the entry routine.

#include "core/platform.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <string>

/// The window that boxes and dialogues belong to; may be none.
QWidget* dialogOwner();

class QtMessageBoxes final : public MessageBoxes {
public:
    MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                       std::string_view title) override;
};

class QtCommonDialogs final : public CommonDialogs {
public:
    std::string openFiles(const OpenFileRequest& request) override;
    std::string saveFile(const SaveFileRequest& request) override;
    std::string pickFolder(std::string_view title, std::string_view folder) override;
    std::int32_t chooseColour(std::int32_t present) override;
    void chooseFont(TextFont& font, std::int32_t& colour) override;

private:
    QString firstFolder(const std::string& told) const;

    QString lastFolder_;
};

class QtEvents final : public Events {
public:
    QtEvents() { clock_.start(); }
    void letRun() override;
    std::uint32_t ticks() override { return static_cast<std::uint32_t>(clock_.elapsed()); }

private:
    QElapsedTimer clock_;
};

class QtFonts final : public Fonts {
public:
    double textWidth(std::string_view text) override;
    double textHeight() override;
    int generation() override { return generation_; }
    /// After the application's font has changed.
    void fontChanged() { ++generation_; }

private:
    int generation_ = 0;
};

class QtShell final : public Shell {
public:
    /// Runs where the desktop finds out only after `openWithDesktop` has come back that there is no program. Set it at
    /// the start of the program.
    std::function<void(const std::string& path)> openFailedLater;

    bool openWithDesktop(std::string_view path) override;
    std::string temporaryFolder() override;
    std::string programFolder() override;
    std::string runtimeFolder() override;
    std::string stateFolder() override;
    std::string cacheFolder() override;
    std::int64_t fileLength(std::string_view path) override;
    DateTime fileTime(std::string_view path) override;
    DateTime now() override;
    std::string asText(const DateTime& moment) override;
    std::string systemText() override;
    int colourDepth() override;
    void copyWithRename(std::string_view from, std::string_view to) override;
};
