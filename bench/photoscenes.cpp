#include "photoscenes.h"

#include <QBuffer>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QRandomGenerator>

#include <algorithm>

namespace kestrum::bench {

namespace {
constexpr int kEllipses = 400;
constexpr int kSmallestRadius = 20;
constexpr int kLargestRadius = 300;
constexpr int kNoiseAmplitude = 12;
} // namespace

QImage photoScene(QSize size, int seed, bool noisy)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(90, 140, 220));
    sky.setColorAt(1, QColor(250, 200, 150));
    painter.fillRect(image.rect(), sky);
    QRandomGenerator random(seed);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kEllipses; ++i) {
        painter.setBrush(QColor::fromHsv(random.bounded(360), 150, 200));
        painter.drawEllipse(QPointF(random.bounded(size.width()), random.bounded(size.height())),
                            random.bounded(kSmallestRadius, kLargestRadius),
                            random.bounded(kSmallestRadius, kLargestRadius));
    }
    painter.end();
    if (noisy) {
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                const int n = random.bounded(2 * kNoiseAmplitude) - kNoiseAmplitude;
                const QRgb c = line[x];
                line[x] = qRgb(std::clamp(qRed(c) + n, 0, 255), std::clamp(qGreen(c) + n, 0, 255),
                               std::clamp(qBlue(c) + n, 0, 255));
            }
        }
    }
    return image;
}

QByteArray jpegOf(const QImage& image, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(quality);
    writer.write(image);
    return bytes;
}

} // namespace kestrum::bench
