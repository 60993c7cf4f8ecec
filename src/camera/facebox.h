#pragma once

#include "camera/previewfill.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace kestrum {

/// A detected face on the preview: its normalised bounding box (as the face detector
/// gives it) laid out in the 1080 × 1440 reference frame of the analysed portrait
/// pictures, then carried into the view at the scale of the picture as shown.
class FaceBox {
public:
    /// The portrait size of the analysed frames, in which face geometry is laid out.
    static constexpr QSizeF kReferenceFrame{1080.0, 1440.0};
    /// The outline's corner radius, as a fraction of the box's width.
    static constexpr double kCornerRadiusPerWidth = 0.125;

    explicit FaceBox(QRectF normalizedBox)
        : m_normalizedBox(normalizedBox)
    {}

    /// The box in reference-frame points: each coordinate times the frame's side.
    QRectF inReference() const;

    /// The outline in the view whose picture covers `frameRect` (`PreviewFill::frameRect`):
    /// the reference frame scaled to it and centred on it.
    QRectF inView(QRectF frameRect) const;

    /// The corner radius of an outline drawn around `box`: an eighth of its width, on both
    /// axes.
    static double cornerRadius(QRectF box) { return kCornerRadiusPerWidth * box.width(); }

    /// The device point a face meters at: the reference box's centre at the view's scale,
    /// mapped to the device and mirrored on both axes (one minus each coordinate), since
    /// the analysed pictures run the other way round from the preview.
    QPointF meteringPoint(const PreviewFill& fill) const;

private:
    QRectF m_normalizedBox;
};

} // namespace kestrum
