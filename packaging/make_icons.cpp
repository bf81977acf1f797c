// make-icons DRAWING.svg FOLDER SIZE...: the drawing in fixed sizes, as FOLDER/SIZE.png, for desktops that draw no SVG.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

int main(int count, char** words)
{
    if (count < 4) {
        std::fputs("usage: make-icons DRAWING.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(words[1]));
    for (int i = 3; i < count; ++i) {
        const int size = std::atoi(words[i]);
        QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter);
        painter.end();
        const QString path = QString::fromLocal8Bit(words[2]) + "/" + QString::number(size) + ".png";
        if (!drawing.isValid() || !picture.save(path)) {
            std::fprintf(stderr, "make-icons: %s was not made\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
