// Renders an SVG icon to a square PNG: the hicolor theme's bitmap size of the app icon.
//   kestrum_iconrender ICON.svg SIZE ICON.png

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    bool sizeRead = false;
    const int size = arguments.size() == 4 ? arguments.at(2).toInt(&sizeRead) : 0;
    if (!sizeRead || size <= 0) {
        std::fputs("usage: kestrum_iconrender ICON.svg SIZE ICON.png\n", stderr);
        return 2;
    }
    QSvgRenderer svg(arguments.at(1));
    if (!svg.isValid()) {
        std::fprintf(stderr, "not an SVG icon: %s\n", qPrintable(arguments.at(1)));
        return 1;
    }
    QImage icon(size, size, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    return icon.save(arguments.at(3), "PNG") ? 0 : 1;
}
