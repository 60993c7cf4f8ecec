#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kestrum {

/// A detected face on the preview. The detector gives the box in the transposed picture
/// of a FaceObservation (origin at its lower-left, y running from the frame's right
/// edge); the preview shows the frame as it stands. So the box is first turned into the
/// shown picture, normalised with the origin at its top-left: the face's horizontal place
/// is the box's y mirrored (one minus it), its vertical place the box's x. It is then laid
/// out in the 1080 × 1440 reference frame of face geometry and carried into the view at
/// the scale of the picture as shown.
class FaceBox {
public:
    /// The reference frame in which face geometry is laid out.
    static constexpr QSizeF kReferenceFrame{1080.0, 1440.0};
    /// The outline's corner radius, as a fraction of the box's width.
    static constexpr double kCornerRadiusPerWidth = 0.125;

    /// `observedBox` as the detector reports it (FaceObservation::boundingBox).
    explicit FaceBox(QRectF observedBox)
        : m_observedBox(observedBox)
    {}

    /// The face in the shown picture, 0…1 on each axis, origin at the top-left.
    QRectF inPicture() const;
    /// The face in reference-frame points.
    QRectF inReference() const;
    /// The outline in the view whose picture covers `frameRect` (`PreviewFill::frameRect`):
    /// the reference frame scaled onto it.
    QRectF inView(QRectF frameRect) const;
    /// The corner radius of an outline drawn around `box`: an eighth of its width, on both
    /// axes.
    static double cornerRadius(QRectF box) { return kCornerRadiusPerWidth * box.width(); }
    /// The device point a face meters at: the face's centre in the shown picture.
    QPointF meteringPoint() const { return inPicture().center(); }

private:
    QRectF m_observedBox;
};

} // namespace kestrum
