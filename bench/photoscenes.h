#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace kestrum::bench {

/// A made-up photo: a sky gradient under a few hundred coloured ellipses, the same for the
/// same seed. `noisy` adds sensor-like noise, which makes its JPEG about six times larger,
/// like a real photo at quality 100.
QImage photoScene(QSize size, int seed, bool noisy);

/// `image` as a JPEG of the given quality (0 to 100).
QByteArray jpegOf(const QImage& image, int quality);

} // namespace kestrum::bench
