#pragma once

// The language of the screens. Texts in the program's state are its own English words, which files, the settings and
// the log hold as they are; a form looks them up as it copies them into a widget. There is one list of texts, whatever
// the class that asks: `resources/translations/quillmont_XX.ts`, which `scripts/texts` keeps in step with the sources.
//
// Interface thread only. Without a catalogue, English is shown, and nothing is looked up.

#include <QString>
#include <QStringList>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace language {

/// The code of the language that the program's own words are in.
inline constexpr const char* kOwnWords = "en";

/// From here on the screens speak the first of these that there is a catalogue for ("de-AT" finds "de"), or English
/// when that comes first or there is none. Behind the program's own stands the toolkit's catalogue, where it is
/// installed. Windows that stand already keep what they say. Returns the name of the language in use.
QString use(const QStringList& wanted);
/// The one in use, by its code.
QString name();
/// The languages that there are, each by its code and by its own name, English first.
std::vector<std::pair<QString, QString>> offered();
/// What the desktop asks for, by LANGUAGE, LC_ALL and their kin.
QStringList ofDesktop();

/// Hears of each text of the program that the catalogue in use does not hold. For tests.
inline std::function<void(const QString& text)> missed;

} // namespace language

/// A text of the program's state in the person's language. One that was put together is found by its pattern
/// ("%1 of %2 frames"); what stands in its places is looked up as well, but for what is quoted, which is a name.
QString translated(std::string_view text);
/// The same for a place where mostly names stand that the person has given: only a whole text is looked up.
QString translatedWord(std::string_view text);
