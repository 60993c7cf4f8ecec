#include "previewgeometry.h"

#include "camera/facebox.h"
#include "camera/previewfill.h"

namespace kestrum {

namespace {

// Before the first frame the picture is taken to be the reference frame's shape.
QSizeF pictureSize(QSizeF frameSize)
{
    return frameSize.isEmpty() ? FaceBox::kReferenceFrame : frameSize;
}

} // namespace

void PreviewGeometry::setFrameSize(QSizeF size)
{
    if (size == m_frameSize)
        return;
    m_frameSize = size;
    emit changed();
}

void PreviewGeometry::setViewSize(QSizeF size)
{
    if (size == m_viewSize)
        return;
    m_viewSize = size;
    emit changed();
}

QRectF PreviewGeometry::frameRect() const
{
    return PreviewFill(pictureSize(m_frameSize), m_viewSize).frameRect();
}

QPointF PreviewGeometry::devicePoint(QPointF viewPoint) const
{
    return PreviewFill(pictureSize(m_frameSize), m_viewSize).devicePoint(viewPoint);
}

QRectF PreviewGeometry::faceOutline(QRectF box) const
{
    return FaceBox(box).inView(frameRect());
}

double PreviewGeometry::faceCornerRadius(QRectF outline) const
{
    return FaceBox::cornerRadius(outline);
}

QPointF PreviewGeometry::faceMeteringPoint(QRectF box) const
{
    return FaceBox(box).meteringPoint(PreviewFill(pictureSize(m_frameSize), m_viewSize));
}

} // namespace kestrum
