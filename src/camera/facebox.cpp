#include "facebox.h"

namespace kestrum {

namespace {

QPointF scaleOf(QRectF frameRect)
{
    return {frameRect.width() / FaceBox::kReferenceFrame.width(),
            frameRect.height() / FaceBox::kReferenceFrame.height()};
}

} // namespace

QRectF FaceBox::inReference() const
{
    const double width = kReferenceFrame.width();
    const double height = kReferenceFrame.height();
    return {m_normalizedBox.x() * width, m_normalizedBox.y() * height,
            m_normalizedBox.width() * width, m_normalizedBox.height() * height};
}

QRectF FaceBox::inView(QRectF frameRect) const
{
    const QPointF scale = scaleOf(frameRect);
    const QRectF box = inReference();
    return {frameRect.x() + box.x() * scale.x(), frameRect.y() + box.y() * scale.y(),
            box.width() * scale.x(), box.height() * scale.y()};
}

QPointF FaceBox::meteringPoint(const PreviewFill& fill) const
{
    const QPointF scale = scaleOf(fill.frameRect());
    const QPointF centre = inReference().center();
    const QPointF device = fill.devicePoint({centre.x() * scale.x(), centre.y() * scale.y()});
    return {1.0 - device.x(), 1.0 - device.y()};
}

} // namespace kestrum
