#include "windowing/language.h"

#include "windowing/text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>
#include <algorithm>
#include <memory>
#include <vector>

/// Out of the library of the screens, which would leave them behind. Not inside a namespace.
static void bringTexts() { Q_INIT_RESOURCE(texts); }

namespace language {

namespace {

constexpr const char* kContext = "Quillmont";

/// The program's texts all stand in one context.
class Catalogue final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* note, int count) const override
    {
        QString found = QTranslator::translate(kContext, text, note, count);
        if (found.isNull() && missed && toolkit.translate(context, text, note, count).isNull()) {
            missed(QString::fromUtf8(text));
        }
        return found;
    }
    QString ofProgram(const QByteArray& text) const { return QTranslator::translate(kContext, text.constData()); }

    QTranslator toolkit; // its own texts, asked behind this one
};

/// A text with places in it.
struct Pattern {
    QString source;
    QRegularExpression shape;
    std::vector<bool> isName; // by place: it is quoted
    qsizetype letters = 0;    // of its own
};

struct InUse {
    QString name;
    Catalogue own;
    std::vector<Pattern> patterns; // the one that says most of itself first
    QHash<QByteArray, QString> known;
    QString betweenThousands;
};

std::unique_ptr<InUse> inUse;

Pattern patternOf(const QString& source)
{
    static const QRegularExpression place("%(\\d)");
    Pattern made{source, {}, {}, 0};
    QString shape = "^";
    qsizetype from = 0;
    for (auto places = place.globalMatch(source); places.hasNext();) {
        const auto found = places.next();
        const QString between = source.mid(from, found.capturedStart() - from);
        shape += QRegularExpression::escape(between) + "(.*?)";
        made.letters += between.size();
        made.isName.push_back(between.endsWith('"'));
        from = found.capturedEnd();
    }
    made.letters += source.size() - from;
    shape += QRegularExpression::escape(source.mid(from)) + "$";
    made.shape = QRegularExpression(shape, QRegularExpression::DotMatchesEverythingOption);
    return made;
}

std::vector<Pattern> readPatterns()
{
    std::vector<Pattern> patterns;
    QFile file(":/translations/patterns.txt");
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (!line.isEmpty()) {
                patterns.push_back(patternOf(QString::fromUtf8(line).replace("\\r", "\r").replace("\\n", "\n")));
            }
        }
    }
    std::ranges::stable_sort(patterns, std::greater(), &Pattern::letters);
    return patterns;
}

QString lookedUp(const QByteArray& text);

/// What stands in a place that holds no name: other words, or a number, whose comma between thousands is the point
/// between whole and part in many languages.
QString inPlace(QString held)
{
    static const QRegularExpression thousands("^\\d{1,3}(,\\d{3})+$");
    return thousands.match(held).hasMatch() ? held.replace(',', inUse->betweenThousands) : lookedUp(held.toUtf8());
}

/// Nothing when no pattern is like it.
QString byPattern(const QString& text)
{
    for (const Pattern& pattern : inUse->patterns) {
        const auto match = pattern.shape.match(text);
        if (!match.hasMatch()) {
            continue;
        }
        QString said = inUse->own.ofProgram(pattern.source.toUtf8());
        if (said.isNull()) {
            continue;
        }
        // All places at once, as what stands in one may look like another.
        static const QRegularExpression place("%(\\d)");
        QString whole;
        qsizetype from = 0;
        for (auto places = place.globalMatch(said); places.hasNext();) {
            const auto found = places.next();
            const int number = found.capturedView(1).toInt();
            const QString held = match.captured(number);
            const auto index = static_cast<std::size_t>(number) - 1;
            const bool isName = index >= pattern.isName.size() || pattern.isName[index];
            whole += said.mid(from, found.capturedStart() - from) + (isName ? held : inPlace(held));
            from = found.capturedEnd();
        }
        return whole + said.mid(from);
    }
    return {};
}

bool hasWords(const QString& text)
{
    static const QRegularExpression word("[a-z]{2}", QRegularExpression::CaseInsensitiveOption);
    return word.match(text).hasMatch();
}

constexpr const char* kLineEnd = "\r\n";

/// A message of several paragraphs, each of which is known by itself.
QString byLine(const QString& text)
{
    QStringList lines = text.split(kLineEnd);
    for (QString& line : lines) {
        line = lookedUp(line.toUtf8());
    }
    return lines.join(kLineEnd);
}

QString lookedUp(const QByteArray& text)
{
    QString plain = QString::fromUtf8(text);
    if (!hasWords(plain)) {
        return plain;
    }
    if (const auto known = inUse->known.constFind(text); known != inUse->known.constEnd()) {
        return *known;
    }
    QString found = inUse->own.ofProgram(text);
    if (found.isNull()) {
        found = byPattern(plain);
    }
    if (found.isNull() && plain.contains(kLineEnd)) {
        found = byLine(plain);
    }
    if (found.isNull()) {
        if (missed) {
            missed(plain);
        }
        found = plain;
    }
    constexpr qsizetype kMost = 4096; // times and sizes come by the thousand
    if (inUse->known.size() >= kMost) {
        inUse->known.clear();
    }
    inUse->known.insert(text, found);
    return found;
}

/// The toolkit tells its widgets of either removal, and these ask again: nothing of it may have gone by then.
void leave()
{
    if (const auto left = std::move(inUse)) {
        QCoreApplication::removeTranslator(&left->own);
        QCoreApplication::removeTranslator(&left->own.toolkit);
    }
}

} // namespace

QString use(const QStringList& wanted)
{
    bringTexts();
    leave();
    for (const QString& language : wanted) {
        QString name = QString(language).replace('_', '-').section('-', 0, 0);
        if (name == kOwnWords || name == "C") {
            break;
        }
        auto found = std::make_unique<InUse>();
        if (!found->own.load(":/translations/quillmont_" + name + ".qm")) {
            continue;
        }
        found->name = name;
        found->patterns = readPatterns();
        found->betweenThousands = QLocale(name).groupSeparator();
        inUse = std::move(found);
        const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        if (inUse->own.toolkit.load("qtbase_" + name, folder)) {
            QCoreApplication::installTranslator(&inUse->own.toolkit);
        }
        QCoreApplication::installTranslator(&inUse->own); // asked first
        return name;
    }
    return kOwnWords;
}

QString name() { return inUse ? inUse->name : QString(kOwnWords); }

std::vector<std::pair<QString, QString>> offered()
{
    bringTexts();
    std::vector<std::pair<QString, QString>> all{{kOwnWords, "English"}};
    for (const QString& file : QDir(":/translations").entryList({"*.qm"})) {
        const QString code = file.section('_', 1).section('.', 0, 0);
        all.emplace_back(code, QLocale(code).nativeLanguageName());
    }
    return all;
}

QStringList ofDesktop() { return QLocale::system().uiLanguages(); }

} // namespace language

QString translated(std::string_view text)
{
    return language::inUse ? language::lookedUp(QByteArray(text.data(), static_cast<qsizetype>(text.size())))
                           : fromProgram(text);
}

QString translatedWord(std::string_view text)
{
    const QString found =
        language::inUse ? language::inUse->own.ofProgram(QByteArray(text.data(), static_cast<qsizetype>(text.size())))
                        : QString();
    return found.isNull() ? fromProgram(text) : found;
}
