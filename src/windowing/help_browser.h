#pragma once

// Shows the help's pages in the colours of the palette, with pictures drawn sharp, and marks words in them.
//
// A link to "quillmont:word" is no page but a deed. Pages tell no colours: texts, links and the ink of drawings
// (`currentColor`) follow the palette, also when it changes while a page stands open. A topic that there is no page for
// shows a page that says so. Interface thread only.

#include <QTextBrowser>
#include <functional>
#include <map>

class HelpBrowser final : public QTextBrowser {
public:
    explicit HelpBrowser(QWidget* parent);

    /// Marks the words in this page and in those that are opened from now on, and scrolls to the first; none: no marks.
    void mark(const QString& words);
    /// To the next place that is marked, or with `forward` false to the one before, round the end.
    void goToMark(bool forward);
    /// Texts and pictures grow or shrink by so many points, within what can be read; 0: as they were at first.
    void zoomBy(int points);

    /// Through the pages that were shown, each where it was left.
    void backward() override;
    void forward() override;

    /// A link to "quillmont:word" was followed.
    std::function<void(const QString& word)> deed;

protected:
    void doSetSource(const QUrl& address, QTextDocument::ResourceType type) override;
    QVariant loadResource(int type, const QUrl& address) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void keepPlace();
    void takePlace();
    void dress();
    void drawAnew();
    void fitLines();
    void showMarks();
    qreal pictureRoom() const;
    QImage drawing(QByteArray svg) const;
    QImage photograph(const QByteArray& bytes) const;

    std::map<int, int> places_; // by the number of pages behind: how far it was scrolled when it was left, in pixels
    QString words_;
    qreal plainPoints_ = 0;
};
