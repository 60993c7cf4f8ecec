// Draws the mock album's two sample photos: a portrait (a figure against an evening sky)
// and a landscape (hills under a low sun). Run at build time:
//   kestrum_mockimages PORTRAIT.jpeg LANDSCAPE.jpeg

#include <QCoreApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>
#include <cstdio>

namespace {

constexpr int kLongSidePx = 720;
constexpr int kShortSidePx = 540;
constexpr int kQuality = 90;

void paintSky(QPainter& painter, const QRect& area, QColor top, QColor horizon)
{
    QLinearGradient sky(area.topLeft(), area.bottomLeft());
    sky.setColorAt(0.0, top);
    sky.setColorAt(1.0, horizon);
    painter.fillRect(area, sky);
}

QImage portrait()
{
    QImage image(kShortSidePx, kLongSidePx, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSky(painter, image.rect(), QColor(40, 60, 120), QColor(240, 160, 90));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(30, 25, 35));
    painter.drawEllipse(QPointF(270, 300), 70, 85);                // head
    painter.drawRoundedRect(QRectF(150, 390, 240, 400), 110, 110); // shoulders
    QRadialGradient light(QPointF(300, 280), 90);
    light.setColorAt(0.0, QColor(255, 220, 180, 90));
    light.setColorAt(1.0, Qt::transparent);
    painter.setBrush(light);
    painter.drawEllipse(QPointF(300, 280), 90, 90);
    return image;
}

QImage landscape()
{
    QImage image(kLongSidePx, kShortSidePx, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSky(painter, image.rect(), QColor(90, 150, 220), QColor(250, 220, 170));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 240, 200));
    painter.drawEllipse(QPointF(540, 330), 45, 45); // sun
    const QColor hills[] = {QColor(70, 110, 80), QColor(45, 80, 55), QColor(25, 50, 35)};
    for (int layer = 0; layer < 3; ++layer) {
        QPainterPath ridge(QPointF(0, kShortSidePx));
        const double base = 330 + layer * 60;
        for (int x = 0; x <= kLongSidePx; x += 40)
            ridge.lineTo(x, base - 40 * std::sin((x + layer * 150) / 110.0));
        ridge.lineTo(kLongSidePx, kShortSidePx);
        painter.setBrush(hills[layer]);
        painter.drawPath(ridge);
    }
    return image;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv); // for the JPEG plug-in
    if (argc != 3) {
        std::fputs("usage: kestrum_mockimages PORTRAIT.jpeg LANDSCAPE.jpeg\n", stderr);
        return 2;
    }
    if (!portrait().save(QString::fromLocal8Bit(argv[1]), "JPEG", kQuality) ||
        !landscape().save(QString::fromLocal8Bit(argv[2]), "JPEG", kQuality)) {
        std::fputs("kestrum_mockimages: cannot write the images\n", stderr);
        return 1;
    }
    return 0;
}
