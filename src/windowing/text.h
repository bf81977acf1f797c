#pragma once

// The program's texts are UTF-8, the toolkit's UTF-16.

#include <QString>
#include <string>
#include <string_view>

inline QString fromProgram(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string toProgram(const QString& text) { return text.toStdString(); }

/// "Open File" of "Open &File...".
inline QString plainCaption(QString caption)
{
    caption.remove('&');
    return caption.endsWith("...") ? caption.chopped(3) : caption;
}
