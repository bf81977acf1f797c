#include "windowing/help_pages.h"

#include "windowing/language.h"

#include <QFile>
#include <QFileInfo>
#include <QTextDocument>
#include <algorithm>
#include <array>
#include <map>

/// Outside a namespace, as the toolkit's macro wants it: a static library's resources come in only when asked for.
static void bringInPages() { Q_INIT_RESOURCE(help); }

namespace help {

namespace {

const QString kRoot = QStringLiteral("/help/");
constexpr auto kAnyCase = QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption;

/// The file that stands in for an address in the language of the screens; empty where there is none.
QString ownFileOf(const QUrl& address)
{
    bringInPages();
    const QString own = ":" + kRoot + language::name() + "/" + pageOf(address);
    return QFileInfo(own).isFile() ? own : QString();
}

/// As it is packed.
QByteArray packed(const QUrl& address)
{
    const QString own = ownFileOf(address);
    QFile file(own.isEmpty() ? ":" + address.path() : own);
    return address.scheme() == "qrc" && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString read(const QString& page) { return QString::fromUtf8(fileOf(addressOf(page))); }

QByteArray withRows(const QByteArray& page)
{
    static const QRegularExpression mark("<!-- rows: (\\w+) -->\n");
    QString text = QString::fromUtf8(page);
    for (auto found = mark.match(text); found.hasMatch(); found = mark.match(text)) {
        text.replace(found.capturedStart(), found.capturedLength(), rowsOf ? rowsOf(found.captured(1)) : QString());
    }
    return text.toUtf8();
}

struct PageText {
    const ContentsLine* line;
    QString text;
};

const std::vector<PageText>& texts()
{
    static std::map<QString, std::vector<PageText>> byLanguage;
    const auto [all, isNew] = byLanguage.try_emplace(language::name());
    if (isNew) {
        for (const ContentsLine& line : contents()) {
            if (!line.page.isEmpty()) {
                QTextDocument document;
                document.setHtml(read(line.page));
                all->second.push_back({&line, document.toPlainText().remove(QChar::ObjectReplacementCharacter)});
            }
        }
    }
    return all->second;
}

/// Some words around a place of the text, on one line.
QString excerptAt(const QString& text, qsizetype place)
{
    constexpr qsizetype kBefore = 24;
    constexpr qsizetype kLength = 90;
    qsizetype start = std::max<qsizetype>(0, place - kBefore);
    while (start > 0 && start < place && !text[start - 1].isSpace()) {
        ++start;
    }
    const QString part = text.mid(start, kLength).simplified();
    return (start > 0 ? "... " : "") + part + (start + kLength < text.size() ? " ..." : "");
}

} // namespace

const std::vector<ContentsLine>& contents()
{
    static std::map<QString, std::vector<ContentsLine>> byLanguage;
    const auto [all, isNew] = byLanguage.try_emplace(language::name());
    if (isNew) {
        for (const QString& line : read("contents.txt").split('\n')) {
            const QString name = line.trimmed();
            if (!name.isEmpty()) {
                const bool isPage = line.startsWith(' ');
                all->second.push_back({isPage ? titleOf(name) : name, isPage ? name : QString()});
            }
        }
    }
    return all->second;
}

QUrl addressOf(const QString& topic) { return QUrl("qrc:" + kRoot + topic); }

QString pageOf(const QUrl& address)
{
    const QString path = address.path();
    return address.scheme() == "qrc" && path.startsWith(kRoot) ? path.mid(kRoot.size()) : QString();
}

bool isInLanguage(const QString& topic)
{
    return language::name() == language::kOwnWords || !ownFileOf(addressOf(topic)).isEmpty();
}

QString titleOf(const QString& topic)
{
    static const QRegularExpression title("<title>(.*?)</title>", QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = title.match(QString::fromUtf8(packed(addressOf(topic))));
    return match.hasMatch() ? match.captured(1).trimmed() : topic;
}

QByteArray fileOf(const QUrl& address)
{
    const QByteArray bytes = packed(address);
    return address.path().endsWith(".htm") ? withRows(bytes) : bytes;
}

std::vector<IndexLine> indexWords()
{
    std::vector<IndexLine> lines;
    for (const QString& line : read("index.txt").split('\n', Qt::SkipEmptyParts)) {
        lines.push_back({line.section('|', 0, 0).trimmed(), line.section('|', 1).trimmed()});
    }
    return lines;
}

QString answer(const QString& text, const QString& topic)
{
    return QString("<p>%1</p><p><a href=\"%2\">%3</a></p>")
        .arg(text.toHtmlEscaped(), topic, QObject::tr("More in the help").toHtmlEscaped());
}

std::vector<QRegularExpression> patternsOf(const QString& words)
{
    static const QRegularExpression word("\"([^\"]*)\"?|([^\\s\"]+)"); // a quote that is not closed yet goes to the end
    std::vector<QRegularExpression> patterns;
    for (auto match = word.globalMatch(words); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const bool isQuoted = found.captured(2).isEmpty();
        QStringList parts = found.captured(isQuoted ? 1 : 2).split(' ', Qt::SkipEmptyParts);
        if (parts.isEmpty()) {
            continue;
        }
        std::ranges::transform(parts, parts.begin(),
                               [](const QString& part) { return QRegularExpression::escape(part); });
        patterns.emplace_back("(?<!\\w)" + parts.join("\\s+") + (isQuoted ? "(?!\\w)" : ""), kAnyCase);
    }
    return patterns;
}

std::vector<Hit> pagesWith(const QString& words)
{
    const std::vector<QRegularExpression> patterns = patternsOf(words.simplified());
    std::array<std::vector<Hit>, 3> byWorth; // in the title; whole words; the rest
    for (const PageText& page : texts()) {
        const ContentsLine* const line = page.line;
        const QString& text = page.text;
        const auto isIn = [](const QString& where, const QString& behind = {}) {
            return [&where, behind](const QRegularExpression& pattern) {
                return QRegularExpression(pattern.pattern() + behind, kAnyCase).match(where).hasMatch();
            };
        };
        if (patterns.empty() || !std::ranges::all_of(patterns, isIn(text))) {
            continue;
        }
        const std::size_t worth = std::ranges::any_of(patterns, isIn(line->title))       ? 0
                                  : std::ranges::all_of(patterns, isIn(text, "(?!\\w)")) ? 1
                                                                                         : 2;
        // The title stands above the text again; what follows it says more.
        auto first = patterns.front().match(text, line->title.size());
        const qsizetype place = first.hasMatch() ? first.capturedStart() : 0;
        byWorth[worth].push_back({line->page, line->title, excerptAt(text, place)});
    }
    std::vector<Hit> hits;
    for (const std::vector<Hit>& some : byWorth) {
        hits.insert(hits.end(), some.begin(), some.end());
    }
    return hits;
}

} // namespace help
