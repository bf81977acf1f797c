#include "windowing/help_pages.h"

#include <QFile>
#include <QTextDocument>
#include <algorithm>

/// Outside a namespace, as the toolkit's macro wants it: a static library's resources come in only when asked for.
static void bringInPages() { Q_INIT_RESOURCE(help); }

namespace help {

namespace {

const QString kRoot = QStringLiteral("/help/");

QString read(const QString& page) { return QString::fromUtf8(fileOf(addressOf(page))); }

QString titleOf(const QString& page)
{
    static const QRegularExpression title("<title>(.*?)</title>", QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = title.match(read(page));
    return match.hasMatch() ? match.captured(1).trimmed() : page;
}

struct PageText {
    const ContentsLine* line;
    QString text;
};

const std::vector<PageText>& texts()
{
    static const std::vector<PageText> all = [] {
        std::vector<PageText> read_;
        for (const ContentsLine& line : contents()) {
            if (!line.page.isEmpty()) {
                QTextDocument document;
                document.setHtml(read(line.page));
                read_.push_back({&line, document.toPlainText().remove(QChar::ObjectReplacementCharacter)});
            }
        }
        return read_;
    }();
    return all;
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
    static const std::vector<ContentsLine> all = [] {
        std::vector<ContentsLine> lines;
        for (const QString& line : read("contents.txt").split('\n')) {
            const QString name = line.trimmed();
            if (!name.isEmpty()) {
                const bool isPage = line.startsWith(' ');
                lines.push_back({isPage ? titleOf(name) : name, isPage ? name : QString()});
            }
        }
        return lines;
    }();
    return all;
}

QUrl addressOf(const QString& topic) { return QUrl("qrc:" + kRoot + topic); }

QString pageOf(const QUrl& address)
{
    const QString path = address.path();
    return address.scheme() == "qrc" && path.startsWith(kRoot) ? path.mid(kRoot.size()) : QString();
}

QByteArray fileOf(const QUrl& address)
{
    bringInPages();
    QFile file(":" + address.path());
    return address.scheme() == "qrc" && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::vector<QRegularExpression> patternsOf(const QString& words)
{
    std::vector<QRegularExpression> patterns;
    for (const QString& word : words.split(' ', Qt::SkipEmptyParts)) {
        patterns.emplace_back("(?<!\\w)" + QRegularExpression::escape(word),
                              QRegularExpression::CaseInsensitiveOption
                                  | QRegularExpression::UseUnicodePropertiesOption);
    }
    return patterns;
}

std::vector<Hit> pagesWith(const QString& words)
{
    const std::vector<QRegularExpression> patterns = patternsOf(words.simplified());
    std::vector<Hit> inTitle;
    std::vector<Hit> inText;
    for (const PageText& page : texts()) {
        const ContentsLine* const line = page.line;
        const QString& text = page.text;
        const bool holdsAll = std::ranges::all_of(
            patterns, [&](const QRegularExpression& pattern) { return pattern.match(text).hasMatch(); });
        if (patterns.empty() || !holdsAll) {
            continue;
        }
        const bool isTitled = std::ranges::any_of(
            patterns, [&](const QRegularExpression& pattern) { return pattern.match(line->title).hasMatch(); });
        // The title stands above the text again; what follows it says more.
        auto first = patterns.front().match(text, line->title.size());
        const qsizetype place = first.hasMatch() ? first.capturedStart() : 0;
        (isTitled ? inTitle : inText).push_back({line->page, line->title, excerptAt(text, place)});
    }
    inTitle.insert(inTitle.end(), inText.begin(), inText.end());
    return inTitle;
}

} // namespace help
