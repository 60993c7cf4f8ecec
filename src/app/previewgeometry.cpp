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

void PreviewGeometry::setFrameWidth(double width)
{
    setSizes({width, m_frameSize.height()}, m_viewSize);
}

void PreviewGeometry::setFrameHeight(double height)
{
    setSizes({m_frameSize.width(), height}, m_viewSize);
}

void PreviewGeometry::setViewWidth(double width)
{
    setSizes(m_frameSize, {width, m_viewSize.height()});
}

void PreviewGeometry::setViewHeight(double height)
{
    setSizes(m_frameSize, {m_viewSize.width(), height});
}

void PreviewGeometry::setSizes(QSizeF frameSize, QSizeF viewSize)
{
    if (frameSize == m_frameSize && viewSize == m_viewSize)
        return;
    m_frameSize = frameSize;
    m_viewSize = viewSize;
    emit changed();
}

double PreviewGeometry::referenceScale() const
{
    return frameRect().width() / FaceBox::kReferenceFrame.width();
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
    return FaceBox(box).meteringPoint();
}

} // namespace kestrum
