#pragma once

#include <QImage>
#include <QList>
#include <QString>

namespace kestrum::bench {

/// Writes `frames` as a Motion-JPEG AVI at `framesPerSecond`: footage of a known size
/// that Qt Multimedia plays, made without any encoder beyond Qt's JPEG writer.
bool writeMotionJpegAvi(const QString& path, const QList<QImage>& frames, int framesPerSecond);

} // namespace kestrum::bench
