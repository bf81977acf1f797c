#pragma once

// The table of file classes as a desktop of the free world keeps it: a MIME type of the user's, an entry of the program
// and their pictures, as files below the user's data folder.
//
//     mime/packages/quillmont.xml                                            *.qpj is a project
//     icons/hicolor/scalable/apps/quillmont.svg                              what the program looks like
//     icons/hicolor/scalable/mimetypes/application-x-quillmont-project.svg   and a project
//     applications/quillmont.desktop                                         this program opens projects
//
// Files that say so already are left alone, down to their times. Where an entry of the whole system's names this very
// program, whoever installed it has said it all: nothing is written, and what an earlier start wrote, before it was
// installed, is taken away, as it would stand in front of the system's. An entry that a person made or changed stays.

#include "core/platform.h"

#include <QByteArray>
#include <QStringList>
#include <functional>
#include <string>

/// Where the desktop looks, and who runs.
struct DesktopPlaces {
    QString dataFolder;        // the user's, written to
    QStringList systemFolders; // the system's, only read
    QString program;           // the running one, whole path
    /// Runs a tool over a folder and waits for nothing.
    std::function<void(const QString& tool, const QString& folder)> update;
};
/// Those of this process, as its environment tells them. A tool that is not there is not run.
DesktopPlaces desktopPlaces();

/// `Exec` of an entry: a program and the place of the one file that it is given.
QByteArray execLine(const QString& program);

class DesktopClassRoot final : public ClassRoot {
public:
    explicit DesktopClassRoot(DesktopPlaces places) : places_(std::move(places)) {}

    void setString(std::string_view key, std::string_view name, std::string_view text) override;
    void setNumber(std::string_view, std::string_view, std::uint32_t) override {} // nothing here has numbers
    /// Writes what differs or takes away what is not needed, and has the desktop's lists of it made anew.
    void notifyChanged() override;

private:
    DesktopPlaces places_;
    std::string ending_;      // ".qpj"
    std::string class_;       // what the ending stands for
    std::string description_; // of the class
};
