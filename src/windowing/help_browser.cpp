#include "windowing/help_browser.h"

#include "windowing/help_pages.h"
#include "windowing/scheme.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextBlock>
#include <algorithm>

namespace {

constexpr int kMarginPx = 22;

/// A shade of the ground, for keys and the heads of tables.
QColor shade(const QPalette& palette)
{
    const QColor ground = palette.color(QPalette::Base);
    const QColor ink = palette.color(QPalette::Text);
    const auto part = [](int a, int b) { return a + (b - a) / 8; };
    return QColor(part(ground.red(), ink.red()), part(ground.green(), ink.green()), part(ground.blue(), ink.blue()));
}

QString pageStyle(const QPalette& palette, const QFont& font)
{
    return QString("h1 { font-size: x-large; margin-top: 0px; margin-bottom: 8px; }"
                   "h2 { font-size: large; margin-top: 18px; margin-bottom: 2px; }"
                   "p { margin-top: 6px; margin-bottom: 6px; line-height: 125%; }"
                   "p.picture { line-height: 100%; }"
                   "li { margin-top: 2px; margin-bottom: 2px; line-height: 125%; }"
                   "th { background-color: %1; text-align: left; padding: 4px 10px; }"
                   "td { padding: 4px 10px; }"
                   "kbd { background-color: %1; font-family: '%2'; }"
                   "a { color: %3; }")
        .arg(shade(palette).name(), font.family(), linkColour(palette, QPalette::Base).name());
}

QByteArray missingPage(const QUrl& address)
{
    const QString title = QObject::tr("There is no such page");
    const QString what = QObject::tr("The help of this version has no page \"%1\".").arg(help::pageOf(address));
    const QString next = QObject::tr("Look for it by its words in the field above the contents, or begin at: %1");
    const QString welcome = "1_Welcome.htm";
    const QString link = QString("<a href=\"%1\">%2</a>").arg("/help/" + welcome, help::titleOf(welcome));
    return QString("<html><head><title>%1</title></head><body><h1>%1</h1><p>%2</p><p>%3</p></body></html>")
        .arg(title, what.toHtmlEscaped(), next.arg(link))
        .toUtf8();
}

} // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent)
{
    setObjectName("helpPage");
    setAccessibleName(tr("Page of the help"));
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // one that comes while a page is set would have it set anew
    document()->setDocumentMargin(kMarginPx);
    document()->setIndentWidth(kMarginPx); // of lists
    setLineWrapMode(QTextEdit::FixedPixelWidth);
    plainPoints_ = QFontInfo(font()).pointSizeF();
    dress();
    connect(this, &QTextBrowser::historyChanged, this, [this] { showMarks(); });
}

void HelpBrowser::dress() { document()->setDefaultStyleSheet(pageStyle(palette(), font())); }

QVariant HelpBrowser::loadResource(int type, const QUrl& address)
{
    const QUrl whole = source().resolved(address);
    const QByteArray bytes = help::fileOf(whole);
    switch (type) {
    case QTextDocument::HtmlResource:
        return bytes.isEmpty() ? missingPage(whole) : bytes;
    case QTextDocument::ImageResource:
        return bytes.isEmpty() ? QVariant() : whole.path().endsWith(".svg") ? drawing(bytes) : photograph(bytes);
    default:
        return bytes;
    }
}

/// What a line leaves for a picture in it, in logical pixels.
qreal HelpBrowser::pictureRoom() const { return std::max(40, viewport()->width() - 2 * kMarginPx); }

