#include "facebox.h"

#include "camera/faceobservation.h"

namespace kestrum {

QRectF FaceBox::inPicture() const
{
    return FaceObservation{m_observedBox, 0.0f}.frameRect(QSizeF(1.0, 1.0));
}

QRectF FaceBox::inReference() const
{
    const QRectF box = inPicture();
    const double width = kReferenceFrame.width();
    const double height = kReferenceFrame.height();
    return {box.x() * width, box.y() * height, box.width() * width, box.height() * height};
}

QRectF FaceBox::inView(QRectF frameRect) const
{
    const double scaleX = frameRect.width() / kReferenceFrame.width();
    const double scaleY = frameRect.height() / kReferenceFrame.height();
    const QRectF box = inReference();
    return {frameRect.x() + box.x() * scaleX, frameRect.y() + box.y() * scaleY,
            box.width() * scaleX, box.height() * scaleY};
}

} // namespace kestrum
