#pragma once

// The pages of the help, packed into the program: in which order they stand, and which of them hold certain words.
//
// `help/contents.txt` is the list: a line that stands at the margin is a chapter's heading, an indented one the file of
// a page below it. `help/index.txt` holds the words of the index: "word | page.htm#part" a line. Pages are read when
// they are first asked for and kept.
//
// A file of `help/XX` stands in for the one of the same name in `help` while the screens speak that language. So topics
// and links are the same in every language, and what there is no translation of is shown in English, as the pictures
// are. Interface thread only.

#include <QRegularExpression>
#include <QString>
#include <QUrl>
#include <functional>
#include <vector>

namespace help {

struct ContentsLine {
    QString title; // of the chapter, or as the page tells it
    QString page;  // "1_Welcome.htm"; empty for a chapter
};

/// In the order in which they are read.
const std::vector<ContentsLine>& contents();

/// The address of a topic, as "page.htm" or "page.htm#part", for the browser.
QUrl addressOf(const QString& topic);
/// The page of an address, without the part; empty for an address that is none of the help's.
QString pageOf(const QUrl& address);

/// Whether the page of a topic stands in the language of the screens.
bool isInLanguage(const QString& topic);
/// Of the topic's page, as it tells it.
QString titleOf(const QString& topic);

/// Makes the rows of a table that a page leaves to the program: they come into the place of "<!-- rows: table -->".
inline std::function<QString(const QString& table)> rowsOf;

/// The bytes of a page or a picture; empty when there is none.
QByteArray fileOf(const QUrl& address);

struct IndexLine {
    QString word;
    QString topic; // "page.htm#part"
};

/// What the index holds beside the commands; in the order of the file.
std::vector<IndexLine> indexWords();

/// What stands at the pointer when a click asks for a control: the text, and a link to the topic, which is its address.
QString answer(const QString& text, const QString& topic);

/// What finds each of the words, in capitals or not, where a word of the text begins with it. Words between quotes are
/// found whole and in their order.
std::vector<QRegularExpression> patternsOf(const QString& words);

/// A page that holds all the words.
struct Hit {
    QString page;
    QString title;
    QString excerpt; // of the text around the first of the words
};

/// First those whose title holds a word, then those that hold all words whole and not only as beginnings, else in the
/// order of the contents. Without words: none.
std::vector<Hit> pagesWith(const QString& words);

} // namespace help
