#include "faceobservation.h"

namespace kestrum {

FaceObservation FaceObservation::fromFrameRect(const QRectF& frameRect, const QSizeF& frameSize,
                                               float confidence)
{
    const qreal frameWidth = frameSize.width();
    const qreal frameHeight = frameSize.height();
    const QRectF box(frameRect.y() / frameHeight,
                     (frameWidth - frameRect.x() - frameRect.width()) / frameWidth,
                     frameRect.height() / frameHeight, frameRect.width() / frameWidth);
    return FaceObservation{box, confidence};
}

QRectF FaceObservation::frameRect(const QSizeF& frameSize) const
{
    const qreal frameWidth = frameSize.width();
    const qreal frameHeight = frameSize.height();
    const qreal width = boundingBox.height() * frameWidth;
    return QRectF(frameWidth * (1.0 - boundingBox.y()) - width, boundingBox.x() * frameHeight,
                  width, boundingBox.width() * frameHeight);
}

} // namespace kestrum