/// As large as it is drawn, times the zoom, as far as the window has room; an icon as high as a line's letters.
QImage HelpBrowser::drawing(QByteArray svg) const
{
    constexpr int kIcon = 16;
    svg.replace("currentColor", palette().color(QPalette::Text).name().toLatin1());
    QSvgRenderer renderer(svg);
    const QSizeF plain = renderer.defaultSize();
    const qreal scale = plain.height() <= kIcon
                            ? (fontMetrics().ascent() + 3) / plain.height()
                            : std::min(QFontInfo(font()).pointSizeF() / plainPoints_, pictureRoom() / plain.width());
    const qreal ratio = devicePixelRatioF();
    QImage picture((plain * scale * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return picture;
}

/// A picture of the program: as large as it was taken, times the zoom, as far as the window has room, with an edge.
QImage HelpBrowser::photograph(const QByteArray& bytes) const
{
    QImage picture = QImage::fromData(bytes);
    if (picture.isNull()) {
        return picture;
    }
    const qreal scale = std::min(QFontInfo(font()).pointSizeF() / plainPoints_, pictureRoom() / picture.width());
    const qreal ratio = devicePixelRatioF();
    picture =
        picture.convertToFormat(QImage::Format_RGB32)
            .scaled(QSizeF(picture.size() * scale * ratio).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&picture);
    painter.setPen(QColor(0x80, 0x84, 0x8A)); // seen on a bright and on a dark ground
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return picture;
}

void HelpBrowser::doSetSource(const QUrl& address, QTextDocument::ResourceType type)
{
    if (address.scheme() != "quillmont") {
        keepPlace();
        QTextBrowser::doSetSource(address, type);
    } else if (deed) {
        deed(address.path());
    }
}

void HelpBrowser::backward()
{
    keepPlace();
    QTextBrowser::backward();
    takePlace();
}

void HelpBrowser::forward()
{
    keepPlace();
    QTextBrowser::forward();
    takePlace();
}

void HelpBrowser::keepPlace() { places_[backwardHistoryCount()] = verticalScrollBar()->value(); }

/// The toolkit scrolls to the link that was followed last, which a reader may have left far behind.
void HelpBrowser::takePlace()
{
    document()->size(); // the page is set to its end, and can be scrolled there
    verticalScrollBar()->setValue(places_[backwardHistoryCount()]);
}

void HelpBrowser::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && plainPoints_ > 0) {
        drawAnew();
    }
}

void HelpBrowser::drawAnew()
{
    dress();
    if (!source().isEmpty()) {
        const int place = verticalScrollBar()->value();
        reload();
        showMarks();
        verticalScrollBar()->setValue(place);
    }
}

void HelpBrowser::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    fitLines();
    if (event->size().width() != event->oldSize().width()) {
        drawAnew(); // the pictures fit the new width
    }
}

/// Lines are as wide as the window, but no wider than reads well.
void HelpBrowser::fitLines()
{
    constexpr int kLongestLine = 90; // of middling letters
    const int widest = fontMetrics().averageCharWidth() * kLongestLine + 2 * kMarginPx;
    setLineWrapColumnOrWidth(std::min(viewport()->width(), std::max(widest, 1)));
}

void HelpBrowser::zoomBy(int points)
{
    constexpr qreal kSmallest = 6;
    constexpr qreal kLargest = 40;
    QFont sized = font();
    const qreal now = QFontInfo(sized).pointSizeF();
    sized.setPointSizeF(points == 0 ? plainPoints_ : std::clamp(now + points, kSmallest, kLargest));
    setFont(sized);
    fitLines();
    drawAnew();
}

void HelpBrowser::mark(const QString& words)
{
    words_ = words.simplified();
    showMarks();
    if (!extraSelections().isEmpty()) {
        moveCursor(QTextCursor::Start);
        goToMark(true);
    }
}

void HelpBrowser::showMarks()
{
    QList<ExtraSelection> marks;
    QTextCharFormat format;
    format.setBackground(QColor(0xFF, 0xDD, 0x66));
    format.setForeground(QColor(0x20, 0x22, 0x26));
    for (const QRegularExpression& pattern : help::patternsOf(words_)) {
        for (QTextCursor found = document()->find(pattern); !found.isNull(); found = document()->find(pattern, found)) {
            marks.push_back({found, format});
        }
    }
    std::ranges::sort(marks, {}, [](const ExtraSelection& mark) { return mark.cursor.selectionStart(); });
    setExtraSelections(marks);
}

void HelpBrowser::goToMark(bool forward)
{
    const QList<ExtraSelection> marks = extraSelections();
    if (marks.isEmpty()) {
        return;
    }
    const int here = textCursor().position();
    const ExtraSelection* next = forward ? &marks.front() : &marks.back();
    for (const ExtraSelection& mark : marks) {
        const int place = mark.cursor.selectionEnd();
        if (forward && place > here) {
            next = &mark;
            break;
        }
        if (!forward && place < here) {
            next = &mark;
        }
    }
    QTextCursor at(document());
    at.setPosition(next->cursor.selectionEnd());
    setTextCursor(at);
    ensureCursorVisible();
}
