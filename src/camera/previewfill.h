#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kestrum {

/// How the camera's picture fills the preview: scaled evenly until it covers the whole
/// view, centred, the overhang cut off on one axis.
///
/// Device points are 0…1 across the picture as shown (origin at its top-left corner), the
/// coordinates in which the camera meters at a point; view points are in the view's own
/// coordinates.
class PreviewFill {
public:
    PreviewFill(QSizeF frameSize, QSizeF viewSize);

    /// The whole picture's rectangle in view coordinates; it overhangs the view on the
    /// axis where the two shapes differ.
    QRectF frameRect() const { return m_frameRect; }

    /// The device point under `viewPoint` (a tap).
    QPointF devicePoint(QPointF viewPoint) const;

    /// Where `devicePoint` is drawn in the view.
    QPointF viewPoint(QPointF devicePoint) const;

private:
    QRectF m_frameRect;
};

} // namespace kestrum
