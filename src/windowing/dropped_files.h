#pragma once

// The files that a drop from a file manager brings.

#include "windowing/text.h"

#include <QMimeData>
#include <QUrl>
#include <string>
#include <vector>

/// Whole paths, in their order; what lies elsewhere than on this machine is left out.
inline std::vector<std::string> localFiles(const QMimeData& dropped)
{
    std::vector<std::string> paths;
    for (const QUrl& url : dropped.urls()) {
        if (url.isLocalFile()) {
            paths.push_back(toProgram(url.toLocalFile()));
        }
    }
    return paths;
}
